/// The effect at work for hours of sound, and what is different afterwards.
#ifndef VARNO_TESTS_ENDURANCE_LONGRUN_H
#define VARNO_TESTS_ENDURANCE_LONGRUN_H

#include "Host/Instance.h"
#include "Host/Module.h"
#include "Host/Oversampling/Oversampling.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace varno::test {

/// Of every long run.
inline constexpr double kLongRunRateHz = 48000.0;
inline constexpr std::size_t kLongRunChannels = 2;

/// A stereo instance at one quality. Tests derive faulty ones.
class LongRunEffect {
public:
    LongRunEffect(const std::shared_ptr<Module>& module, std::int32_t factor);
    LongRunEffect(const LongRunEffect&) = delete;
    LongRunEffect& operator=(const LongRunEffect&) = delete;
    virtual ~LongRunEffect() = default;

    Instance& instance() { return mInstance; }
    /// Instance's calls of these names, or those of Oversampling.
    virtual void process(const float* const* inputs, float* const* outputs, std::int32_t frames);
    virtual void reset();
    virtual void restore(const StoredChunk& chunk);
    virtual std::int64_t position();

private:
    Instance mInstance;
    Oversampling mOversampling;
};

/// Makes one at its start.
using LongRunEffectMaker = std::function<std::unique_ptr<LongRunEffect>()>;

struct LongRunPlan {
    std::int64_t frames = 0; ///< At least one hundred buffers.
    std::uint32_t seed = 1;  ///< Of sound, lengths of buffers and settings.
    /// Called a hundred times with the frames so far; may be empty.
    std::function<void(std::int64_t frames)> onProgress = {};
};

struct LongRunReport {
    std::int64_t buffers = 0;
    std::int64_t changes = 0;       ///< Of settings.
    std::int64_t badInputs = 0;     ///< Buffers with samples that are no numbers, infinite or far too large.
    std::int64_t badBuffers = 0;    ///< Buffers with an output sample that is not finite.
    std::int64_t badMeters = 0;     ///< Readings of a meter that are not finite.
    std::int64_t positionError = 0; ///< The position at the end, less the frames processed.
    std::ptrdiff_t residentBytes = 0; ///< By which memory grew after the first twentieth of the run.
    std::ptrdiff_t allocatedBytes = 0;
    /// The output beside that of a new instance with the same state, after both have processed a silence,
    /// without a reset: the largest difference in dBFS. It is not none, since a follower in single
    /// precision stops where its next step is too small to change the number, on the side from which it came.
    double differenceAfterSilenceDB = 0.0;
    /// The same after a reset: where it first differs, bit by bit; empty where it does not.
    std::string differenceAfterReset;
};

/// Plays sound of all levels, silence and unusable samples through an effect in buffers of 1 to 2000 frames.
/// About once a second settings change: one of them, all of them, or a saved state returns.
LongRunReport runForLong(const LongRunEffectMaker& make, const LongRunPlan& plan);

} // namespace varno::test

#endif
