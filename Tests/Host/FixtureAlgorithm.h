/// The fixture module's processing routine: a gain.
#ifndef VARNO_TESTS_HOST_FIXTUREALGORITHM_H
#define VARNO_TESTS_HOST_FIXTUREALGORITHM_H

#include "AAX.h"

#include <cstdint>
#include <functional>

namespace varno::fixture {

/// Private data of one instance.
struct State {
    std::int64_t frames; ///< Frames processed since the reset.
    float start;         ///< What the reset has written.
};

/// What the reset writes into `start`.
inline constexpr float kStart = 0.25F;

/// The context block; the order of its members is the order of Field.
struct Context {
    const float* gain;
    const std::int32_t* bypass;
    const float* const* inputs;
    float* const* outputs;
    const std::int32_t* frames;
    const float* sampleRateHz;
    float* meters;
    State* state;
    const std::int64_t* clock;
    float* scratch;
    const std::int32_t* sideChain;
    void* reserved;
};

enum Field : AAX_CFieldIndex {
    kGain,
    kBypass,
    kInputs,
    kOutputs,
    kFrames,
    kSampleRate,
    kMeters,
    kState,
    kClock,
    kScratch,
    kSideChain,
    kReserved,
};

/// Taps: largest absolute input and output.
inline constexpr AAX_CTypeID kMeterIDs[] = {AAX_FourCC("fxIn"), AAX_FourCC("fxOu")};
/// Bytes of scratch memory.
inline constexpr std::uint32_t kScratchSize = 4096 * sizeof(float);

/// What the routine saw in its last call, for tests.
struct Sight {
    std::int32_t calls = 0;
    std::int32_t frames = 0;
    float sampleRateHz = 0.0F;
    std::int64_t clock = 0;
    std::int32_t sideChain = 0;
    bool reservedIsNull = false;
    bool stateIsAligned = false;
};
const Sight& lastSight();

/// Is called at the end of each call of the routine; empty for nothing.
void setHook(std::function<void()> hook);

/// The routine for a number of channels.
template<std::int32_t kChannels>
void process(void* const begin[], const void* end);

extern template void process<1>(void* const begin[], const void* end);
extern template void process<2>(void* const begin[], const void* end);

} // namespace varno::fixture

#endif
