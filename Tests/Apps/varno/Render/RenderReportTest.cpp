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
    result.peakIn = 0.5;
    result.peakOut = 2.0;
    result.gainReductionDB = 12.25;
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
    some.gainReductionDB.reset();
    EXPECT_THAT(reportText(some), testing::HasSubstr("6.0 dBFS out; 7 clipped\n"));
}

TEST(RenderReport, LongTextFitsATerminal) {
    auto some = report();
    some.format.rateHz = 176'400;
    some.format.channels = 2;
    some.format.frames = 36'000LL * some.format.rateHz;
    some.peakIn = 1e-5;
    some.peakOut = 1e-5;
    some.clippedSamples = 1'234'567;
    std::istringstream lines(reportText(some));
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), static_cast<std::size_t>(kTextColumns)) << line;
    }
}

TEST(RenderReport, JsonHasNoNumbersThatAreNone) {
    auto some = report();
    some.peakIn = 0.0;
    some.peakOut = std::numeric_limits<double>::infinity();
    some.gainReductionDB.reset();
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
