/// Audio without an end for measurements.
#ifndef VARNO_BENCHMARKS_LOOPEDSIGNAL_H
#define VARNO_BENCHMARKS_LOOPEDSIGNAL_H

#include "Tests/Support/Signal.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace varno::bench {

/// Buffers of one length out of a signal of one or two channels, from its start again when no whole buffer is
/// left. Every output goes to the same memory, as in a host.
class LoopedSignal {
public:
    /// @param signal borrowed, at least one buffer long
    LoopedSignal(const test::Signal& signal, std::int32_t bufferFrames)
        : mSignal(signal),
          mBufferFrames(bufferFrames),
          mOutput(signal.size(), std::vector<float>(static_cast<std::size_t>(bufferFrames))) {
        for (std::size_t channel = 0; channel < mSignal.size(); ++channel) {
            mOutputs[channel] = mOutput[channel].data();
        }
        advance(0);
    }
    LoopedSignal(const LoopedSignal&) = delete;
    LoopedSignal& operator=(const LoopedSignal&) = delete;

    /// Goes on to the next buffer.
    void next() {
        const std::size_t after = mStart + frames();
        advance(after + frames() <= test::framesOf(mSignal) ? after : 0);
    }

    const float* const* inputs() const { return mInputs.data(); }
    float* const* outputs() { return mOutputs.data(); }
    std::int32_t bufferFrames() const { return mBufferFrames; }

    /// The floor of all processing: the input as it is.
    void copy() {
        for (std::size_t channel = 0; channel < mSignal.size(); ++channel) {
            std::copy_n(mInputs[channel], frames(), mOutputs[channel]);
        }
    }

private:
    std::size_t frames() const { return static_cast<std::size_t>(mBufferFrames); }
    void advance(std::size_t start) {
        mStart = start;
        for (std::size_t channel = 0; channel < mSignal.size(); ++channel) {
            mInputs[channel] = mSignal[channel].data() + start;
        }
    }

    const test::Signal& mSignal;
    std::int32_t mBufferFrames;
    test::Signal mOutput;
    std::size_t mStart = 0;
    std::array<const float*, 2> mInputs{};
    std::array<float*, 2> mOutputs{};
};

} // namespace varno::bench

#endif
