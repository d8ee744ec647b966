#include "Render/BlockProcessor.h"

#include <algorithm>

namespace varno {
namespace {

// A switch that is on.
bool isOn(double normalized) {
    return normalized >= 0.5;
}

} // namespace

BlockProcessor::BlockProcessor(Oversampling& effect, std::vector<AutomationStep> steps, int blockFrames)
    : mEffect(effect),
      mInstance(effect.instance()),
      mSteps(std::move(steps)),
      mBlockFrames(blockFrames),
      mChannels(static_cast<std::size_t>(mInstance.setup().channels)),
      mMeters(mInstance.meters().ids().size()),
      mLargest(mMeters.size()) {
    const auto& parameters = mInstance.parameters();
    const auto bypass = std::ranges::find(parameters, true, &ParameterInfo::isMasterBypass);
    if (bypass != parameters.end()) {
        mBypassParameter = bypass->id;
        mIsBypassed = isOn(mInstance.normalized(bypass->id));
    }
}

void BlockProcessor::process(float* const* channels, int frames) {
    std::copy_n(channels, mChannels.size(), mChannels.begin());
    for (int left = frames; left > 0;) {
        const int length = begin(left);
        mEffect.process(mChannels.data(), mChannels.data(), length);
        for (float*& channel : mChannels) {
            channel += length;
        }
        left -= length;
        end(length);
    }
}

int BlockProcessor::begin(int most) {
    applySteps();
    std::int64_t end = std::min(mBlockStart + mBlockFrames, mPosition + most);
    if (mNextStep < mSteps.size()) {
        end = std::min(end, mSteps[mNextStep].frame);
    }
    return static_cast<int>(end - mPosition);
}

void BlockProcessor::end(int frames) {
    mIsBlockActive = mIsBlockActive || !mIsBypassed;
    mPosition += frames;
    if (mPosition == mBlockStart + mBlockFrames) {
        endBlock();
    }
}

void BlockProcessor::finish() {
    if (mPosition > mBlockStart) {
        endBlock();
    }
}

void BlockProcessor::applySteps() {
    for (; mNextStep < mSteps.size() && mSteps[mNextStep].frame <= mPosition; ++mNextStep) {
        const AutomationStep& step = mSteps[mNextStep];
        mInstance.setNormalized(step.parameter, step.normalized);
        if (step.parameter == mBypassParameter) {
            mIsBypassed = isOn(step.normalized);
        }
    }
}

void BlockProcessor::endBlock() {
    auto& meters = mInstance.meters();
    for (std::size_t tap = 0; tap < mMeters.size(); ++tap) {
        mMeters[tap] = meters.peak(tap);
        if (mIsBlockActive) {
            mLargest[tap] = std::max(mLargest[tap], mMeters[tap]);
        }
    }
    mWasActive = mWasActive || mIsBlockActive;
    mIsBlockActive = false;
    // Reset, so that the next block shows its own peaks and not the decay of these.
    meters.reset();
    if (mListener) {
        mListener(mBlockStart, mMeters);
    }
    mBlockStart = mPosition;
}

} // namespace varno
