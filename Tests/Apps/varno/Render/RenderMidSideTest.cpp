#include "Render/MidSide.h"
#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <filesystem>
#include <limits>

// Renders of mid and side in the place of left and right, against files of mid and side that are rendered
// alone.

namespace varno::test {
namespace {

constexpr int kMusicFrames = 9600;

class RenderMidSide : public ProgramTest {
protected:
    RenderMidSide() { makeMusic("in.wav", kWavFloat, 2, kMusicFrames); }

    // The channels of a stereo file in single precision.
    std::vector<std::vector<float>> channels(const std::string& name) const {
        const auto reals = readReals(path(name)).reals;
        std::vector<std::vector<float>> channels(2);
        for (std::size_t i = 0; i < reals.size(); ++i) {
            channels[i % 2].push_back(static_cast<float>(reals[i]));
        }
        return channels;
    }

    void write(const std::string& name, const std::vector<std::vector<float>>& channels) const {
        Sound sound;
        sound.format = kWavFloat;
        sound.channels = static_cast<int>(channels.size());
        sound.rateHz = 48'000;
        for (std::size_t frame = 0; frame < channels[0].size(); ++frame) {
            for (const auto& channel : channels) {
                sound.reals.push_back(static_cast<double>(channel[frame]));
            }
        }
        writeSound(path(name), sound);
    }

    void render(std::vector<std::string> options, const std::string& in, const std::string& out) const {
        options.insert(options.begin(), {"render", "--quiet", "--force", "--set", "Hot=0.5"});
        options.insert(options.end(), {in, out});
        varnoOut(options);
    }

    // What becomes of the file where mid and side are channels of a file of their own.
    std::vector<std::vector<float>> byHand(const std::vector<std::string>& options) const {
        auto both = channels("in.wav");
        for (std::size_t i = 0; i < both[0].size(); ++i) {
            const float left = both[0][i];
            const float right = both[1][i];
            both[0][i] = (left + right) * 0.5F;
            both[1][i] = (left - right) * 0.5F;
        }
        write("ms.wav", both);
        render(options, "ms.wav", "ms-out.wav");
        both = channels("ms-out.wav");
        for (std::size_t i = 0; i < both[0].size(); ++i) {
            const float mid = both[0][i];
            const float side = both[1][i];
            both[0][i] = mid + side;
            both[1][i] = mid - side;
        }
        return both;
    }
};

TEST_F(RenderMidSide, EqualsTheRenderOfAFileOfMidAndSide) {
    for (const std::vector<std::string>& options : {std::vector<std::string>{},
                                                    {"--set", "LinkSw=1"},
                                                    {"--quality", "2x", "--compensate"},
                                                    {"--tail", "0.1"}}) {
        const auto expected = byHand(options);
        auto all = options;
        all.emplace_back("--mid-side");
        render(all, "in.wav", "out.wav");
        EXPECT_EQ(channels("out.wav"), expected);
        render(options, "in.wav", "plain.wav");
        EXPECT_NE(channels("plain.wav"), expected);
    }
}

TEST_F(RenderMidSide, EqualsMidAndSideRenderedAsMonoFiles) {
    const auto both = channels("in.wav");
    std::vector<float> mid;
    std::vector<float> side;
    for (std::size_t i = 0; i < both[0].size(); ++i) {
        mid.push_back((both[0][i] + both[1][i]) * 0.5F);
        side.push_back((both[0][i] - both[1][i]) * 0.5F);
    }
    write("mid.wav", {mid});
    write("side.wav", {side});
    render({}, "mid.wav", "mid-out.wav");
    render({}, "side.wav", "side-out.wav");
    render({"--mid-side"}, "in.wav", "out.wav");
    const auto midOut = readReals(path("mid-out.wav")).reals;
    const auto sideOut = readReals(path("side-out.wav")).reals;
    const auto out = channels("out.wav");
    for (std::size_t i = 0; i < midOut.size(); ++i) {
        ASSERT_EQ(out[0][i], static_cast<float>(midOut[i]) + static_cast<float>(sideOut[i])) << i;
        ASSERT_EQ(out[1][i], static_cast<float>(midOut[i]) - static_cast<float>(sideOut[i])) << i;
    }
}

TEST_F(RenderMidSide, AllBlocksAndSeveralFilesAtATimeGiveTheSameBytes) {
    render({"--mid-side"}, "in.wav", "out.wav");
    const auto expected = content("out.wav");
    for (const std::string block : {"1", "100", "16384"}) {
        render({"--mid-side", "--block", block}, "in.wav", "out.wav");
        EXPECT_EQ(content("out.wav"), expected) << block;
    }
    makeMusic("other.wav", kWavFloat, 2, kMusicFrames);
    makeMusic("third.wav", kWavFloat, 2, kMusicFrames / 2);
    std::filesystem::create_directory(path("wet"));
    varnoOut({"render", "--quiet", "--set", "Hot=0.5", "--mid-side", "--jobs", "2", "--out-dir", "wet",
              "in.wav", "other.wav", "third.wav"});
    EXPECT_EQ(content("wet/in.wav"), expected);
}

TEST_F(RenderMidSide, NeedsStereo) {
    makeMusic("mono.wav", kWavFloat, 1, 480);
    EXPECT_EQ(refusal(1, {"render", "--mid-side", "mono.wav", "out.wav"}),
              "mono.wav: has 1 channel; option --mid-side needs 2 (stereo)");
}

TEST(MidSide, ComesBack) {
    float left[] = {0.5F, -0.25F, 1.0F, 0.0F};
    float right[] = {0.5F, 0.75F, -1.0F, 0.125F};
    toMidSide(left, right, 4);
    EXPECT_EQ(left[0], 0.5F);
    EXPECT_EQ(right[0], 0.0F);
    EXPECT_EQ(left[1], 0.25F);
    EXPECT_EQ(right[1], -0.5F);
    toLeftRight(left, right, 4);
    EXPECT_EQ(std::vector<float>(left, left + 4), (std::vector<float>{0.5F, -0.25F, 1.0F, 0.0F}));
    EXPECT_EQ(std::vector<float>(right, right + 4), (std::vector<float>{0.5F, 0.75F, -1.0F, 0.125F}));
}

TEST(MidSide, WhatIsNoSampleLeavesTheOtherChannelAlone) {
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), -1e31F}) {
        float left[] = {bad};
        float right[] = {0.5F};
        toMidSide(left, right, 1);
        toLeftRight(left, right, 1);
        EXPECT_EQ(left[0], 0.0F);
        EXPECT_EQ(right[0], 0.5F);
    }
}

} // namespace
} // namespace varno::test
