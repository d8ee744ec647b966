/// Renders audio through anything that processes buffers, in guarded memory, and reports its faults.
#ifndef VARNO_SIGNALS_RENDERCHECKER_H
#define VARNO_SIGNALS_RENDERCHECKER_H

#include "Signals/Signal.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace varno::signals {

/// Processes one buffer: one pointer per channel, `frames` samples behind each.
using BufferProcessor =
    std::function<void(const float* const* inputs, float* const* outputs, std::int32_t frames)>;

/// How the buffers lie in memory.
enum class BufferLayout {
    kSeparate,    ///< Every buffer on its own.
    kInPlace,     ///< Each output is its channel's input.
    kCrossed,     ///< Each output is the input of the channel after it, the last one's that of the first.
    kSharedInput, ///< All inputs are the first channel's buffer; outputs on their own.
};

/// How a signal is divided into buffers.
struct RenderPlan {
    BufferLayout layout = BufferLayout::kSeparate;
    /// Lengths of the buffers, repeated until all frames are done; none for one buffer of all. Lengths below
    /// 1 are passed too and must have no effect.
    std::vector<std::int32_t> blocks = {};
    /// Samples by which each buffer lies off the allocator's alignment.
    std::size_t offset = 0;
    /// Channels of the output; 0 for as many as the input has. Others need outputs of their own.
    std::size_t outputs = 0;
};

/// The output, and what was wrong: written outside the buffers, an input changed, a sample left unwritten,
/// a sample that is not finite. Each kind is named once.
struct RenderOutcome {
    Signal output;
    std::vector<std::string> complaints;
};

/// Renders `input` through `process` as planned. The processor keeps its state from buffer to buffer.
/// Throws std::invalid_argument where no block of the plan has a frame, or where its outputs cannot lie so.
RenderOutcome renderChecked(const BufferProcessor& process, const Signal& input, const RenderPlan& plan = {});

/// The complaints, one per line; empty without any.
std::string textOf(const std::vector<std::string>& complaints);

} // namespace varno::signals

#endif
