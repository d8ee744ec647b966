#include "Render/RenderSession.h"

#include "AudioFile/AtomicFile.h"
#include "AudioFile/Transfer.h"
#include "CommandLine/Console.h"

#include <sys/stat.h>

#include <iostream>
#include <unistd.h>

namespace varno {

InputFiles::InputFiles(const std::vector<RenderTask>& tasks) {
    for (const auto& task : tasks) {
        struct stat status {};
        if (::stat(task.input.c_str(), &status) == 0) {
            mNames.emplace(Identity{status.st_dev, status.st_ino}, task.input);
        }
    }
}

void InputFiles::refuseAsOutput(const std::string& output) const {
    struct stat status {};
    if (::stat(output.c_str(), &status) != 0) {
        return;
    }
    if (const auto found = mNames.find({status.st_dev, status.st_ino}); found != mNames.end()) {
        refuseSameFile({found->first.first, found->first.second}, found->second, output);
    }
}

void InstanceEnd::operator()(Instance* instance) const {
    const std::lock_guard lock(*moduleCalls);
    delete instance;
}

RenderSession::RenderSession(const RenderOptions& options, const Settings& settings,
                             std::shared_ptr<Module> module)
    : mOptions(options),
      mSettings(settings),
      mInputs(options.tasks),
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
    std::call_once(mProgressBegun,
                   [&] { mProgress = std::make_unique<ProgressBar>(std::cerr, showsProgress(), totalS); });
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
