#include "LV2/UI/PluginWindow.h"

#include "Window/Scale.h"
#include "Window/WindowProperties.h"
#include "Window/XConnection.h"

#include <cstdint>
#include <cstdlib>
#include <utility>

namespace varno {

namespace {

std::string displayName() {
    const char* const name = std::getenv("DISPLAY");
    return name == nullptr ? "" : name;
}

// The rate is that of the plug-in, where the host offers it: it decides which qualities there are.
InstanceSetup setupFor(std::int32_t channels, const Module& module, const HostOffer& offer) {
    InstanceSetup setup;
    setup.channels = channels;
    if (offer.rateHz && !sampleRateRefusal(module.options().sampleRates, *offer.rateHz)) {
        setup.sampleRateHz = *offer.rateHz;
    }
    return setup;
}

double scaleFor(const HostOffer& offer, const XConnection& connection) {
    return offer.scale
               ? *offer.scale
               : desktopScale({}, connection.text(connection.screen().root, XCB_ATOM_RESOURCE_MANAGER));
}

// As the build copies them beside the pictures.
std::filesystem::path presetsIn(const std::filesystem::path& resources) {
    return resources.empty() ? std::filesystem::path() : resources / "presets";
}

// The host's window, if it offers one.
void requireParent(const XConnection& connection, xcb_window_t parent) {
    if (!connection.has(parent)) {
        throw WindowError("the host offers window " + std::to_string(parent) + ", which is not there");
    }
}

} // namespace

PluginWindow::PluginWindow(const std::shared_ptr<Module>& module, const WindowSource& source,
                           const HostOffer& offer, const HostCalls& calls)
    : mConnection(displayName()),
      mInstance(module, setupFor(source.channels, *module, offer)),
      mPorts(mInstance, calls),
      mSlots(settingsOf(mInstance)),
      mResize(offer.resize),
      mDesktop(scaleFor(offer, mConnection)) {
    const xcb_window_t parent =
        offer.parent == XCB_WINDOW_NONE ? openShell(offer, source.resources) : offer.parent;
    requireParent(mConnection, parent);
    mSurround.emplace(mConnection, parent, mInstance, mSlots, mDesktop, static_cast<SurroundOwner&>(*this),
                      SurroundSetup{.factoryPresets = presetsIn(source.resources)});
    if (mSurround->open().isEmpty()) {
        throw WindowError(
            "the editor has nothing to show: its pictures are expected in the bundle's resources");
    }
    if (mShell) {
        mShell->setFocusWindow(mSurround->focusWindow());
    }
    mConnection.sync();
}

xcb_window_t PluginWindow::openShell(const HostOffer& offer, const std::filesystem::path& resources) {
    const std::string title = offer.title.empty() ? mInstance.effect().names.front() : offer.title;
    mShell.emplace(mConnection, EditorWindow::Kind::kManaged, WindowProperties{title, windowIcon(resources)});
    mShell->setCloseHandler([this] { mIsClosed = true; });
    return mShell->id();
}

// Only the host can resize its own window. Some read from the window in it how large that may be.
void PluginWindow::resize(PixelSize size) {
    if (mShell) {
        mShell->resize({size.width, size.height});
        return;
    }
    setOnlySize(mConnection, mSurround->id(), {size.width, size.height});
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
    mSurround->timer();
    handleEvents();
    return !mIsClosed && !mIsLost;
}

void PluginWindow::handleEvents() {
    if (mIsLost) {
        return;
    }
    try {
        mShell ? mShell->handleEvents() : mConnection.handleEvents();
    } catch (const WindowError&) {
        mIsLost = true;
    }
    if (mShell && mIsClosed) {
        mShell->hide();
    }
}

bool PluginWindow::show() {
    if (!mShell || mIsLost) {
        return false;
    }
    mIsClosed = false;
    mShell->show();
    return true;
}

bool PluginWindow::hide() {
    if (!mShell || mIsLost) {
        return false;
    }
    mShell->hide();
    return true;
}

} // namespace varno
