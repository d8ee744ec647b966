#ifndef VARNO_APPS_VARNO_RENDER_BLOCKPROCESSOR_H
#define VARNO_APPS_VARNO_RENDER_BLOCKPROCESSOR_H

#include "Host/Oversampling/Oversampling.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace varno {

/// A parameter's value from one frame on.
struct AutomationStep {
    std::int64_t frame = 0;
    std::string parameter;
    double normalized = 0.0;
};

/// Runs an effect over a stream in blocks of fixed length, independent of the lengths passed to process().
/// A block is split where a parameter changes, so that it changes at the exact sample.
class BlockProcessor {
public:
    /// Called at the end of each block with its first frame and the largest value of each meter in it.
    using BlockListener = std::function<void(std::int64_t frame, std::span<const float> meters)>;

    /// @param effect at its start; outlives this object
    /// @param steps by frame
    /// @param blockFrames 1 to its instance's maximum
    BlockProcessor(Oversampling& effect, std::vector<AutomationStep> steps, int blockFrames);

    void setBlockListener(BlockListener listener) { mListener = std::move(listener); }

    /// Processes the next frames in place. @param channels one pointer per channel
    void process(float* const* channels, int frames);

    /// The parts of process(), for an instance that others process with theirs: the frames up to the end of
    /// the block or to the next change, whose values are then set; what follows their processing.
    /// @param most at least 1 @return 1 to `most`
    int begin(int most);
    void end(int frames);
    Instance& instance() { return mInstance; }
    Oversampling& effect() { return mEffect; }

    /// Ends the last block, which may be shorter.
    void finish();

    /// Whether any sample so far was processed without the master bypass.
    bool wasActive() const { return mWasActive; }

    /// The largest value of each meter so far, in the order of the instance's meters. Blocks that were
    /// bypassed from start to end do not count: their meters show what the effect would do.
    const std::vector<float>& largestMeters() const { return mLargest; }

private:
    void applySteps();
    void endBlock();

    Oversampling& mEffect;
    Instance& mInstance;
    std::vector<AutomationStep> mSteps;
    std::size_t mNextStep = 0;
    std::int64_t mBlockFrames;
    std::int64_t mBlockStart = 0;
    std::int64_t mPosition = 0;
    std::string mBypassParameter; ///< Empty: the effect has no master bypass.
    bool mIsBypassed = false;
    bool mIsBlockActive = false; ///< Some of the present block was not bypassed.
    bool mWasActive = false;
    std::vector<float*> mChannels; ///< Moved along while processing.
    std::vector<float> mMeters;
    std::vector<float> mLargest;
    BlockListener mListener;
};

} // namespace varno

#endif
