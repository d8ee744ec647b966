#include "Host/Oversampling/RateConverter.h"

#include <algorithm>

namespace varno {

void SampleHistory::passed(std::size_t samples) noexcept {
    const auto end = mSamples.begin() + static_cast<std::ptrdiff_t>(samples);
    std::copy_n(end, mHistory, mSamples.begin());
}

void SampleHistory::clear() noexcept {
    std::fill(mSamples.begin(), mSamples.end(), 0.0F);
}

Upsampler::Upsampler(std::int32_t factor, std::size_t mostFrames, const HalfBandKernels& kernels)
    : mKernels(kernels) {
    for (std::size_t stage = 0; stage < stagesOf(factor); ++stage) {
        mInputs.emplace_back(halfBandHistory(stage), mostFrames << stage);
    }
    mInputs.emplace_back(0, mostFrames << stagesOf(factor));
}

float* Upsampler::process(const float* in, std::size_t frames) noexcept {
    mKernels.copyUsable(in, mInputs.front().block(), frames);
    for (std::size_t stage = 0; stage + 1 < mInputs.size(); ++stage) {
        mKernels.stages[stage].raise(mInputs[stage].block(), mInputs[stage + 1].block(), frames << stage);
        mInputs[stage].passed(frames << stage);
    }
    return mInputs.back().block();
}

void Upsampler::clear() noexcept {
    for (SampleHistory& input : mInputs) {
        input.clear();
    }
}

Downsampler::Downsampler(std::int32_t factor, std::size_t mostFrames, std::size_t extraDelay,
                         const HalfBandKernels& kernels)
    : mKernels(kernels),
      mDelayed(extraDelay, mostFrames * static_cast<std::size_t>(factor)),
      mExtraDelay(extraDelay),
      mBetween(mostFrames * static_cast<std::size_t>(factor) / 2 + kKernelSlack) {
    for (std::size_t stage = 0; stage < stagesOf(factor); ++stage) {
        const std::size_t history = halfBandHistory(stage);
        mStages.push_back(
            {SampleHistory(history, mostFrames << stage), SampleHistory(history, mostFrames << stage)});
    }
}

void Downsampler::process(const float* in, float* out, std::size_t frames) noexcept {
    const std::size_t samples = frames << mStages.size();
    if (mExtraDelay > 0) {
        std::copy_n(in, samples, mDelayed.block());
        in = mDelayed.block() - mExtraDelay;
    }
    for (std::size_t left = mStages.size(); left > 0; --left) {
        Stage& stage = mStages[left - 1];
        const std::size_t lowered = frames << (left - 1);
        mKernels.separateUsable(in, stage.even.block(), stage.odd.block(), lowered);
        mKernels.stages[left - 1].lower(stage.even.block(), stage.odd.block(), mBetween.data(), lowered);
        stage.even.passed(lowered);
        stage.odd.passed(lowered);
        in = mBetween.data();
    }
    std::copy_n(in, frames, out);
    mDelayed.passed(samples);
}

void Downsampler::clear() noexcept {
    mDelayed.clear();
    for (Stage& stage : mStages) {
        stage.even.clear();
        stage.odd.clear();
    }
}

} // namespace varno
