#include "PacedBlocks.h"

#include <gtest/gtest.h>

#include <vector>

namespace varno {
namespace {

using namespace std::chrono_literals;
using TimePoint = PlayerClock::TimePoint;

// Time passes only where someone sleeps, and where a test lets it.
class FakeClock : public PlayerClock {
public:
    FakeClock(int sleeps, std::atomic<bool>& shallStop)
        : mSleepsLeft(sleeps),
          mShallStop(shallStop) {}

    TimePoint now() override { return mNow; }
    void sleepUntil(TimePoint time) override {
        mNow = std::max(mNow, time);
        mSleeps.push_back(mNow);
        if (--mSleepsLeft == 0) {
            mShallStop = true;
        }
    }

    void pass(std::chrono::nanoseconds time) { mNow += time; }
    const std::vector<TimePoint>& sleeps() const { return mSleeps; }

private:
    TimePoint mNow{1h};
    int mSleepsLeft;
    std::atomic<bool>& mShallStop;
    std::vector<TimePoint> mSleeps;
};

class PacedBlocksTest : public testing::Test {
protected:
    // Plays that many blocks. @param duringBlock what happens while block i is played
    std::vector<TimePoint> play(const PlayerFormat& format, int blocks,
                                const std::function<void(FakeClock&, int)>& duringBlock) {
        FakeClock clock(blocks, mShallStop);
        int block = 0;
        playPaced(
            format,
            [&](float* const* channels, int frames) {
                EXPECT_EQ(frames, format.blockFrames);
                for (int channel = 0; channel < format.channels; ++channel) {
                    std::fill_n(channels[channel], frames, 1.0F); // memory of its own
                }
                duringBlock(clock, block++);
            },
            clock, mShallStop);
        EXPECT_EQ(block, blocks);
        return clock.sleeps();
    }

    std::atomic<bool> mShallStop{false};
};

TEST_F(PacedBlocksTest, KeepTimeWithoutDrift) {
    const PlayerFormat format{44'100.0, 2, 512};
    constexpr int kBlocks = 400'000; // more than an hour
    // Each block takes another while to process, always less than it lasts.
    const auto ends =
        play(format, kBlocks, [](FakeClock& clock, int block) { clock.pass(block % 11 * 1ms); });
    for (int block = 0; block < kBlocks; ++block) {
        const double expectedS = (block + 1) * 512.0 / 44'100.0;
        const std::chrono::duration<double> since = ends[static_cast<std::size_t>(block)] - TimePoint(1h);
        ASSERT_NEAR(since.count(), expectedS, 1e-9) << block;
    }
}

TEST_F(PacedBlocksTest, CatchUpAfterAShortDelay) {
    const PlayerFormat format{1000.0, 1, 10}; // blocks of 10 ms
    const auto ends = play(format, 30, [](FakeClock& clock, int block) {
        if (block == 3) {
            clock.pass(100ms);
        }
    });
    EXPECT_EQ(ends[3], TimePoint(1h + 130ms));
    EXPECT_EQ(ends[12], TimePoint(1h + 130ms)); // without a pause
    EXPECT_EQ(ends[13], TimePoint(1h + 140ms));
    EXPECT_EQ(ends[29], TimePoint(1h + 300ms));
}

TEST_F(PacedBlocksTest, DoNotCatchUpAfterALongOne) {
    const PlayerFormat format{1000.0, 1, 10};
    const auto ends = play(format, 6, [](FakeClock& clock, int block) {
        if (block == 3) {
            clock.pass(1h);
        }
    });
    EXPECT_EQ(ends[2], TimePoint(1h + 30ms));
    EXPECT_EQ(ends[3], TimePoint(2h + 40ms));
    EXPECT_EQ(ends[5], TimePoint(2h + 60ms));
}

} // namespace
} // namespace varno
