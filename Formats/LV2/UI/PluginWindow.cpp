#include "LV2/UI/PluginWindow.h"

#include "Window/WindowProperties.h"

namespace varno {

namespace {

// The rate is that of the plug-in, where the host offers it: it decides which qualities there are.
InstanceSetup setupFor(std::int32_t channels, const Module& module, const HostOffer& offer) {
    InstanceSetup setup;
    setup.channels = channels;
    if (offer.rateHz && !sampleRateRefusal(module.options().sampleRates, *offer.rateHz)) {
        setup.sampleRateHz = *offer.rateHz;
    }
    return setup;
}

} // namespace

PluginWindow::PluginWindow(const std::shared_ptr<Module>& module, const WindowSource& source,
                           const HostOffer& offer, const HostCalls& calls)
    : mConnection(environmentDisplay()),
      mInstance(module, setupFor(source.channels, *module, offer)),
      mPorts(mInstance, calls),
      mResize(offer.resize),
      mDesktop(windowScale(offer.scale, mConnection)) {
    mWindow.emplace(
        mConnection, mDesktop, mInstance, static_cast<EffectWindowOwner&>(*this),
        EffectWindow::Setup{.parent = offer.parent, .title = offer.title, .resources = source.resources});
}

// Some hosts read from the window in theirs how large that may be.
void PluginWindow::resized(xcb_window_t window, PixelSize size) {
    setOnlySize(mConnection, window, {size.width, size.height});
    mConnection.flush();
    if (mResize != nullptr) {
        mResize->ui_resize(mResize->handle, size.width, size.height);
    }
}

Quality PluginWindow::quality() const {
    const double rateHz = mInstance.setup().sampleRateHz;
    const std::int32_t wish = mPorts.quality();
    return {wish, fittingFactor(wish, mInstance.module().options().sampleRates, rateHz), rateHz};
}

bool PluginWindow::idle() {
    mPorts.apply();
    return mWindow->idle();
}

} // namespace varno
