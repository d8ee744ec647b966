#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <nlohmann/json.hpp>

#include <algorithm>

// Renders at a multiple of the sample rate.

namespace varno::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

constexpr int kFrames = 9600;

class RenderQuality : public ProgramTest {
protected:
    RenderQuality() { makeMusic("in.wav", kWavFloat, 2, kFrames); }

    std::vector<std::string> words(const std::vector<std::string>& options) const {
        std::vector<std::string> all = {"render", "--force", "--set", "Hot=0.5", "--format", "float"};
        all.insert(all.end(), options.begin(), options.end());
        all.insert(all.end(), {"in.wav", "out.wav"});
        return all;
    }
    Bytes bytesWith(const std::vector<std::string>& options) const {
        varnoOut(words(options));
        return content("out.wav");
    }
    std::vector<double> samplesWith(const std::vector<std::string>& options) const {
        varnoOut(words(options));
        return readReals(path("out.wav")).reals;
    }
};

TEST_F(RenderQuality, OneIsTheUsual) {
    const Bytes usual = bytesWith({});
    EXPECT_EQ(bytesWith({"--quality", "1x"}), usual);
    EXPECT_NE(bytesWith({"--quality", "2x"}), usual);
}

TEST_F(RenderQuality, AllBlocksAndInstructionSetsGiveTheSameBytes) {
    for (const std::string quality : {"2x", "4x", "8x"}) {
        const Bytes expected = bytesWith({"--quality", quality});
        for (const std::string block : {"1", "100", "16384"}) {
            EXPECT_EQ(bytesWith({"--quality", quality, "--block", block}), expected)
                << quality << ' ' << block;
        }
        for (const std::string simd : {"baseline", "emulated", "avx2"}) {
            const Outcome outcome = runVarno(words({"--quality", quality}),
                                             {.folder = path(""), .environment = {"VARNO_SIMD=" + simd}});
            EXPECT_EQ(outcome.status, 0) << outcome.err;
            EXPECT_EQ(content("out.wav"), expected) << quality << ' ' << simd;
        }
    }
}

TEST_F(RenderQuality, TheLatencyIsReportedAndRemovedOnRequest) {
    const std::pair<std::string, std::size_t> latencies[] = {{"1x", 1}, {"2x", 41}, {"4x", 46}, {"8x", 48}};
    for (const auto& [quality, frames] : latencies) {
        const auto late = samplesWith({"--quality", quality});
        const json report = json::parse(varnoOut(words({"--quality", quality, "--json"})));
        EXPECT_EQ(report["quality"], quality);
        EXPECT_EQ(report["latency_frames"], frames);
        const auto inTime = samplesWith({"--quality", quality, "--compensate"});
        ASSERT_EQ(inTime.size(), late.size());
        EXPECT_TRUE(
            std::equal(late.begin() + static_cast<std::ptrdiff_t>(2 * frames), late.end(), inTime.begin()))
            << quality;
        const json inTimeReport =
            json::parse(varnoOut(words({"--quality", quality, "--compensate", "--json", "--block", "7"})));
        EXPECT_EQ(inTimeReport["latency_frames"], 0);
        EXPECT_EQ(inTimeReport["frames"], kFrames);
        EXPECT_EQ(readReals(path("out.wav")).reals, inTime);
    }
}

// Nothing but the dry sound, whose volume falls at half of it.
TEST_F(RenderQuality, AutomationActsOnTheSoundOfItsTime) {
    writeFile(path("a.csv"), "0.1,Volume,0\n");
    const std::vector<std::string> dry = {"--set", "Mix=1", "--compensate", "--quality", "4x"};
    auto automated = dry;
    automated.insert(automated.end(), {"--automate", "a.csv"});
    const auto loud = samplesWith(dry);
    const auto soft = samplesWith(automated);
    constexpr std::size_t kStep = 2 * 4800;
    // The filter behind the effect rings on both sides of the step.
    constexpr std::size_t kRing = 2 * 24;
    EXPECT_TRUE(std::equal(loud.begin(), loud.begin() + kStep - kRing, soft.begin()));
    for (std::size_t i = kStep + kRing; i < loud.size(); ++i) {
        ASSERT_NEAR(soft[i], 0.1 * loud[i], 1e-5);
    }
    EXPECT_GT(std::abs(loud[kStep - 4] - soft[kStep - 4]) + std::abs(loud[kStep - 6] - soft[kStep - 6]), 0.0);
}

TEST_F(RenderQuality, FilesSideBySideHaveTheBytesOfEachAlone) {
    makeMusic("a.wav", kWavFloat, 2, 5000);
    makeMusic("b.wav", kWavFloat, 2, 7000);
    const auto rendered = [&](const std::vector<std::string>& jobs) {
        std::vector<std::string> all = {"render", "--force", "--quality", "4x", "--out-dir", "."};
        all.insert(all.end(), {"--container", "aiff", "--format", "pcm24"});
        all.insert(all.end(), jobs.begin(), jobs.end());
        all.insert(all.end(), {"in.wav", "a.wav", "b.wav"});
        varnoOut(all);
        return std::vector{content("in.aiff"), content("a.aiff"), content("b.aiff")};
    };
    const std::vector<Bytes> together = rendered({"--jobs", "1"});
    EXPECT_EQ(rendered({"--jobs", "3"}), together);
    varnoOut({"render", "--quality", "4x", "--format", "pcm24", "a.wav", "alone.aiff"});
    EXPECT_EQ(content("alone.aiff"), together[1]);
}

TEST_F(RenderQuality, TheSummaryNamesIt) {
    EXPECT_THAT(varnoOut(words({"--quality", "4x"})), HasSubstr("quality 4x"));
}

TEST_F(RenderQuality, ARateThatWouldBeTooHighIsRefused) {
    makeMusic("in.wav", kWavFloat, 1, kFrames, 96'000);
    EXPECT_EQ(
        refusal(1, words({"--quality", "8x"})),
        "in.wav: quality 8x needs 768000 Hz; expected at most 384000 Hz: 4x at the sample rate 96000 Hz");
    varnoOut(words({"--quality", "4x"}));
    EXPECT_EQ(refusal(2, words({"--quality", "3x"})),
              "option --quality: expected 1x, 2x, 4x or 8x, found \"3x\"; did you mean \"1x\"?");
}

} // namespace
} // namespace varno::test
