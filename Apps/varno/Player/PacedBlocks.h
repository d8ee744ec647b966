#ifndef VARNO_APPS_VARNO_PLAYER_PACEDBLOCKS_H
#define VARNO_APPS_VARNO_PLAYER_PACEDBLOCKS_H

#include "PlayerClock.h"

#include <atomic>
#include <cstdint>
#include <functional>

namespace varno {

/// Writes the next frames to one pointer per channel; real-time and without exceptions.
using AudioPull = std::function<void(float* const* channels, int frames)>;

/// How a player asks for audio.
struct PlayerFormat {
    double rateHz = 48'000.0;
    int channels = 2;
    int blockFrames = 512;
};

/// When each block is due. Blocks keep to whole multiples of their length from the start on, so that rounding
/// never adds up.
class BlockTimes {
public:
    using TimePoint = PlayerClock::TimePoint;

    BlockTimes(const PlayerFormat& format, TimePoint start)
        : mFormat(format),
          mStart(start) {}

    /// When the block after the last counted one is due.
    TimePoint due() const;
    /// Counts a block that was played. One that comes later than kLongestLag, as after the machine slept,
    /// starts the count anew: blocks that were missed are not played all at once.
    void countBlock(TimePoint now);

    static constexpr std::chrono::milliseconds kLongestLag{200};

private:
    PlayerFormat mFormat;
    TimePoint mStart;
    std::int64_t mBlocks = 0;
};

/// Pulls blocks in real time, by the clock, until `shallStop`; their sound goes nowhere. Allocates once, at
/// the start. [audio]
void playPaced(const PlayerFormat& format, const AudioPull& pull, PlayerClock& clock,
               const std::atomic<bool>& shallStop);

} // namespace varno

#endif
