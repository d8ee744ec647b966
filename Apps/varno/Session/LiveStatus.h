#ifndef VARNO_APPS_VARNO_SESSION_LIVESTATUS_H
#define VARNO_APPS_VARNO_SESSION_LIVESTATUS_H

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace varno {

/// The state of a running sound system. Written by its threads without locks, read by any thread.
class LiveStatus {
public:
    /// @param rateHz, blockFrames at the start
    LiveStatus(double rateHz, int blockFrames)
        : mRateHz(rateHz),
          mBlockFrames(blockFrames) {}

    double rateHz() const { return mRateHz.load(std::memory_order_relaxed); }
    /// Frames per block.
    int blockFrames() const { return mBlockFrames.load(std::memory_order_relaxed); }
    /// Number of blocks that came too late or were lost.
    int overruns() const { return mOverruns.load(std::memory_order_relaxed); }
    /// Why the sound system has ended; nothing while it runs.
    std::optional<std::string> ending() const {
        return mHasEnded.load(std::memory_order_acquire) ? std::optional<std::string>(mReason) : std::nullopt;
    }

    void setRate(double rateHz) noexcept { mRateHz.store(rateHz, std::memory_order_relaxed); }
    void setBlockFrames(int frames) noexcept { mBlockFrames.store(frames, std::memory_order_relaxed); }
    void countOverrun() noexcept { mOverruns.fetch_add(1, std::memory_order_relaxed); }
    /// Records the end; later calls do nothing. @param reason cut after kMostReason bytes
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

/// Follows a running sound system from the main thread, every kSoundCheckPeriod. [main]
class LiveWatch {
public:
    /// @param status outlives this object @param description of the sound system, for messages
    LiveWatch(const LiveStatus& status, std::string description)
        : mStatus(status),
          mDescription(std::move(description)),
          mRateHz(status.rateHz()) {}

    /// The rate that the effect runs at.
    double rateHz() const { return mRateHz; }
    /// Whether the sound system's rate differs from it.
    bool hasNewRate() const { return mStatus.rateHz() != mRateHz; }
    /// Makes the sound system's rate the effect's. @return it
    double followRate() { return mRateHz = mStatus.rateHz(); }
    /// @throws WorkError "JACK client varno: ..." once the sound system has ended
    void requireRunning() const;
    /// A message with the number so far if there were overruns since the last call; else nothing. For a place
    /// that shows one message, in which the number grows.
    std::optional<std::string> newOverruns();
    /// The same for a terminal, where each line stays: the first time only.
    std::optional<std::string> firstOverruns();
    /// The number in the end; nothing where there were no more than firstOverruns() has reported.
    std::optional<std::string> laterOverruns() const;
    int overruns() const { return mStatus.overruns(); }

private:
    const LiveStatus& mStatus;
    std::string mDescription;
    double mRateHz;
    int mToldOverruns = 0;
    int mFirstOverruns = 0; ///< As firstOverruns() has reported them; 0 before.
};

/// "1 overrun", "2 overruns"
std::string overrunText(int overruns);

} // namespace varno

#endif
