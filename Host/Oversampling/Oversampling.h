/// An instance that processes at a multiple of the sound's rate.
#ifndef VARNO_HOST_OVERSAMPLING_OVERSAMPLING_H
#define VARNO_HOST_OVERSAMPLING_OVERSAMPLING_H

#include "Host/Instance.h"
#include "Host/Oversampling/RateConverter.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// How long the change of the factor takes: half of it the sound fades out, half of it in.
inline constexpr double kOversamplingFadeSeconds = 0.020;

/// The highest factor that is at most `wish` and takes the rate no higher than the range allows; 1 where none
/// does. [any]
std::int32_t fittingFactor(std::int32_t wish, const SampleRateRange& range, double sampleRateHz);

/// The whole latency in frames at a factor, of a routine with that latency at any rate. [any]
std::int32_t oversampledLatency(std::int32_t factor, std::int32_t routineLatencyFrames);

/// What an Oversampling is made for.
struct OversamplingSetup {
    std::int32_t routineLatencyFrames = 0; ///< Of the effect's processed sound, in frames of any rate.
    std::int32_t factor = 1;               ///< At the start.
    bool canChange = false;                ///< Else the factor stays, and no memory is taken for others.
};

/// Processes an instance at its own rate or, by filters before and behind, another instance of the effect at
/// a multiple of it, which has the same settings. The instance itself stays the one to talk to: its values
/// are followed, and its meters and position move. At factor 1 the sound is the instance's own, bit for bit.
/// At any other, all processors and all divisions into buffers give the same bits. A setting that is given
/// before a buffer acts on the sound of that buffer's first frame.
class Oversampling final : private ValueFollower {
public:
    /// Makes the instances that the factors need. A factor that does not fit the rate is lowered.
    /// @param instance at its start; outlives this object, and nothing else processes it
    /// @throws HostError as Instance does [main]
    Oversampling(Instance& instance, const OversamplingSetup& setup);
    Oversampling(const Oversampling&) = delete;
    Oversampling& operator=(const Oversampling&) = delete;
    ~Oversampling();

    Instance& instance() noexcept { return mInstance; }
    const Instance& instance() const noexcept { return mInstance; }

    /// Wishes for a factor (of kOversamplingFactors) from now on. The highest that fits the rate is used.
    /// [main]
    void setFactor(std::int32_t factor);
    /// The same on the audio thread: false, with nothing done, where another thread is in a [main] call of
    /// the instance. [audio]
    bool setFactorBeforeBuffer(std::int32_t factor) noexcept;
    /// The factor that was wished for. [any]
    std::int32_t wish() const noexcept { return mWish.load(std::memory_order_relaxed); }
    /// The factor that is used, or faded to. [any]
    std::int32_t factor() const noexcept { return mTarget.load(std::memory_order_relaxed); }
    /// Latency in frames of the present sound: it changes in the middle of the fade between two factors.
    /// [any]
    std::int32_t latencyFrames() const noexcept { return mLatencyFrames.load(std::memory_order_relaxed); }
    /// The largest that latencyFrames may be. [any]
    std::int32_t mostLatencyFrames() const noexcept { return mMostLatencyFrames; }

    /// Starts a change that was wished for; before the first frame, the change is done at once. To be called
    /// before each `process`.
    /// @return frames, 1 or more, for which the latency stays [audio]
    std::int32_t framesHeld() noexcept;
    /// Instance::process at the present factor, of at most `framesHeld` frames. [audio]
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) noexcept;
    /// The fade of a change, in what has become of the frames just processed. [audio]
    void fade(float* const* outputs, std::int32_t frames) noexcept;
    /// Instance::reset, of all that belongs to it; a change that was under way is done. [main]
    void reset();

private:
    /// One factor.
    struct Path;

    static constexpr std::size_t kPaths = kOversamplingFactors.size();

    void follow(std::span<const BufferValue> values) noexcept override;
    void choose(std::int32_t factor) noexcept;
    Instance& instanceOf(std::size_t path) noexcept;
    void point(const float* const* inputs, float* const* outputs, std::int32_t offset) noexcept;
    void processUnheard(std::size_t path, std::int32_t frames) noexcept;
    std::int32_t latencyOf(std::size_t path) const noexcept;
    void beginChange(std::size_t target) noexcept;
    void hear(std::size_t path) noexcept;

    Instance& mInstance;
    std::int32_t mRoutineLatencyFrames;
    std::int32_t mMostLatencyFrames = 0;
    std::int32_t mHalfFadeFrames;
    std::int32_t mSliceFrames;
    std::array<std::unique_ptr<Path>, kPaths> mPaths; ///< By stages; null where the factor is not there.
    std::vector<BufferValue> mValues;                 ///< Of all parameters. Under the instance's gate.
    std::array<bool, kPaths> mIsFollowing{};          ///< Likewise.
    std::atomic<std::int32_t> mWish{1};
    std::atomic<std::int32_t> mTarget{1};
    std::atomic<std::int32_t> mLatencyFrames{0};
    std::atomic<std::size_t> mActive{0};      ///< The path that is heard. Written by the audio thread alone.
    std::atomic<std::size_t> mNext{0};        ///< Likewise; mActive where nothing changes.
    bool mIsStarting = true;                  ///< Nothing has been processed yet.
    std::int32_t mFadeFrame = 0;              ///< Of a change; twice mHalfFadeFrames at its end.
    std::vector<std::vector<float>> mUnheard; ///< What the next path puts out before it is heard.
    std::vector<float*> mUnheardOutputs;
    std::vector<const float*> mInputs; ///< Of the present slice.
    std::vector<float*> mOutputs;
};

} // namespace varno

#endif
