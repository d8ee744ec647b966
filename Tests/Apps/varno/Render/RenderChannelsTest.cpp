#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <filesystem>
#include <limits>

// Renders of groups of channels, against files of these channels that are rendered alone.

namespace varno::test {
namespace {

using nlohmann::json;

constexpr int kGroupedFrames = 40'000; // more than are read at a time
constexpr int kShortFrames = 480;
constexpr int kFilm = 6; // channels
constexpr std::size_t kLatency = 1;

using Channels = std::vector<std::vector<double>>;

class RenderChannels : public ProgramTest {
protected:
    RenderChannels() { makeMusic("film.wav", kWavFloat, kFilm, kGroupedFrames); }

    Channels channelsOf(const std::string& name) const {
        const Sound sound = readReals(path(name));
        Channels channels(static_cast<std::size_t>(sound.channels));
        for (std::size_t i = 0; i < sound.reals.size(); ++i) {
            channels[i % channels.size()].push_back(sound.reals[i]);
        }
        return channels;
    }

    void write(const std::string& name, int format, const Channels& channels) const {
        Sound sound;
        sound.format = format;
        sound.channels = static_cast<int>(channels.size());
        for (std::size_t frame = 0; frame < channels[0].size(); ++frame) {
            for (const auto& channel : channels) {
                sound.reals.push_back(channel[frame]);
            }
        }
        writeSound(path(name), sound);
    }

    void render(std::vector<std::string> options, const std::string& in, const std::string& out) const {
        options.insert(options.begin(), {"render", "--quiet", "--force", "--set", "Hot=0.5"});
        options.insert(options.end(), {in, out});
        varnoOut(options);
    }

    // What becomes of some channels of film.wav as a file of their own.
    Channels alone(const std::vector<std::size_t>& which, const std::vector<std::string>& options) const {
        const Channels all = channelsOf("film.wav");
        Channels some;
        for (const std::size_t channel : which) {
            some.push_back(all[channel]);
        }
        write("some.wav", kWavFloat, some);
        render(options, "some.wav", "some-out.wav");
        return channelsOf("some-out.wav");
    }
};

std::vector<double> delayed(std::vector<double> samples, std::size_t frames, std::size_t length) {
    samples.insert(samples.begin(), frames, 0.0);
    samples.resize(length);
    return samples;
}

TEST_F(RenderChannels, EqualTheGroupsAsFilesOfTheirOwn) {
    writeFile(path("moves.csv"), "0.1,Gain,0.9\n0.25,Hot,0.1\n");
    struct Case {
        std::vector<std::string> options;
        std::size_t latency;
    };
    for (const Case& each :
         {Case{{}, kLatency}, Case{{"--set", "LinkSw=1"}, kLatency}, Case{{"--quality", "2x"}, 41},
          Case{{"--quality", "2x", "--compensate"}, 0}, Case{{"--tail", "0.1"}, kLatency},
          Case{{"--automate", "moves.csv"}, kLatency}, Case{{"--block", "100"}, kLatency}}) {
        auto options = each.options;
        options.insert(options.end(), {"--channels", "1-2,5,6-3"});
        render(options, "film.wav", "out.wav");
        const Channels out = channelsOf("out.wav");
        ASSERT_EQ(out.size(), std::size_t{kFilm});
        const Channels front = alone({0, 1}, each.options);
        EXPECT_EQ(out[0], front[0]);
        EXPECT_EQ(out[1], front[1]);
        EXPECT_EQ(out[4], alone({4}, each.options)[0]);
        const Channels crossed = alone({5, 2}, each.options);
        EXPECT_EQ(out[5], crossed[0]);
        EXPECT_EQ(out[2], crossed[1]);
        EXPECT_EQ(out[3], delayed(channelsOf("film.wav")[3], each.latency, out[3].size()));
        EXPECT_NE(out[4], delayed(channelsOf("film.wav")[4], each.latency, out[4].size()));
    }
}

TEST_F(RenderChannels, MidAndSideAreThoseOfPairs) {
    render({"--mid-side", "--channels", "1-2,3"}, "film.wav", "out.wav");
    const Channels out = channelsOf("out.wav");
    const Channels pair = alone({0, 1}, {"--mid-side"});
    EXPECT_EQ(out[0], pair[0]);
    EXPECT_EQ(out[1], pair[1]);
    EXPECT_EQ(out[2], alone({2}, {})[0]);
    EXPECT_EQ(refusal(2, {"render", "--mid-side", "--channels", "1,2", "film.wav", "x.wav"}),
              "option --mid-side needs a pair such as 1-2 in --channels, found \"1,2\"");
}

TEST_F(RenderChannels, OfStereoFilesAreTwoMonoEffectsOrOne) {
    makeMusic("stereo.wav", kWavFloat, 2, kShortFrames);
    render({"--channels", "1,2"}, "stereo.wav", "out.wav");
    const Channels in = channelsOf("stereo.wav");
    for (std::size_t channel = 0; channel < 2; ++channel) {
        write("mono.wav", kWavFloat, {in[channel]});
        render({}, "mono.wav", "mono-out.wav");
        EXPECT_EQ(channelsOf("out.wav")[channel], channelsOf("mono-out.wav")[0]);
    }
    render({"--channels", "1-2"}, "stereo.wav", "out.wav");
    render({}, "stereo.wav", "plain.wav");
    EXPECT_EQ(content("out.wav"), content("plain.wav"));
}

// Single precision does not hold them.
TEST_F(RenderChannels, CopiesAreExact) {
    Sound fine;
    fine.channels = 3;
    fine.format = SF_FORMAT_WAV | SF_FORMAT_PCM_32;
    fine.integers = testIntegers(32, 3 * std::size_t{kGroupedFrames});
    writeSound(path("fine.wav"), fine);
    Sound real;
    real.channels = 3;
    real.format = SF_FORMAT_WAV | SF_FORMAT_DOUBLE;
    real.reals = testReals(3 * std::size_t{kGroupedFrames});
    writeSound(path("real.wav"), real);
    for (const std::string late : {"", "--compensate"}) {
        std::vector<std::string> options{"--channels", "2", "--quality", "2x", "--tail", "0.01"};
        if (!late.empty()) {
            options.push_back(late);
        }
        const std::size_t shift = late.empty() ? 41 : 0;
        render(options, "fine.wav", "fine-out.wav");
        render(options, "real.wav", "real-out.wav");
        const auto integers = readIntegers(path("fine-out.wav")).integers;
        const auto reals = readReals(path("real-out.wav")).reals;
        for (const std::size_t channel : {0U, 2U}) {
            for (std::size_t frame = 0; frame < kGroupedFrames; ++frame) {
                const std::size_t from = 3 * frame + channel;
                ASSERT_EQ(integers.at(from + 3 * shift), fine.integers[from]) << late << frame;
                ASSERT_EQ(reals.at(from + 3 * shift), real.reals[from]) << late << frame;
            }
        }
    }
}

TEST_F(RenderChannels, WhatIsNoSampleIsCopiedAndNotCounted) {
    const double bad = std::numeric_limits<double>::infinity();
    write("bad.wav", kWavFloat, {{0.5, bad, 0.5}, {0.25, bad, bad}});
    const Outcome outcome =
        varno({"render", "--json", "--channels", "1", "--compensate", "bad.wav", "out.wav"});
    EXPECT_EQ(outcome.err, "varno: warning: bad.wav: 1 samples are not a number, infinite or above 1e30 in "
                           "magnitude; the effect processes them as silence\n");
    const json summary = json::parse(outcome.out);
    EXPECT_EQ(summary["unusable_samples"], 1);
    EXPECT_NEAR(summary["peak_in_dbfs"].get<double>(), -6.02, 0.01);
    EXPECT_EQ(channelsOf("out.wav")[1], (std::vector{0.25, bad, bad}));
}

TEST_F(RenderChannels, KeepTheSpeakers) {
    // Front left and right, centre, low frequencies, side left and right.
    SF_INFO info{};
    info.samplerate = 48'000;
    info.channels = kFilm;
    info.format = SF_FORMAT_WAVEX | SF_FORMAT_FLOAT;
    std::vector<int> map = {SF_CHANNEL_MAP_LEFT, SF_CHANNEL_MAP_RIGHT,     SF_CHANNEL_MAP_CENTER,
                            SF_CHANNEL_MAP_LFE,  SF_CHANNEL_MAP_SIDE_LEFT, SF_CHANNEL_MAP_SIDE_RIGHT};
    const auto bytes = static_cast<int>(map.size() * sizeof(int));
    SNDFILE* file = sf_open(path("named.wav").c_str(), SFM_WRITE, &info);
    ASSERT_EQ(sf_command(file, SFC_SET_CHANNEL_MAP_INFO, map.data(), bytes), SF_TRUE);
    const std::vector<double> silence(std::size_t{kFilm} * kShortFrames);
    sf_write_double(file, silence.data(), static_cast<sf_count_t>(silence.size()));
    sf_close(file);
    render({"--channels", "1-2,3"}, "named.wav", "out.wav");
    file = sf_open(path("out.wav").c_str(), SFM_READ, &info);
    std::vector<int> kept(map.size());
    EXPECT_EQ(sf_command(file, SFC_GET_CHANNEL_MAP_INFO, kept.data(), bytes), SF_TRUE);
    sf_close(file);
    EXPECT_EQ(kept, map);
}

TEST_F(RenderChannels, PipesAndSeveralFilesAtATimeGiveTheSameBytes) {
    const std::vector<std::string> groups{"--channels", "1-2,3"};
    render(groups, "film.wav", "out.wav");
    const Bytes expected = content("out.wav");
    shell("cd " + path("") + " && cat film.wav | " + VARNO_PROGRAM +
          " render --set Hot=0.5 --channels 1-2,3 - - 2>/dev/null | cat > piped.wav");
    EXPECT_EQ(content("piped.wav"), expected);
    makeMusic("quad.wav", kWavFloat, 4, kShortFrames);
    makeMusic("stereo.wav", kWavFloat, 2, kShortFrames);
    render(groups, "quad.wav", "quad-out.wav");
    std::filesystem::create_directory(path("wet"));
    const Outcome outcome = varno({"render", "--quiet", "--set", "Hot=0.5", "--channels", "1-2,3", "--jobs",
                                   "2", "--out-dir", "wet", "film.wav", "stereo.wav", "quad.wav"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "varno: stereo.wav: has 2 channels; option --channels names 3\n");
    EXPECT_EQ(content("wet/film.wav"), expected);
    EXPECT_EQ(content("wet/quad.wav"), content("quad-out.wav"));
    EXPECT_FALSE(std::filesystem::exists(path("wet/stereo.wav")));
}

TEST_F(RenderChannels, AreReported) {
    const std::vector<std::string> words{"render", "--json", "--channels", "1-2,4", "film.wav", "out.wav"};
    auto dry = words;
    dry.emplace_back("--dry-run");
    const json plan = json::parse(varnoOut(dry));
    EXPECT_EQ(plan["groups"], json::parse(R"([{"channels": [1, 2], "variant": "stereo"},
                                              {"channels": [4], "variant": "mono"}])"));
    const json summary = json::parse(varnoOut(words));
    EXPECT_EQ(summary["channels"], kFilm);
    EXPECT_EQ(summary["latency_frames"], kLatency);
    const Channels in = channelsOf("film.wav");
    double peak = 0.0;
    for (const double sample : in[3]) {
        peak = std::max(peak, std::abs(sample));
    }
    EXPECT_NEAR(summary["groups"][1]["peak_in_dbfs"].get<double>(), 20.0 * std::log10(peak), 1e-6);
    EXPECT_FALSE(json::parse(varnoOut({"render", "--json"})).contains("groups"));
}

TEST_F(RenderChannels, MetersAreThoseOfOneGroup) {
    EXPECT_EQ(refusal(2, {"render", "--meters", "m.csv", "--channels", "1,2", "film.wav", "out.wav"}),
              "option --meters takes one group of --channels, found 2");
    render({"--meters", "m.csv", "--channels", "4"}, "film.wav", "out.wav");
    write("four.wav", kWavFloat, {channelsOf("film.wav")[3]});
    render({"--meters", "four.csv"}, "four.wav", "four-out.wav");
    EXPECT_EQ(content("m.csv"), content("four.csv"));
}

TEST_F(RenderChannels, ThatTheFileDoesNotHaveAreRefused) {
    EXPECT_EQ(refusal(1, {"render", "--channels", "1-2,5-9", "film.wav", "out.wav"}),
              "film.wav: has 6 channels; option --channels names 9");
    EXPECT_EQ(refusal(2, {"render", "--channels", "1-2-3", "film.wav", "out.wav"}),
              "option --channels: expected channels and pairs of them such as 1-2,3,4, found \"1-2-3\"");
    EXPECT_FALSE(std::filesystem::exists(path("out.wav")));
}

} // namespace
} // namespace varno::test
