#include "Render/RenderSession.h"

#include "CommandLine/Console.h"
#include "CommandLine/LibraryMessages.h"

namespace varno {

void InstanceEnd::operator()(Instance* instance) const {
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

SessionInstance RenderSession::makeInstance(int channels, double rateHz) {
    InstanceSetup setup;
    setup.channels = channels;
    setup.sampleRateHz = rateHz;
    setup.maximumFrames = mOptions.blockFrames;
    setup.offline = true;
    // InstanceEnd takes the lock too, so it is released before applyTo() can throw.
    std::unique_lock lock(mModuleCalls);
    SessionInstance instance(new Instance(mModule, setup), InstanceEnd{&mModuleCalls});
    lock.unlock();
    mSettings.applyTo(*instance);
    return instance;
}

} // namespace varno
