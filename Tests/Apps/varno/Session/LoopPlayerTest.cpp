#include "Session/LoopPlayer.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Apps/varno/Support/SoundFiles.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <sndfile.h>
#include <vector>

namespace varno::test {
namespace {

using testing::Each;
using testing::ElementsAre;

using Rows = std::vector<std::vector<float>>;

// The next frames of every channel.
Rows read(AudioLoop& loop, int frames) {
    Rows samples(static_cast<std::size_t>(loop.channels()),
                 std::vector<float>(static_cast<std::size_t>(frames)));
    std::vector<float*> channels;
    for (auto& channel : samples) {
        channels.push_back(channel.data());
    }
    loop.read(channels.data(), frames);
    return samples;
}

TEST(AudioLoop, StartsAgainAtItsEnd) {
    AudioLoop loop({{1, 2, 3}, {-1, -2, -3}});
    EXPECT_EQ(loop.channels(), 2);
    EXPECT_THAT(read(loop, 2), ElementsAre(ElementsAre(1, 2), ElementsAre(-1, -2)));
    EXPECT_THAT(read(loop, 0), Each(ElementsAre()));
    EXPECT_THAT(read(loop, 8), ElementsAre(ElementsAre(3, 1, 2, 3, 1, 2, 3, 1),
                                           ElementsAre(-3, -1, -2, -3, -1, -2, -3, -1)));
    EXPECT_THAT(read(loop, 2), ElementsAre(ElementsAre(2, 3), ElementsAre(-2, -3)));
    EXPECT_THAT(read(loop, 1), ElementsAre(ElementsAre(1), ElementsAre(-1)));
}

TEST(AudioLoop, OneFrameIsALoopToo) {
    AudioLoop loop(Rows{{0.5F}});
    EXPECT_THAT(read(loop, 1000).front(), Each(0.5F));
}

TEST(AudioLoop, EveryBlockLengthGivesTheSame) {
    std::vector<float> samples;
    for (int i = 0; i < 1000; ++i) {
        samples.push_back(static_cast<float>(i));
    }
    AudioLoop whole(Rows{samples});
    const auto expected = read(whole, 7001).front();
    for (const int block : {1, 7, 512, 999, 1000, 1001, 7001}) {
        AudioLoop loop(Rows{samples});
        std::vector<float> heard;
        while (heard.size() < expected.size()) {
            const int left = static_cast<int>(expected.size() - heard.size());
            const auto next = read(loop, std::min(block, left)).front();
            heard.insert(heard.end(), next.begin(), next.end());
        }
        EXPECT_EQ(heard, expected) << block;
    }
}

TEST(AudioLoop, SilenceIsSilent) {
    AudioLoop loop = AudioLoop::silence(2);
    EXPECT_EQ(loop.channels(), 2);
    EXPECT_THAT(read(loop, 10'000), Each(Each(0.0F)));
}

TEST(AudioLoop, GoesToAnotherSampleRate) {
    constexpr int kFrames = 4800;
    constexpr double kPeriodFrames = 100.0;
    const auto sine = [](int frames, double periodFrames) {
        std::vector<float> samples;
        for (int i = 0; i < frames; ++i) {
            samples.push_back(static_cast<float>(std::sin(2.0 * std::numbers::pi * i / periodFrames)));
        }
        return samples;
    };
    const AudioLoop loop(Rows{sine(kFrames, kPeriodFrames), std::vector<float>(kFrames, 0.0F)});
    AudioLoop other = loop.resampled(48'000.0, 96'000.0);
    ASSERT_EQ(other.channels(), 2);
    auto heard = read(other, 4 * kFrames); // two rounds
    const auto expected = sine(2 * kFrames, 2.0 * kPeriodFrames);
    for (int i = 200; i < 2 * kFrames - 200; ++i) { // the converter rounds off the ends
        const auto at = static_cast<std::size_t>(i);
        ASSERT_NEAR(heard[0][at], expected[at], 1e-3) << i;
        ASSERT_EQ(heard[0][at], heard[0][at + 2 * kFrames]) << i;
    }
    EXPECT_THAT(heard[1], Each(0.0F));
}

TEST(AudioLoop, ASingleFrameStaysOne) {
    AudioLoop loop = AudioLoop(Rows{{0.5F}}).resampled(96'000.0, 16'000.0);
    EXPECT_EQ(read(loop, 3).front().size(), 3U);
}

class AudioLoopFile : public testing::Test {
protected:
    TemporaryFolder mFolder;
};

TEST_F(AudioLoopFile, HoldsTheFileToTheLastFrame) {
    constexpr int kFrames = 40'001;
    Sound sound;
    sound.format = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
    sound.channels = 2;
    std::vector<float> left;
    std::vector<float> right;
    for (const double value : testReals(kFrames)) {
        sound.reals.insert(sound.reals.end(), {value, -value});
        left.push_back(static_cast<float>(value));
        right.push_back(static_cast<float>(-value));
    }
    writeSound(mFolder / "sound.wav", sound);

    AudioReader reader(mFolder / "sound.wav");
    AudioLoop loop = AudioLoop::of(reader);
    for (int round = 0; round < 3; ++round) {
        const auto heard = read(loop, kFrames);
        EXPECT_EQ(heard[0], left);
        EXPECT_EQ(heard[1], right);
    }
}

// The file system holds the header and the last frame alone.
TEST_F(AudioLoopFile, RefusesWhatDoesNotFitTheMemory) {
    constexpr sf_count_t kFrames = sf_count_t{AudioLoop::kMostSamples} / 2 + 1;
    SF_INFO info{};
    info.samplerate = 48'000;
    info.channels = 2;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_U8;
    SNDFILE* file = sf_open((mFolder / "long.wav").c_str(), SFM_WRITE, &info);
    ASSERT_NE(file, nullptr);
    const short last[] = {0, 0};
    ASSERT_GE(sf_seek(file, kFrames - 1, SEEK_SET), 0) << sf_strerror(file);
    ASSERT_EQ(sf_writef_short(file, last, 1), 1);
    sf_close(file);
    AudioReader reader(mFolder / "long.wav");
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { AudioLoop::of(reader); }),
              mFolder / "long.wav" +
                  ": is too long to be played in a loop; expected at most 134217728 frames, "
                  "found 134217729");
}

using namespace std::chrono_literals;
using TimePoint = PlayerClock::TimePoint;

// Time passes only during a sleep and where a test advances it.
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
    // Each block takes a different time to process, always less than its duration.
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
} // namespace varno::test
