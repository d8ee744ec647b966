#include "Host/Oversampling/Oversampling.h"

#include "Host/InstanceHost.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace varno {

namespace {

// Samples that an oversampled instance processes at a time, so that all that they pass stays in a processor's
// first cache.
constexpr std::int32_t kSliceSamples = 1024;

// Samples by which sound is delayed between the filters, so that it comes back in whole frames: of each frame
// the last sample is the one that comes out.
std::int32_t extraDelay(std::int32_t factor, std::int32_t routineLatencyFrames) {
    const std::int32_t samples = 2 * converterDelay(factor) + routineLatencyFrames;
    return (2 * factor - 1 - samples % factor) % factor;
}

InstanceSetup oversampled(InstanceSetup setup, std::int32_t factor, std::int32_t sliceFrames) {
    setup.sampleRateHz *= factor;
    setup.maximumFrames = sliceFrames * factor;
    setup.oversampling = factor;
    setup.coefficientDelayFrames = converterDelay(factor);
    return setup;
}

} // namespace

std::int32_t fittingFactor(std::int32_t wish, const SampleRateRange& range, double sampleRateHz) {
    std::int32_t fitting = 1;
    for (const std::int32_t factor : kOversamplingFactors) {
        if (factor <= wish && factor * sampleRateHz <= range.highestHz) {
            fitting = factor;
        }
    }
    return fitting;
}

std::int32_t oversampledLatency(std::int32_t factor, std::int32_t routineLatencyFrames) {
    const std::int32_t samples =
        2 * converterDelay(factor) + routineLatencyFrames + extraDelay(factor, routineLatencyFrames);
    return (samples - (factor - 1)) / factor;
}

struct Oversampling::Path {
    Path(const Instance& instance, std::int32_t itsFactor, std::int32_t routineLatencyFrames)
        : factor(itsFactor),
          sliceFrames(std::min(kSliceSamples / itsFactor, instance.setup().maximumFrames)),
          latencyFrames(oversampledLatency(factor, routineLatencyFrames)),
          high(instance.sharedModule(), oversampled(instance.setup(), factor, sliceFrames)),
          samples(static_cast<std::size_t>(instance.setup().channels)) {
        const HalfBandKernels& kernels = chooseHalfBandKernels();
        const auto mostFrames = static_cast<std::size_t>(sliceFrames);
        const auto extra = static_cast<std::size_t>(extraDelay(factor, routineLatencyFrames));
        for (std::size_t channel = 0; channel < samples.size(); ++channel) {
            up.emplace_back(factor, mostFrames, kernels);
            down.emplace_back(factor, mostFrames, extra, kernels);
        }
    }

    void clear() noexcept {
        for (std::size_t channel = 0; channel < samples.size(); ++channel) {
            up[channel].clear();
            down[channel].clear();
        }
    }

    // At most sliceFrames.
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) noexcept {
        const auto count = static_cast<std::size_t>(frames);
        for (std::size_t channel = 0; channel < samples.size(); ++channel) {
            samples[channel] = up[channel].process(inputs[channel], count);
        }
        high.process(samples.data(), samples.data(), frames * factor);
        for (std::size_t channel = 0; channel < samples.size(); ++channel) {
            down[channel].process(samples[channel], outputs[channel], count);
        }
    }

    std::int32_t factor;
    std::int32_t sliceFrames;
    std::int32_t latencyFrames;
    Instance high;               ///< At the higher rate.
    std::vector<float*> samples; ///< Of the present slice, by channel.
    std::vector<Upsampler> up;
    std::vector<Downsampler> down;
};

Oversampling::Oversampling(Instance& instance, const OversamplingSetup& setup)
    : mInstance(instance),
      mRoutineLatencyFrames(setup.routineLatencyFrames),
      mHalfFadeFrames(static_cast<std::int32_t>(
          std::ceil(kOversamplingFadeSeconds / 2.0 * instance.setup().sampleRateHz))),
      mSliceFrames(std::min(kSliceSamples, instance.setup().maximumFrames)),
      mInputs(static_cast<std::size_t>(instance.setup().channels)),
      mOutputs(mInputs.size()) {
    const SampleRateRange& range = instance.module().options().sampleRates;
    const auto fits = [&](std::int32_t factor) {
        return fittingFactor(factor, range, instance.setup().sampleRateHz);
    };
    for (std::size_t path = 1; path < kPaths; ++path) {
        const std::int32_t factor = kOversamplingFactors[path];
        if (fits(factor) == factor && (setup.canChange || factor == fits(setup.factor))) {
            mPaths[path] = std::make_unique<Path>(instance, factor, setup.routineLatencyFrames);
            mSliceFrames = std::min(mSliceFrames, mPaths[path]->sliceFrames);
        }
        mMostLatencyFrames = std::max(mMostLatencyFrames, latencyOf(path));
    }
    mMostLatencyFrames = std::max(mMostLatencyFrames, latencyOf(0));
    if (setup.canChange) {
        mUnheard.assign(mOutputs.size(), std::vector<float>(static_cast<std::size_t>(mSliceFrames)));
        for (std::vector<float>& unheard : mUnheard) {
            mUnheardOutputs.push_back(unheard.data());
        }
    }
    for (const ParameterInfo& parameter : instance.parameters()) {
        mValues.push_back({static_cast<std::size_t>(parameter.index), instance.normalized(parameter.id)});
    }
    instance.setFollower(this);
    setFactor(setup.factor);
    reset();
}

Oversampling::~Oversampling() {
    mInstance.setFollower(nullptr);
}

std::int32_t Oversampling::latencyOf(std::size_t path) const noexcept {
    return mPaths[path] != nullptr ? mPaths[path]->latencyFrames : mRoutineLatencyFrames;
}

Instance& Oversampling::instanceOf(std::size_t path) noexcept {
    return mPaths[path] != nullptr ? mPaths[path]->high : mInstance;
}

void Oversampling::follow(std::span<const BufferValue> values) noexcept {
    for (const BufferValue& value : values) {
        if (value.parameter < mValues.size() && !std::isnan(value.normalized)) {
            mValues[value.parameter].normalized = value.normalized;
        }
    }
    for (std::size_t path = 1; path < kPaths; ++path) {
        if (mIsFollowing[path]) {
            mPaths[path]->high.setBeforeBuffer(values);
        }
    }
}

// Those that are heard, or may be next, follow the values; the new one receives them all first.
void Oversampling::choose(std::int32_t factor) noexcept {
    std::size_t wanted = stagesOf(factor);
    while (wanted > 0 && mPaths[wanted] == nullptr) {
        --wanted;
    }
    std::array<bool, kPaths> isFollowing{};
    for (const std::size_t path : {mActive.load(), mNext.load(), stagesOf(mTarget.load()), wanted}) {
        isFollowing[path] = mPaths[path] != nullptr;
    }
    if (mPaths[wanted] != nullptr && !mIsFollowing[wanted]) {
        mPaths[wanted]->high.setBeforeBuffer(mValues);
    }
    mIsFollowing = isFollowing;
    mWish.store(factor, std::memory_order_relaxed);
    mTarget.store(kOversamplingFactors[wanted], std::memory_order_release);
}

void Oversampling::setFactor(std::int32_t factor) {
    const MainGate::Scope scope(mInstance.host().state().gate, "Oversampling::setFactor");
    choose(factor);
}

bool Oversampling::setFactorBeforeBuffer(std::int32_t factor) noexcept {
    const AudioThreadScope audioThread;
    const MainGate::BufferValuesScope scope(mInstance.host().state().gate);
    if (scope.isHeld()) {
        choose(factor);
    }
    return scope.isHeld();
}

std::int32_t Oversampling::framesHeld() noexcept {
    const std::size_t target = stagesOf(mTarget.load(std::memory_order_acquire));
    if (mFadeFrame == 2 * mHalfFadeFrames && target != mActive) {
        beginChange(target);
    }
    return mNext != mActive ? mHalfFadeFrames - mFadeFrame : std::numeric_limits<std::int32_t>::max();
}

void Oversampling::beginChange(std::size_t target) noexcept {
    mNext = target;
    if (mPaths[target] != nullptr) {
        mPaths[target]->clear();
    }
    instanceOf(target).continueFrom(instanceOf(mActive));
    if (mIsStarting) {
        hear(target);
    } else {
        mFadeFrame = 0;
    }
}

void Oversampling::hear(std::size_t path) noexcept {
    mActive = path;
    mNext = path;
    mLatencyFrames.store(latencyOf(path), std::memory_order_relaxed);
}

void Oversampling::point(const float* const* inputs, float* const* outputs, std::int32_t offset) noexcept {
    for (std::size_t channel = 0; channel < mInputs.size(); ++channel) {
        mInputs[channel] = inputs[channel] + offset;
        mOutputs[channel] = outputs[channel] + offset;
    }
}

void Oversampling::process(const float* const* inputs, float* const* outputs, std::int32_t frames) noexcept {
    const std::size_t active = mActive;
    const std::size_t next = mNext;
    mIsStarting = mIsStarting && frames == 0;
    if (active == 0 && next == 0) {
        mInstance.process(inputs, outputs, frames);
        return;
    }
    std::int32_t done = 0;
    do {
        const std::int32_t length = std::min(frames - done, mSliceFrames);
        point(inputs, outputs, done);
        if (next != active) {
            processUnheard(next, length);
        }
        if (active == 0) {
            mInstance.process(mInputs.data(), mOutputs.data(), length);
        } else {
            Path& path = *mPaths[active];
            path.high.meters().copyTaps(mInstance.meters());
            path.process(mInputs.data(), mOutputs.data(), length);
            // The instance's position has moved where it is the next.
            mInstance.passBy(next == 0 ? 0 : length, path.high.meters());
        }
        done += length;
    } while (done < frames);
}

void Oversampling::processUnheard(std::size_t path, std::int32_t frames) noexcept {
    if (path == 0) {
        mInstance.process(mInputs.data(), mUnheardOutputs.data(), frames);
    } else {
        mPaths[path]->process(mInputs.data(), mUnheardOutputs.data(), frames);
    }
}

void Oversampling::fade(float* const* outputs, std::int32_t frames) noexcept {
    const std::int32_t end = 2 * mHalfFadeFrames;
    if (mFadeFrame == end) {
        return;
    }
    for (std::size_t channel = 0; channel < mOutputs.size(); ++channel) {
        for (std::int32_t frame = 0; frame < std::min(frames, end - mFadeFrame); ++frame) {
            const std::int32_t distance = std::abs(mFadeFrame + frame + 1 - mHalfFadeFrames);
            outputs[channel][frame] *= static_cast<float>(distance) / static_cast<float>(mHalfFadeFrames);
        }
    }
    mFadeFrame = std::min(mFadeFrame + frames, end);
    if (mNext != mActive && mFadeFrame == mHalfFadeFrames) {
        hear(mNext);
    }
}

void Oversampling::reset() {
    const MainGate::Scope scope(mInstance.host().state().gate, "Oversampling::reset");
    mInstance.reset();
    for (const std::unique_ptr<Path>& path : mPaths) {
        if (path != nullptr) {
            path->high.reset();
            path->clear();
        }
    }
    mIsStarting = true;
    mFadeFrame = 2 * mHalfFadeFrames;
    hear(stagesOf(mTarget));
}

} // namespace varno
