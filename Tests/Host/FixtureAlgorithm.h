/// The fixture module's processing routine: a gain.
#ifndef FIXTUREALGORITHM_H
#define FIXTUREALGORITHM_H

#include "AAX.h"

#include <cstdint>
#include <functional>

namespace varno::fixture {

/// Private data of one instance.
struct State {
    int64_t frames; ///< Frames processed since the reset.
    float start;    ///< What the reset has written.
};

/// What the reset writes into `start`.
inline constexpr float kStart = 0.25F;

/// The context block; the order of its members is the order of Field.
struct Context {
    const float* gain;
    const int32_t* bypass;
    const float* const* inputs;
    float* const* outputs;
    const int32_t* frames;
    const float* sampleRateHz;
    float* meters;
    State* state;
    const int64_t* clock;
    float* scratch;
    const int32_t* sideChain;
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
inline constexpr uint32_t kScratchSize = 4096 * sizeof(float);

/// What the routine saw in its last call, for tests.
struct Sight {
    int32_t calls = 0;
    int32_t frames = 0;
    float sampleRateHz = 0.0F;
    int64_t clock = 0;
    int32_t sideChain = 0;
    bool reservedIsNull = false;
    bool stateIsAligned = false;
};
const Sight& lastSight();

/// Is called at the end of each call of the routine; empty for nothing.
void setHook(std::function<void()> hook);

/// The routine for a number of channels.
template<int32_t kChannels>
void process(void* const begin[], const void* end);

extern template void process<1>(void* const begin[], const void* end);
extern template void process<2>(void* const begin[], const void* end);

} // namespace varno::fixture

#endif
