#include "PacedBlocks.h"

#include <vector>

namespace varno {

BlockTimes::TimePoint BlockTimes::due() const {
    const std::chrono::duration<double> played(static_cast<double>(mBlocks * mFormat.blockFrames) /
                                               mFormat.rateHz);
    return mStart + std::chrono::round<TimePoint::duration>(played);
}

void BlockTimes::countBlock(TimePoint now) {
    if (now - due() > kLongestLag) {
        mStart = now;
        mBlocks = 0;
    }
    ++mBlocks;
}

void playPaced(const PlayerFormat& format, const AudioPull& pull, PlayerClock& clock,
               const std::atomic<bool>& shallStop) {
    const auto blockFrames = static_cast<std::size_t>(format.blockFrames);
    std::vector<float> samples(blockFrames * static_cast<std::size_t>(format.channels));
    std::vector<float*> channels;
    for (std::size_t start = 0; start < samples.size(); start += blockFrames) {
        channels.push_back(samples.data() + start);
    }
    BlockTimes times(format, clock.now());
    while (!shallStop.load(std::memory_order_relaxed)) {
        pull(channels.data(), format.blockFrames);
        times.countBlock(clock.now());
        clock.sleepUntil(times.due());
    }
}

} // namespace varno
