#include "AudioFile/OutputFormat.h"

#include "Tests/Apps/varno/Support/ErrorText.h"

#include <gmock/gmock.h>

namespace varno::test {
namespace {

using testing::HasSubstr;

AudioFormat stereo(SampleFormat sample, Container container = Container::kWav) {
    AudioFormat format;
    format.container = container;
    format.sample = sample;
    format.rateHz = 48'000;
    format.channels = 2;
    format.frames = 1000;
    return format;
}

OutputFormat choose(const AudioFormat& input, const std::string& path,
                    std::optional<SampleFormat> asked = std::nullopt) {
    return chooseOutputFormat(input, path, asked, input.frames);
}

TEST(OutputFormatTest, TheExtensionChoosesTheContainer) {
    const AudioFormat input = stereo(SampleFormat::kPcm16);
    const std::pair<const char*, Container> cases[] = {
        {"a.wav", Container::kWav},   {"a.WAV", Container::kWav},     {"a.bwf", Container::kWav},
        {"a.rf64", Container::kRf64}, {"a.w64", Container::kW64},     {"a.aif", Container::kAiff},
        {"a.aiff", Container::kAiff}, {"a.caf", Container::kCaf},     {"a.au", Container::kAu},
        {"a.flac", Container::kFlac}, {"a.ogg", Container::kOgg},     {"a.opus", Container::kOgg},
        {"-", Container::kWav},       {"/dev/null", Container::kWav}, {"b.flac/a.wav", Container::kWav},
    };
    for (const auto& [path, container] : cases) {
        EXPECT_EQ(choose(input, path).format.container, container) << path;
    }
}

TEST(OutputFormatTest, OtherExtensionsAreRefused) {
    const AudioFormat input = stereo(SampleFormat::kPcm16);
    EXPECT_EQ(
        errorText(kExitWrongUsage, [&] { choose(input, "a.xyz"); }),
        "a.xyz: has the extension .xyz; expected .wav, .rf64, .w64, .aiff, .caf, .au, .flac, .ogg or .opus");
    EXPECT_THAT(errorText(kExitWrongUsage, [&] { choose(input, "take"); }),
                HasSubstr("take: has no extension"));
    EXPECT_THAT(errorText(kExitWrongUsage, [&] { choose(input, "a.mp3"); }), HasSubstr("extension .mp3"));
}

TEST(OutputFormatTest, KeepsRateChannelsAndHeader) {
    AudioFormat input = stereo(SampleFormat::kPcm24);
    input.rateHz = 96'000;
    input.extensibleHeader = true;
    const AudioFormat output = chooseOutputFormat(input, "a.wav", std::nullopt, 1234).format;
    EXPECT_EQ(output.rateHz, 96'000);
    EXPECT_EQ(output.channels, 2);
    EXPECT_EQ(output.frames, 1234);
    EXPECT_TRUE(output.extensibleHeader);
}

struct KeptOrReplaced {
    SampleFormat input;
    const char* path;
    SampleFormat output;
};

TEST(OutputFormatTest, KeepsTheSampleFormatWhereTheContainerHoldsIt) {
    using enum SampleFormat;
    constexpr KeptOrReplaced kCases[] = {
        {kPcm8, "a.wav", kPcm8},     {kPcm16, "a.wav", kPcm16},  {kPcm24, "a.wav", kPcm24},
        {kPcm32, "a.wav", kPcm32},   {kFloat, "a.wav", kFloat},  {kDouble, "a.wav", kDouble},
        {kULaw, "a.wav", kULaw},     {kALaw, "a.au", kALaw},     {kPcm8, "a.aiff", kPcm8},
        {kPcm32, "a.aiff", kPcm32},  {kFloat, "a.aiff", kFloat}, {kDouble, "a.caf", kDouble},
        {kPcm8, "a.flac", kPcm8},    {kPcm16, "a.flac", kPcm16}, {kPcm24, "a.flac", kPcm24},
        {kVorbis, "a.ogg", kVorbis}, {kOpus, "a.ogg", kOpus},    {kOpus, "a.opus", kOpus},
    };
    for (const KeptOrReplaced& c : kCases) {
        const OutputFormat chosen = choose(stereo(c.input), c.path);
        EXPECT_EQ(chosen.format.sample, c.output) << c.path << " " << sampleFormatName(c.input);
        EXPECT_EQ(chosen.note, "") << c.path << " " << sampleFormatName(c.input);
    }
}

TEST(OutputFormatTest, TakesTheNearestOtherwiseAndReportsIt) {
    using enum SampleFormat;
    constexpr KeptOrReplaced kCases[] = {
        {kPcm32, "a.flac", kPcm24}, {kFloat, "a.flac", kPcm24}, {kDouble, "a.flac", kPcm24},
        {kPcm16, "a.ogg", kVorbis}, {kPcm16, "a.opus", kOpus},  {kVorbis, "a.opus", kOpus},
        {kVorbis, "a.wav", kFloat}, {kOpus, "a.flac", kPcm24},  {kMpeg, "a.wav", kFloat},
        {kOther, "a.wav", kPcm16},  {kULaw, "a.flac", kPcm16},  {kALaw, "a.ogg", kVorbis},
    };
    for (const KeptOrReplaced& c : kCases) {
        const OutputFormat chosen = choose(stereo(c.input), c.path);
        EXPECT_EQ(chosen.format.sample, c.output) << c.path << " " << sampleFormatName(c.input);
        EXPECT_THAT(chosen.note, HasSubstr(std::string("written as ") + sampleFormatName(c.output)))
            << c.path;
    }
    EXPECT_EQ(choose(stereo(kFloat), "a.flac").note,
              "a.flac: written as pcm24; FLAC cannot hold the input's float");
}

TEST(OutputFormatTest, RequestedFormatsAreTakenWithoutRemark) {
    for (const char* name : {"pcm16", "pcm24", "pcm32", "float", "double"}) {
        const OutputFormat chosen = choose(stereo(SampleFormat::kPcm8), "a.wav", sampleFormatFromName(name));
        EXPECT_STREQ(sampleFormatName(chosen.format.sample), name);
        EXPECT_EQ(chosen.note, "");
    }
}

TEST(OutputFormatTest, RequestedFormatsThatTheContainerLacksAreRefused) {
    EXPECT_EQ(errorText(kExitWrongUsage,
                        [] { choose(stereo(SampleFormat::kPcm16), "a.flac", SampleFormat::kFloat); }),
              "--format float: a.flac is FLAC, which cannot hold it; expected pcm16, pcm24");
    EXPECT_EQ(errorText(kExitWrongUsage,
                        [] { choose(stereo(SampleFormat::kPcm16), "a.ogg", SampleFormat::kPcm16); }),
              "--format pcm16: a.ogg is Ogg, which cannot hold it; expected no --format for this container");
}

TEST(OutputFormatTest, RatesThatACodecLacksAreRefused) {
    AudioFormat input = stereo(SampleFormat::kPcm16);
    input.rateHz = 44'100;
    EXPECT_EQ(errorText(kExitWrongUsage, [&] { choose(input, "a.opus"); }),
              "a.opus: Opus cannot hold 44100 Hz; expected 8000, 12000, 16000, 24000 or 48000");
}

TEST(OutputFormatTest, ChannelsThatAContainerLacksAreRefused) {
    AudioFormat input = stereo(SampleFormat::kPcm16);
    input.channels = 9;
    EXPECT_EQ(errorText(kExitWrongUsage, [&] { choose(input, "a.flac"); }),
              "a.flac: FLAC cannot hold 9 channels at 48000 Hz; expected another container, such as .wav");
    EXPECT_EQ(choose(input, "a.wav").format.channels, 9);
}

TEST(OutputFormatTest, WavBecomesRf64BeyondFourGigabytes) {
    const AudioFormat input = stereo(SampleFormat::kPcm16);
    const std::int64_t most = kMostRiffSampleBytes / 4;
    EXPECT_EQ(chooseOutputFormat(input, "a.wav", std::nullopt, most).format.container, Container::kWav);
    const OutputFormat longer = chooseOutputFormat(input, "a.wav", std::nullopt, most + 1);
    EXPECT_EQ(longer.format.container, Container::kRf64);
    EXPECT_EQ(longer.note, "a.wav: written as RF64, since WAV ends at 4 GB");
    EXPECT_EQ(chooseOutputFormat(input, "a.rf64", std::nullopt, most + 1).note, "");
    EXPECT_EQ(chooseOutputFormat(input, "a.w64", std::nullopt, most + 1).format.container, Container::kW64);
    EXPECT_EQ(chooseOutputFormat(input, "a.flac", std::nullopt, most + 1).format.container, Container::kFlac);
    EXPECT_THAT(
        errorText(kExitWrongUsage, [&] { chooseOutputFormat(input, "a.aiff", std::nullopt, most + 1); }),
        HasSubstr("AIFF holds 4 GB"));
}

} // namespace
} // namespace varno::test
