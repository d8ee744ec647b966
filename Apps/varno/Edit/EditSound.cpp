#include "Edit/EditSound.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Console.h"

namespace varno {

EditSound::EditSound(Oversampling& effect, AudioLoop loop, std::unique_ptr<LiveBackend> backend)
    : mEffect(effect),
      mLoop(effect, std::move(loop)),
      mBackend(std::move(backend)) {
    if (mBackend == nullptr) {
        playByTheClock();
        return;
    }
    mWatch.emplace(mBackend->status(), mBackend->description());
    mBackend->setLatency(mEffect.latencyFrames());
    try {
        mBackend->start(
            [this](const float* const*, float* const* outputs, int frames) { mLoop.pull(outputs, frames); });
    } catch (const SoundUnavailable& error) {
        throw WorkError(mBackend->description() + ": " + error.what());
    }
}

EditSound::~EditSound() {
    printLaterOverruns();
}

void EditSound::printLaterOverruns() const {
    const auto overruns = mWatch ? mWatch->laterOverruns() : std::nullopt;
    if (overruns) {
        printWarning(*overruns);
    }
}

void EditSound::playByTheClock() {
    const InstanceSetup& setup = mEffect.instance().setup();
    mPlayer.emplace(PlayerFormat{setup.sampleRateHz, setup.channels, setup.maximumFrames},
                    [this](float* const* channels, int frames) { mLoop.pull(channels, frames); });
}

std::optional<std::string> EditSound::check() {
    if (mBackend == nullptr) {
        return std::nullopt;
    }
    mBackend->check();
    mBackend->setLatency(mEffect.latencyFrames());
    if (const auto overruns = mWatch->firstOverruns()) {
        printWarning(*overruns);
    }
    if (mWatch->hasNewRate()) {
        return continueWithoutOutput(mBackend->description() + ": the sample rate has changed");
    }
    try {
        mWatch->requireRunning();
    } catch (const WorkError& error) {
        return continueWithoutOutput(error.what());
    }
    return mWatch->newOverruns();
}

std::string EditSound::continueWithoutOutput(const std::string& reason) {
    printLaterOverruns();
    std::string warning = reason + "; the file is no longer played";
    printWarning(warning);
    mWatch.reset();
    mBackend.reset();
    playByTheClock();
    return warning;
}

} // namespace varno
