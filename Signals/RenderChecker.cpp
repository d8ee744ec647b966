#include "Signals/RenderChecker.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <stdexcept>

namespace varno::signals {
namespace {

// A quiet NaN that no arithmetic makes: what is not yet written.
constexpr std::uint32_t kUnwrittenBits = 0x7FC5A5A5U;
// The samples before and after a buffer that must stay as they are.
constexpr std::size_t kCanaryFrames = 64;

bool isUnwritten(float sample) {
    return std::bit_cast<std::uint32_t>(sample) == kUnwrittenBits;
}

// Memory for one buffer between canaries.
class GuardedBuffer {
public:
    GuardedBuffer(std::size_t frames, std::size_t offset)
        : mStart(kCanaryFrames + offset),
          mFrames(frames),
          mMemory(mStart + frames + kCanaryFrames, std::bit_cast<float>(kUnwrittenBits)) {}

    float* data() { return mMemory.data() + mStart; }
    const float* data() const { return mMemory.data() + mStart; }

    void fill(const std::vector<float>& samples) { std::copy(samples.begin(), samples.end(), data()); }
    std::vector<float> samples() const { return {data(), data() + mFrames}; }

    bool canariesLive() const {
        const auto begin = mMemory.begin();
        const auto start = begin + static_cast<std::ptrdiff_t>(mStart);
        const auto end = start + static_cast<std::ptrdiff_t>(mFrames);
        return std::all_of(begin, start, isUnwritten) && std::all_of(end, mMemory.end(), isUnwritten);
    }

private:
    std::size_t mStart;
    std::size_t mFrames;
    std::vector<float> mMemory;
};

bool hasOutputsOfItsOwn(BufferLayout layout) {
    return layout == BufferLayout::kSeparate || layout == BufferLayout::kSharedInput;
}

// The buffers of one rendering.
class Buffers {
public:
    Buffers(const Signal& input, const RenderPlan& plan)
        : mLayout(plan.layout) {
        for (const std::vector<float>& samples : input) {
            mIn.emplace_back(samples.size(), plan.offset).fill(samples);
        }
        const std::size_t outputs = plan.outputs == 0 ? input.size() : plan.outputs;
        if (outputs != input.size() && !hasOutputsOfItsOwn(plan.layout)) {
            throw std::invalid_argument("inputs and outputs that share memory are as many");
        }
        for (std::size_t channel = 0; channel < outputs; ++channel) {
            mOut.emplace_back(framesOf(input), plan.offset);
        }
    }

    void process(const BufferProcessor& processor, std::size_t start, std::int32_t frames) {
        std::vector<const float*> inputs;
        std::vector<float*> outputs;
        for (std::size_t channel = 0; channel < mIn.size(); ++channel) {
            inputs.push_back(inputOf(channel).data() + start);
        }
        for (std::size_t channel = 0; channel < mOut.size(); ++channel) {
            outputs.push_back(outputOf(channel).data() + start);
        }
        processor(inputs.data(), outputs.data(), frames);
    }

    RenderOutcome outcome(const Signal& input) {
        RenderOutcome result;
        bool canaries = true;
        bool unchanged = true;
        for (std::size_t channel = 0; channel < mOut.size(); ++channel) {
            result.output.push_back(outputOf(channel).samples());
            canaries = canaries && mOut[channel].canariesLive();
        }
        for (std::size_t channel = 0; channel < mIn.size(); ++channel) {
            canaries = canaries && mIn[channel].canariesLive();
            unchanged = unchanged && firstDifference(input[channel], mIn[channel].samples()).empty();
        }
        if (!canaries) {
            result.complaints.emplace_back("wrote outside the buffers");
        }
        if (hasOutputsOfItsOwn(mLayout) && !unchanged) {
            result.complaints.emplace_back("changed an input");
        }
        complainOfSamples(result);
        return result;
    }

private:
    GuardedBuffer& inputOf(std::size_t channel) {
        return mLayout == BufferLayout::kSharedInput ? mIn.front() : mIn[channel];
    }

    GuardedBuffer& outputOf(std::size_t channel) {
        if (mLayout == BufferLayout::kInPlace) {
            return mIn[channel];
        }
        return mLayout == BufferLayout::kCrossed ? mIn[(channel + 1) % mIn.size()] : mOut[channel];
    }

    static void complainOfSamples(RenderOutcome& ioOutcome) {
        bool unwritten = false;
        bool finite = true;
        for (const std::vector<float>& samples : ioOutcome.output) {
            for (const float sample : samples) {
                unwritten = unwritten || isUnwritten(sample);
                finite = finite && (std::isfinite(sample) || isUnwritten(sample));
            }
        }
        if (unwritten) {
            ioOutcome.complaints.emplace_back("left a sample unwritten");
        }
        if (!finite) {
            ioOutcome.complaints.emplace_back("wrote a sample that is not finite");
        }
    }

    BufferLayout mLayout;
    std::vector<GuardedBuffer> mIn;
    std::vector<GuardedBuffer> mOut;
};

} // namespace

RenderOutcome renderChecked(const BufferProcessor& process, const Signal& input, const RenderPlan& plan) {
    Buffers buffers(input, plan);
    const auto frames = static_cast<std::int32_t>(framesOf(input));
    const std::vector<std::int32_t> blocks =
        plan.blocks.empty() ? std::vector<std::int32_t>{frames} : plan.blocks;
    if (frames > 0 && *std::max_element(blocks.begin(), blocks.end()) < 1) {
        throw std::invalid_argument("a render plan needs a block of at least one frame");
    }
    std::int32_t done = 0;
    for (std::size_t i = 0; done < frames; i = (i + 1) % blocks.size()) {
        const std::int32_t block = std::min(blocks[i], frames - done);
        buffers.process(process, static_cast<std::size_t>(done), block);
        done += std::max(block, 0);
    }
    return buffers.outcome(input);
}

std::string textOf(const std::vector<std::string>& complaints) {
    std::string text;
    for (const std::string& complaint : complaints) {
        text += complaint + '\n';
    }
    return text;
}

} // namespace varno::signals
