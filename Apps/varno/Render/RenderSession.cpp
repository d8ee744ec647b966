#include "Render/RenderSession.h"

#include "CommandLine/Console.h"
#include "CommandLine/LibraryMessages.h"
#include "DemoGain_Oversampling.h"

namespace varno {

SessionInstance::SessionInstance(const std::shared_ptr<Module>& module, const InstanceSetup& setup,
                                 std::int32_t quality)
    : instance(module, setup),
      effect(instance, {.routineLatencyFrames = kDemoGain_LatencyFrames, .factor = quality}) {
}

void InstanceEnd::operator()(SessionInstance* instance) const {
    const std::lock_guard lock(*moduleCalls);
    delete instance;
}

RenderSession::RenderSession(const RenderOptions& options, const Settings& settings,
                             std::shared_ptr<Module> module)
    : mOptions(options),
      mSettings(settings),
      mModule(std::move(module)),
      mProgress(drawOnTerminal, !options.quiet && isTerminal(standardError()),
                [] { return terminalColumns(standardError()); }) {
}

SessionEffect RenderSession::makeEffect(int channels, double rateHz) {
    InstanceSetup setup;
    setup.channels = channels;
    setup.sampleRateHz = rateHz;
    setup.maximumFrames = mOptions.blockFrames;
    setup.offline = true;
    // InstanceEnd takes the lock too, so it is released before applyTo() can throw.
    std::unique_lock lock(mModuleCalls);
    SessionEffect effect(new SessionInstance(mModule, setup, mOptions.quality), InstanceEnd{&mModuleCalls});
    lock.unlock();
    mSettings.applyTo(effect->instance);
    return effect;
}

} // namespace varno
