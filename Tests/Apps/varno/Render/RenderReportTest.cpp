#include "Render/RenderReport.h"
#include "CommandLine/TextLayout.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <limits>
#include <sstream>

namespace varno::test {
namespace {

using nlohmann::json;

RenderReport report() {
    RenderReport result;
    result.task = {"in.wav", "out.wav"};
    result.format.container = Container::kFlac;
    result.format.sample = SampleFormat::kPcm24;
    result.format.rateHz = 44'100;
    result.format.channels = 1;
    result.format.frames = 441'000;
    result.elapsedS = 0.5;
    result.groups = {
        {.channels = {0}, .peakIn = 0.5, .peakOut = 2.0, .gainReductionDB = 12.25, .unusableSamples = 0}};
    result.clippedSamples = 7;
    return result;
}

TEST(RenderReport, Text) {
    EXPECT_EQ(reportText(report()),
              "out.wav\n"
              "  10.000 s, mono, 44.1 kHz, FLAC pcm24; 20 x real time\n"
              "  peak -6.0 dBFS in, 6.0 dBFS out; gain reduction 12.2 dB at most; 7 clipped\n");
}

TEST(RenderReport, TextWithoutGainReductionMeters) {
    auto some = report();
    some.groups[0].gainReductionDB.reset();
    EXPECT_THAT(reportText(some), testing::HasSubstr("6.0 dBFS out; 7 clipped\n"));
}

TEST(RenderReport, LongTextFitsATerminal) {
    auto some = report();
    some.format.rateHz = 176'400;
    some.format.channels = 2;
    some.groups[0].channels = {0, 1};
    some.format.frames = 36'000LL * some.format.rateHz;
    some.groups[0].peakIn = 1e-5;
    some.groups[0].peakOut = 1e-5;
    some.clippedSamples = 1'234'567;
    std::istringstream lines(reportText(some));
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), static_cast<std::size_t>(kTextColumns)) << line;
    }
}

RenderReport reportOfGroups() {
    auto some = report();
    some.format.channels = 6;
    some.hasChosenGroups = true;
    some.groups = {
        {.channels = {0, 1}, .peakIn = 0.25, .peakOut = 0.5, .gainReductionDB = 3.0, .unusableSamples = 2},
        {.channels = {2}, .peakIn = 0.5, .peakOut = 0.25, .gainReductionDB = {}, .unusableSamples = 5}};
    return some;
}

TEST(RenderReport, TextOfGroups) {
    auto some = reportOfGroups();
    EXPECT_EQ(reportText(some),
              "out.wav\n"
              "  10.000 s, 6 channels, 44.1 kHz, FLAC pcm24; 20 x real time\n"
              "  1-2 stereo: peak -12.0 dBFS in, -6.0 dBFS out; gain reduction 3.0 dB at most\n"
              "  3 mono: peak -6.0 dBFS in, -12.0 dBFS out\n"
              "  1-2 stereo, 3 mono; the others copied; 7 clipped\n");
    some.format.channels = 3;
    some.isDryRun = true;
    EXPECT_EQ(reportText(some), "out.wav\n"
                                "  would be written: 10.000 s, 3 channels, 44.1 kHz, FLAC pcm24\n"
                                "  1-2 stereo, 3 mono\n");
}

TEST(RenderReport, JsonOfGroups) {
    auto some = reportOfGroups();
    const json parsed = json::parse(reportJson(some));
    EXPECT_EQ(parsed["variant"], json());
    EXPECT_EQ(parsed["channels"], 6);
    EXPECT_NEAR(parsed["peak_in_dbfs"].get<double>(), -6.02, 0.01);
    EXPECT_NEAR(parsed["peak_out_dbfs"].get<double>(), -6.02, 0.01);
    EXPECT_EQ(parsed["gain_reduction_db"], 3.0);
    EXPECT_EQ(parsed["unusable_samples"], 7);
    ASSERT_EQ(parsed["groups"].size(), 2U);
    EXPECT_EQ(parsed["groups"][0]["channels"], json::parse("[1, 2]"));
    EXPECT_EQ(parsed["groups"][0]["variant"], "stereo");
    EXPECT_NEAR(parsed["groups"][0]["peak_in_dbfs"].get<double>(), -12.04, 0.01);
    EXPECT_EQ(parsed["groups"][1]["channels"], json::parse("[3]"));
    EXPECT_EQ(parsed["groups"][1]["variant"], "mono");
    EXPECT_EQ(parsed["groups"][1]["gain_reduction_db"], json());
    EXPECT_EQ(parsed["groups"][1]["unusable_samples"], 5);
    some.isDryRun = true;
    EXPECT_EQ(json::parse(reportJson(some))["groups"][0],
              json::parse(R"({"channels": [1, 2], "variant": "stereo"})"));
}

TEST(RenderReport, JsonHasNoNumbersThatAreNone) {
    auto some = report();
    some.groups[0].peakIn = 0.0;
    some.groups[0].peakOut = std::numeric_limits<double>::infinity();
    some.groups[0].gainReductionDB.reset();
    some.elapsedS = 0.0;
    const json parsed = json::parse(reportJson(some));
    EXPECT_EQ(parsed["peak_in_dbfs"], json());
    EXPECT_EQ(parsed["peak_out_dbfs"], json());
    EXPECT_EQ(parsed["gain_reduction_db"], json());
    EXPECT_EQ(parsed["speed_x"], 0.0);
}

TEST(RenderReport, JsonIsOneLineWhateverTheNames) {
    auto some = report();
    some.task = {"a\nb\"\\.wav", "\xFF.wav"};
    const std::string text = reportJson(some);
    EXPECT_EQ(text.find('\n'), text.size() - 1);
    EXPECT_EQ(json::parse(text)["input"], "a\nb\"\\.wav");
    EXPECT_EQ(json::parse(text)["output"], "\xEF\xBF\xBD.wav"); // the replacement character
    const std::string failure = failureJson(some.task, "x: is empty");
    EXPECT_EQ(json::parse(failure)["error"], "x: is empty");
}

TEST(RenderReport, Decibels) {
    EXPECT_EQ(decibels(1.0), 0.0);
    EXPECT_NEAR(decibels(0.5), -6.0206, 1e-4);
    EXPECT_EQ(decibels(0.0), -std::numeric_limits<double>::infinity());
}

} // namespace
} // namespace varno::test
