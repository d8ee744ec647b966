#ifndef VARNO_APPS_VARNO_LIVE_LIVESTATUS_H
#define VARNO_APPS_VARNO_LIVE_LIVESTATUS_H

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace varno {

/// What a running sound system tells of itself. Told by its threads without locks, read by any.
class LiveStatus {
public:
    /// @param rateHz, blockFrames at the start
    LiveStatus(double rateHz, int blockFrames)
        : mRateHz(rateHz),
          mBlockFrames(blockFrames) {}

    double rateHz() const { return mRateHz.load(std::memory_order_relaxed); }
    /// Frames that are processed at a time.
    int blockFrames() const { return mBlockFrames.load(std::memory_order_relaxed); }
    /// How often a block came too late, or was lost.
    int overruns() const { return mOverruns.load(std::memory_order_relaxed); }
    /// Why the sound system is gone; nothing while it runs.
    std::optional<std::string> ending() const {
        return mHasEnded.load(std::memory_order_acquire) ? std::optional<std::string>(mReason) : std::nullopt;
    }

    void setRate(double rateHz) noexcept { mRateHz.store(rateHz, std::memory_order_relaxed); }
    void setBlockFrames(int frames) noexcept { mBlockFrames.store(frames, std::memory_order_relaxed); }
    void countOverrun() noexcept { mOverruns.fetch_add(1, std::memory_order_relaxed); }
    /// The first end counts. @param reason cut after kMostReason bytes
    void end(std::string_view reason) noexcept {
        if (!mIsEnding.exchange(true)) {
            const std::size_t length = std::min(reason.size(), kMostReason);
            std::copy_n(reason.data(), length, mReason);
            mHasEnded.store(true, std::memory_order_release);
        }
    }

    static constexpr std::size_t kMostReason = 255;

private:
    std::atomic<double> mRateHz;
    std::atomic<int> mBlockFrames;
    std::atomic<int> mOverruns{0};
    std::atomic<bool> mIsEnding{false};
    std::atomic<bool> mHasEnded{false};
    char mReason[kMostReason + 1] = {};
};

} // namespace varno

#endif
