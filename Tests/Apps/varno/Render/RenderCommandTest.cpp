#include "Host/Instance.h"
#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <nlohmann/json.hpp>

#include <sndfile.h>

// Renders of one file, checked with other programs and with the host itself.

namespace varno::test {
namespace {

using nlohmann::json;
using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;

constexpr int kWav24 = SF_FORMAT_WAV | SF_FORMAT_PCM_24;
constexpr int kWav32 = SF_FORMAT_WAV | SF_FORMAT_PCM_32;

class RenderCommand : public ProgramTest {
protected:
    std::string render(const std::vector<std::string>& arguments) const {
        std::vector<std::string> words = {"render"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        return varnoOut(words);
    }

    // What soxi, a program of another project, reports about a file: with -s the frames, -r the rate, -c the
    // channels, -b the bits.
    std::string soxi(const std::string& flag, const std::string& name) const {
        const auto outcome = run({"soxi", flag, path(name)});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return outcome.out.substr(0, outcome.out.find('\n'));
    }

    // The samples of a file as sox reads them.
    Bytes soxSamples(const std::string& name) const {
        const auto outcome = run({"sox", path(name), "-t", "s32", "-"});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        return {outcome.out};
    }
};

TEST_F(RenderCommand, KeepsFramesRateChannelsAndBits) {
    makeMusic("mono.wav", kWav24, 1, 12'345, 44'100);
    render({"mono.wav", "mono-out.wav"});
    EXPECT_EQ(soxi("-s", "mono-out.wav"), "12345");
    EXPECT_EQ(soxi("-r", "mono-out.wav"), "44100");
    EXPECT_EQ(soxi("-c", "mono-out.wav"), "1");
    EXPECT_EQ(soxi("-b", "mono-out.wav"), "24");
    makeMusic("stereo.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 2, 777, 96'000);
    render({"stereo.flac", "stereo-out.flac"});
    EXPECT_EQ(soxi("-s", "stereo-out.flac"), "777");
    EXPECT_EQ(soxi("-r", "stereo-out.flac"), "96000");
    EXPECT_EQ(soxi("-c", "stereo-out.flac"), "2");
    EXPECT_EQ(soxi("-b", "stereo-out.flac"), "16");
    shell("flac --silent --test '" + path("stereo-out.flac") + "'");
}

TEST_F(RenderCommand, WorksAtTheEndsOfTheRateRange) {
    for (const int rate : {16'000, 384'000}) {
        const std::string name = std::to_string(rate) + ".wav";
        makeMusic(name, kWavFloat, 2, 1000, rate);
        render({name, "out-" + name});
        EXPECT_EQ(soxi("-r", "out-" + name), std::to_string(rate));
    }
}

TEST_F(RenderCommand, EqualsTheHostWithoutTheProgram) {
    makeMusic("in.wav", kWavFloat, 2, 5000);
    render({"--set", "Hot=0.6", "--set", "HSw=1", "in.wav", "out.wav"});
    const auto module = Module::open(VARNO_MODULE_BUNDLE);
    InstanceSetup setup;
    setup.maximumFrames = 100;
    Instance instance(module, setup);
    instance.setNormalized("Hot", 0.6);
    instance.setNormalized("HSw", 1.0);
    const auto input = readReals(path("in.wav")).reals;
    const auto output = readReals(path("out.wav")).reals;
    ASSERT_EQ(output.size(), input.size());
    std::vector<float> left;
    std::vector<float> right;
    for (std::size_t i = 0; i < input.size(); i += 2) {
        left.push_back(static_cast<float>(input[i]));
        right.push_back(static_cast<float>(input[i + 1]));
    }
    float* channels[] = {left.data(), right.data()};
    instance.process(channels, channels, static_cast<std::int32_t>(left.size()));
    bool differs = false;
    for (std::size_t i = 0; i < left.size(); ++i) {
        ASSERT_EQ(static_cast<float>(output[2 * i]), left[i]) << i;
        ASSERT_EQ(static_cast<float>(output[2 * i + 1]), right[i]) << i;
        differs = differs || output[2 * i] != input[2 * i];
    }
    EXPECT_TRUE(differs);
}

TEST_F(RenderCommand, RunsAndBlockSizesGiveTheSameBytes) {
    makeMusic("in.wav", kWav16, 2, 3000);
    writeFile(path("moves.csv"), "0.001,Hot,1\n0.0123,Mix,0.5\n");
    const auto bytesWith = [&](const std::string& block) {
        render({"--force", "--block", block, "--automate", "moves.csv", "in.wav", "out.wav"});
        return content("out.wav");
    };
    const Bytes expected = bytesWith("512");
    EXPECT_EQ(bytesWith("512"), expected);
    for (const std::string block : {"1", "7", "64", "127", "16384"}) {
        EXPECT_EQ(bytesWith(block), expected) << block;
    }
}

TEST_F(RenderCommand, BypassGivesBackTheVerySamples) {
    const std::pair<int, int> formats[] = {{kWav16, 16},
                                           {kWav24, 24},
                                           {kWav32, 32},
                                           {SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 24},
                                           {SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 16}};
    for (const auto& [format, bits] : formats) {
        Sound sound;
        sound.format = format;
        sound.channels = 2;
        sound.integers = testIntegers(bits, 2000);
        const bool isFlac = (format & SF_FORMAT_TYPEMASK) == SF_FORMAT_FLAC;
        const bool isAiff = (format & SF_FORMAT_TYPEMASK) == SF_FORMAT_AIFF;
        const std::string extension = isFlac ? ".flac" : isAiff ? ".aiff" : ".wav";
        writeSound(path("in" + extension), sound);
        render({"--force", "--set", "MasterBypassID=on", "in" + extension, "out" + extension});
        EXPECT_EQ(soxSamples("out" + extension), soxSamples("in" + extension)) << bits << extension;
    }
}

TEST_F(RenderCommand, TakesParameterTextsAndNumbers) {
    makeMusic("in.wav", kWav16, 2, 1000);
    render({"--set", "MasterBypassID=1", "in.wav", "number.wav"});
    render({"--set", "MasterBypassID=on", "in.wav", "text.wav"});
    render({"--set", "MasterBypassID=bypass", "in.wav", "active.wav"});
    EXPECT_EQ(content("number.wav"), content("text.wav"));
    EXPECT_NE(content("active.wav"), content("text.wav"));
}

TEST_F(RenderCommand, TailGoesOnWithSilence) {
    makeMusic("in.wav", kWavFloat, 1, 1000);
    render({"in.wav", "plain.wav"});
    render({"--tail", "0.5", "in.wav", "tail.wav"});
    const auto plain = readReals(path("plain.wav")).reals;
    const auto tail = readReals(path("tail.wav")).reals;
    ASSERT_EQ(tail.size(), 1000U + 24'000U);
    EXPECT_TRUE(std::equal(plain.begin(), plain.end(), tail.begin()));
    EXPECT_NE(tail[1000], 0.0);
    EXPECT_LT(std::abs(tail.back()), 1e-4);
}

TEST_F(RenderCommand, ExtensionAndOptionChooseTheFormat) {
    makeMusic("in.wav", kWav16, 2, 1000);
    render({"in.wav", "out.aiff"});
    EXPECT_EQ(soxi("-t", "out.aiff"), "aiff");
    EXPECT_EQ(soxi("-b", "out.aiff"), "16");
    render({"--format", "pcm24", "in.wav", "out24.wav"});
    EXPECT_EQ(soxi("-b", "out24.wav"), "24");
    render({"--format", "float", "in.wav", "float.wav"});
    EXPECT_THAT(soxi("-e", "float.wav"), HasSubstr("Floating Point"));
}

TEST_F(RenderCommand, DitherIsAddedOnlyWhereBitsAreLost) {
    makeMusic("in24.wav", kWav24, 1, 1000);
    render({"--format", "pcm16", "in24.wav", "dithered.wav"});
    render({"--format", "pcm16", "--dither", "tpdf", "in24.wav", "tpdf.wav"});
    render({"--format", "pcm16", "--dither", "none", "in24.wav", "plain.wav"});
    EXPECT_EQ(content("dithered.wav"), content("tpdf.wav"));
    EXPECT_NE(content("dithered.wav"), content("plain.wav"));
    render({"in24.wav", "same.wav"});
    render({"--dither", "none", "in24.wav", "same-none.wav"});
    EXPECT_EQ(content("same.wav"), content("same-none.wav"));
}

TEST_F(RenderCommand, CarriesTags) {
    makeMusic("in.wav", kWav16, 1, 1000);
    shell("cd '" + mFolder.path().string() + "' && sox in.wav --comment 'Title=Night Bus' in.flac");
    render({"in.flac", "out.flac"});
    EXPECT_THAT(shell("metaflac --show-tag=TITLE '" + path("out.flac") + "'"), EndsWith("=Night Bus\n"));
}

TEST_F(RenderCommand, ReplacesAnOutputWhereAsked) {
    makeMusic("in.wav", kWav16, 1, 1000);
    writeFile(path("out.wav"), "old");
    render({"--force", "in.wav", "out.wav"});
    EXPECT_EQ(soxi("-s", "out.wav"), "1000");
    EXPECT_EQ(mFolder.listing(), "in.wav out.wav");
}

TEST_F(RenderCommand, SummaryNamesEverything) {
    makeMusic("in.wav", kWav16, 2, 48'000);
    EXPECT_THAT(render({"in.wav", "out.wav"}),
                testing::MatchesRegex("out\\.wav\n"
                                      "  1\\.000 s, stereo, 48 kHz, WAV pcm16; [0-9]+ x real time\n"
                                      "  peak -[0-9]+\\.[0-9] dBFS in, -[0-9]+\\.[0-9] dBFS out; "
                                      "gain reduction [0-9]+\\.[0-9] dB at most; 0 clipped\n"));
}

TEST_F(RenderCommand, SummaryMeasuresWhatSoxMeasures) {
    makeMusic("in.wav", kWavFloat, 2, 48'000);
    const json summary = json::parse(render({"--json", "in.wav", "out.wav"}));
    const auto soxPeak = [&](const std::string& name) {
        const std::string heading = "Pk lev dB"; // sox prints its figures on standard error
        const std::string stats = run({"sox", path(name), "-n", "stats"}).err;
        return std::stod(stats.substr(stats.find(heading) + heading.size()));
    };
    EXPECT_NEAR(summary["peak_in_dbfs"].get<double>(), soxPeak("in.wav"), 0.005);
    EXPECT_NEAR(summary["peak_out_dbfs"].get<double>(), soxPeak("out.wav"), 0.005);
}

TEST_F(RenderCommand, SummaryOfSilence) {
    Sound sound;
    sound.format = kWav16;
    sound.integers.resize(4800);
    writeSound(path("in.wav"), sound);
    EXPECT_THAT(render({"in.wav", "out.wav"}), HasSubstr("  peak silent in, silent out; "));
    const json summary = json::parse(render({"--json", "in.wav", "json.wav"}));
    EXPECT_EQ(summary["peak_in_dbfs"], json());
}

TEST_F(RenderCommand, JsonSummaryHoldsEverything) {
    makeMusic("in.wav", kWav24, 1, 24'000);
    const std::string text = render({"--json", "in.wav", "out.wav"});
    EXPECT_EQ(std::ranges::count(text, '\n'), 1);
    json summary = json::parse(text);
    EXPECT_GT(summary["elapsed_s"].get<double>(), 0.0);
    EXPECT_NEAR(summary["speed_x"].get<double>() * summary["elapsed_s"].get<double>(), 0.5, 1e-9);
    EXPECT_LT(summary["peak_in_dbfs"].get<double>(), 0.0);
    EXPECT_LT(summary["peak_out_dbfs"].get<double>(), 0.0);
    EXPECT_GT(summary["gain_reduction_db"].get<double>(), 0.0);
    for (const std::string measured :
         {"elapsed_s", "speed_x", "peak_in_dbfs", "peak_out_dbfs", "gain_reduction_db"}) {
        summary.erase(measured);
    }
    EXPECT_EQ(summary,
              json::parse(R"({"input": "in.wav", "output": "out.wav", "variant": "mono", "channels": 1,
        "rate_hz": 48000, "frames": 24000, "duration_s": 0.5, "container": "WAV", "sample_format": "pcm24",
        "quality": "1x", "latency_frames": 1,
        "dry_run": false, "skipped": false, "clipped_samples": 0, "unusable_samples": 0, "warnings": []})"));
}

TEST_F(RenderCommand, JsonNamesFilesWithoutControllingTheTerminal) {
    makeMusic("in.wav", kWav16, 1, 480);
    const std::string name = "o\033[2J\xc2\x9b\x7f\n\".wav";
    const std::string line = varnoOut({"render", "--json", "in.wav", name});
    EXPECT_EQ(json::parse(line)["output"], name);
    EXPECT_EQ(line.find_first_of("\033\x9b\x7f"), std::string::npos);
    EXPECT_EQ(line.find('\n'), line.size() - 1);
}

TEST_F(RenderCommand, ClippedSamplesAreCountedAndWarnedOf) {
    makeMusic("in.wav", kWav16, 1, 4800);
    const auto outcome = varno({"render", "--set", "Volume=1", "--json", "in.wav", "out.wav"});
    EXPECT_EQ(outcome.status, 0);
    const auto clipped = json::parse(outcome.out)["clipped_samples"].get<int>();
    ASSERT_GT(clipped, 0);
    const auto samples = readIntegers(path("out.wav")).integers;
    const auto atFullScale = std::ranges::count_if(
        samples, [](std::int32_t value) { return value == INT32_MIN || value == (INT16_MAX << 16); });
    EXPECT_GE(atFullScale, clipped);
    EXPECT_EQ(outcome.err, "varno: warning: out.wav: " + std::to_string(clipped) +
                               " samples clipped; lower Volume, or use --format float\n");
    const auto unclipped =
        json::parse(render({"--set", "Volume=1", "--json", "--format", "float", "in.wav", "float.wav"}));
    EXPECT_EQ(unclipped["clipped_samples"], 0);
    EXPECT_GT(unclipped["peak_out_dbfs"].get<double>(), 0.0);
}

TEST_F(RenderCommand, QuietPrintsNothing) {
    makeMusic("in.wav", kWav16, 1, 4800);
    EXPECT_EQ(render({"--quiet", "--set", "Volume=1", "in.wav", "out.wav"}), "");
    EXPECT_EQ(render({"-q", "--json", "in.wav", "json.wav"}), "");
    EXPECT_EQ(soxi("-s", "out.wav"), "4800");
}

TEST_F(RenderCommand, DryRunWritesNothing) {
    makeMusic("in.wav", kWav16, 1, 4800);
    writeFile(path("moves.csv"), "0,Hot,1\n");
    EXPECT_EQ(render({"--dry-run", "--tail", "1", "--format", "pcm24", "--automate", "moves.csv", "--meters",
                      "m.csv", "--save-preset", "p.txt", "--save-state", "s.bin", "in.wav", "out.flac"}),
              "out.flac\n  would be written: 1.100 s, mono, 48 kHz, FLAC pcm24\n");
    EXPECT_EQ(mFolder.listing(), "in.wav moves.csv");
    const json summary = json::parse(render({"-n", "--json", "in.wav", "out.wav"}));
    EXPECT_EQ(summary["dry_run"], true);
    EXPECT_EQ(summary["frames"], 4800);
    EXPECT_FALSE(summary.contains("elapsed_s"));
    writeFile(path("out.wav"), "old");
    EXPECT_EQ(refusal(1, {"render", "-n", "in.wav", "out.wav"}),
              "out.wav: exists already; expected a new name, or --force to replace it");
    render({"-n", "--force", "in.wav", "out.wav"});
    EXPECT_EQ(content("out.wav"), Bytes{"old"});
}

// Pipes.

TEST_F(RenderCommand, ReadsAndWritesPipes) {
    makeMusic("in.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 2, 4800);
    render({"in.flac", "file.wav"});
    const auto outcome = run(
        {"bash", "-c", "set -o pipefail; flac -sdc in.flac | \"$0\" render - - | sox -V1 -t wav - piped.flac",
         VARNO_PROGRAM},
        {.folder = mFolder.path()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, ContainsRegex("^-\n  0.100 s, stereo, 48 kHz, WAV pcm24; "));
    EXPECT_EQ(soxSamples("piped.flac"), soxSamples("file.wav"));
}

TEST_F(RenderCommand, OnlySoundGoesToStandardOutput) {
    makeMusic("in.wav", kWav16, 1, 4800);
    const auto plain = varno({"render", "in.wav", "-"});
    const auto asJson = varno({"render", "--json", "in.wav", "-"});
    const auto quiet = varno({"render", "-q", "in.wav", "-"});
    EXPECT_EQ(Bytes{plain.out}, Bytes{asJson.out});
    EXPECT_EQ(Bytes{plain.out}, Bytes{quiet.out});
    EXPECT_EQ(quiet.err, "");
    EXPECT_EQ(json::parse(asJson.err)["output"], "-");
    render({"in.wav", "file.wav"});
    EXPECT_EQ(Bytes{plain.out}, content("file.wav"));
}

TEST_F(RenderCommand, MetersOnStandardOutputStandAlone) {
    makeMusic("in.wav", kWav16, 1, 1000);
    const auto outcome = varno({"render", "--meters", "-", "in.wav", "out.wav"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(std::ranges::count(outcome.out, '\n'), 3);
    EXPECT_TRUE(outcome.out.starts_with("time_s,")) << outcome.out;
    EXPECT_TRUE(outcome.err.starts_with("out.wav\n")) << outcome.err;
}

TEST_F(RenderCommand, ClosedPipeIsAnError) {
    makeMusic("in.wav", kWav16, 2, 100'000);
    const auto outcome =
        run({"bash", "-c", "\"$0\" render in.wav - | head -c 1 > /dev/null; exit ${PIPESTATUS[0]}",
             VARNO_PROGRAM},
            {.folder = mFolder.path()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "varno: standard output: cannot be written: Broken pipe\n");
}

// The demo.

TEST_F(RenderCommand, DemoIsMadeAndReplacesItself) {
    const std::string first = render({});
    EXPECT_TRUE(first.starts_with("varno-demo-dry.wav\n  the loop without the effect\n"
                                  "varno-demo.wav\n  8.000 s, stereo, 48 kHz, WAV pcm24; "))
        << first;
    EXPECT_THAT(first, HasSubstr("; 0 clipped\n"));
    EXPECT_EQ(mFolder.listing(), "varno-demo-dry.wav varno-demo.wav");
    EXPECT_EQ(soxi("-s", "varno-demo.wav"), "384000");
    const Bytes dry = content("varno-demo-dry.wav");
    const Bytes wet = content("varno-demo.wav");
    EXPECT_NE(dry, wet);
    writeFile(path("varno-demo.wav"), "old");
    render({});
    EXPECT_EQ(content("varno-demo-dry.wav"), dry);
    EXPECT_EQ(content("varno-demo.wav"), wet);
}

// A demo that fails leaves no part of itself, and nobody's files are written through links.
TEST_F(RenderCommand, DemoIsWholeOrNothing) {
    std::filesystem::create_directory(path("varno-demo.wav"));
    EXPECT_EQ(varno({"render"}).status, 1);
    EXPECT_EQ(mFolder.listing(), "varno-demo.wav");
    std::filesystem::remove(path("varno-demo.wav"));
    EXPECT_EQ(varno({"render", "--meters", "none/m.csv"}).status, 1);
    EXPECT_EQ(mFolder.listing(), "");
}

TEST_F(RenderCommand, DemoFollowsNoLink) {
    writeFile(path("mine"), "old");
    for (const std::string name : {"varno-demo-dry.wav", "varno-demo.wav"}) {
        for (const std::string target : {"mine", "missing"}) {
            std::filesystem::create_symlink(target, path(name));
            const auto outcome = varno({"render"});
            EXPECT_EQ(outcome.status, 1);
            EXPECT_EQ(outcome.err, "varno: " + name +
                                       ": is a link; expected a file to replace, or nothing of this name\n");
            EXPECT_EQ(mFolder.listing(), "mine " + name);
            EXPECT_TRUE(std::filesystem::is_symlink(path(name)));
            EXPECT_EQ(content("mine"), Bytes{"old"});
            std::filesystem::remove(path(name));
        }
    }
}

// Only the names that the user has not chosen are replaced unasked.
TEST_F(RenderCommand, DemoReplacesNoOtherFile) {
    writeFile(path("p.txt"), "old");
    const auto outcome = varno({"render", "--save-preset", "p.txt"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(content("p.txt"), Bytes{"old"});
    EXPECT_EQ(mFolder.listing(), "p.txt");
}

TEST_F(RenderCommand, DemoTakesSettings) {
    render({"--set", "MasterBypassID=on"});
    EXPECT_EQ(soxSamples("varno-demo.wav"), soxSamples("varno-demo-dry.wav"));
}

} // namespace
} // namespace varno::test
