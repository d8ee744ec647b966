#include "Render/RenderSession.h"

#include "CommandLine/Console.h"

#include <iostream>
#include <unistd.h>

namespace varno {

void InstanceEnd::operator()(Instance* instance) const {
    const std::lock_guard lock(*moduleCalls);
    delete instance;
}

RenderSession::RenderSession(const RenderOptions& options, const Settings& settings,
                             std::shared_ptr<Module> module)
    : mOptions(options),
      mSettings(settings),
      mModule(std::move(module)) {
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

void RenderSession::beginProgress(double totalS) {
    std::call_once(mProgressBegun, [&] {
        mProgress = std::make_unique<ProgressBar>(std::cerr, showsProgress(), totalS,
                                                  [] { return terminalColumns(STDERR_FILENO); });
    });
}

void RenderSession::advance(double seconds) {
    mProgress->advance(seconds);
}

void RenderSession::endProgress() {
    if (mProgress) {
        mProgress->finish();
    }
}

bool RenderSession::showsProgress() const {
    return !mOptions.quiet && isTerminal(STDERR_FILENO);
}

} // namespace varno
