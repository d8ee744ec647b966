#include "AudioFile/Writer.h"

#include "AudioFile/ContainerChunks.h"
#include "CommandLine/Interruption.h"
#include "Files/Transfer.h"
#include "Tests/Apps/varno/Support/ChildProcess.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Apps/varno/Support/SoundFiles.h"
#include "Tests/Support/TemporaryFolder.h"

#include <bit>
#include <cmath>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <limits>
#include <sndfile.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

namespace fs = std::filesystem;

AudioFormat formatOf(SampleFormat sample, int channels, std::int64_t frames) {
    AudioFormat format;
    format.sample = sample;
    format.rateHz = 48'000;
    format.channels = channels;
    format.frames = frames;
    return format;
}

class AudioWriterTest : public testing::Test {
protected:
    // Writes one channel of samples, processed from silence, and returns how many were clipped.
    std::int64_t writeMono(const std::string& path, SampleFormat sample, const std::vector<float>& samples,
                           const AudioWriter::Options& options = {}) {
        const auto frames = static_cast<int>(samples.size());
        AudioBlock silence(1, frames);
        silence.setSilence(frames);
        const AudioFormat input = formatOf(sample, 1, frames);
        AudioWriter writer(path, chooseOutputFormat(input, path, std::nullopt, frames).format, {}, options);
        const float* const channels[] = {samples.data()};
        writer.write(silence, channels);
        writer.commit();
        return writer.clippedSamples();
    }

    TemporaryFolder mFolder;
    std::string mIn = mFolder / "in";
    std::string mOut = mFolder / "out.wav";
};

struct Kept {
    const char* name;
    int format;
    int bits;
    const char* output;
};

class AudioWriterIntegerTest : public AudioWriterTest, public testing::WithParamInterface<Kept> {};

// Samples that an effect leaves unchanged keep every bit, whatever the block size; libsndfile reads them
// back.
TEST_P(AudioWriterIntegerTest, UntouchedSamplesComeBack) {
    const Kept& kept = GetParam();
    const std::string out = mFolder / kept.output;
    const std::vector<std::int32_t> integers = testIntegers(kept.bits, 20'000);
    writeSound(mIn, {kept.format, 2, 48'000, integers, {}});
    EXPECT_EQ((Copy{.blockFrames = 500}.run(mIn, out).clipped), 0);
    const Sound written = readIntegers(out);
    EXPECT_EQ(written.integers, integers);
    EXPECT_EQ(written.format & SF_FORMAT_SUBMASK, kept.format & SF_FORMAT_SUBMASK);
    EXPECT_EQ(written.channels, 2);
    EXPECT_EQ(written.rateHz, 48'000);
}

INSTANTIATE_TEST_SUITE_P(Formats, AudioWriterIntegerTest,
                         testing::Values(Kept{"wav8", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 8, "out.wav"},
                                         Kept{"wav16", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 16, "out.wav"},
                                         Kept{"wav24", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 24, "out.wav"},
                                         Kept{"wav32", SF_FORMAT_WAV | SF_FORMAT_PCM_32, 32, "out.wav"},
                                         Kept{"rf64", SF_FORMAT_RF64 | SF_FORMAT_PCM_24, 24, "out.rf64"},
                                         Kept{"w64", SF_FORMAT_W64 | SF_FORMAT_PCM_32, 32, "out.w64"},
                                         Kept{"aiff8", SF_FORMAT_AIFF | SF_FORMAT_PCM_S8, 8, "out.aif"},
                                         Kept{"aiff32", SF_FORMAT_AIFF | SF_FORMAT_PCM_32, 32, "out.aiff"},
                                         Kept{"caf24", SF_FORMAT_CAF | SF_FORMAT_PCM_24, 24, "out.caf"},
                                         Kept{"au16", SF_FORMAT_AU | SF_FORMAT_PCM_16, 16, "out.au"},
                                         Kept{"flac8", SF_FORMAT_FLAC | SF_FORMAT_PCM_S8, 8, "out.flac"},
                                         Kept{"flac16", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 16, "out.flac"},
                                         Kept{"flac24", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 24, "out.flac"}),
                         [](const auto& test) { return test.param.name; });

TEST_F(AudioWriterTest, EightBitsComeBackAcrossContainers) {
    const std::vector<std::int32_t> integers = testIntegers(8, 5000);
    writeSound(mIn, {SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 1, 48'000, integers, {}});
    for (const char* name : {"out.aiff", "out.flac", "out.caf", "out.w64"}) {
        Copy().run(mIn, mFolder / name);
        EXPECT_EQ(readIntegers(mFolder / name).integers, integers) << name;
    }
}

TEST_F(AudioWriterTest, CompandedBytesComeBack) {
    for (const int codec : {SF_FORMAT_ULAW, SF_FORMAT_ALAW}) {
        std::string bytes;
        for (int code = 0; code < 256; ++code) {
            bytes += static_cast<char>(code);
        }
        SF_INFO info{};
        info.samplerate = 8000;
        info.channels = 1;
        info.format = SF_FORMAT_WAV | codec;
        SNDFILE* file = sf_open(mIn.c_str(), SFM_WRITE, &info);
        ASSERT_NE(file, nullptr);
        sf_write_raw(file, bytes.data(), 256);
        sf_close(file);
        Copy{.options = {.overwrite = Overwrite::kReplace}}.run(mIn, mOut);
        EXPECT_EQ(readIntegers(mOut).integers, readIntegers(mIn).integers) << std::hex << codec;
        EXPECT_EQ(readIntegers(mOut).format & SF_FORMAT_SUBMASK, codec);
    }
}

TEST_F(AudioWriterTest, DoublesComeBack) {
    const std::vector<double> reals = testReals(20'000);
    writeSound(mIn, {SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 2, 48'000, {}, reals});
    Copy().run(mIn, mOut);
    EXPECT_EQ(readReals(mOut).reals, reals);
}

TEST_F(AudioWriterTest, FloatsAreWrittenAsTheyAreEvenBeyondFullScale) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    const std::vector<float> samples = {0.1F, -0.0F, 1.5F, -1e30F, 1e-40F, inf, -inf, nan};
    EXPECT_EQ(writeMono(mOut, SampleFormat::kFloat, samples), 0);
    const Sound written = readReals(mOut);
    ASSERT_EQ(written.reals.size(), samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i) {
        EXPECT_EQ(std::bit_cast<std::uint32_t>(static_cast<float>(written.reals[i])),
                  std::bit_cast<std::uint32_t>(samples[i]))
            << i;
    }
}

TEST_F(AudioWriterTest, ProcessedSamplesAreRoundedToNearest) {
    const float step = 1.0F / 32768.0F;
    EXPECT_EQ(writeMono(mOut, SampleFormat::kPcm16, {0.4F * step, 0.6F * step, -0.6F * step, 1000.7F * step},
                        {.inputSample = SampleFormat::kPcm16}),
              0);
    EXPECT_THAT(readIntegers(mOut).integers, ElementsAre(0, 1 << 16, -(1 << 16), 1001 << 16));
}

TEST_F(AudioWriterTest, CountsClippedSamples) {
    EXPECT_EQ(writeMono(mOut, SampleFormat::kPcm24, {0.5F, 1.0F, -1.0F, 1.1F, -2.0F, std::nanf("")},
                        {.inputSample = SampleFormat::kPcm24}),
              3);
    constexpr int kMost = 0x7FFFFF00;
    EXPECT_THAT(readIntegers(mOut).integers, ElementsAre(0x40000000, kMost, std::numeric_limits<int>::min(),
                                                         kMost, std::numeric_limits<int>::min(), 0));
}

TEST_F(AudioWriterTest, DithersOnlyWhereDepthIsReduced) {
    struct Case {
        SampleFormat input;
        const char* output;
        SampleFormat written;
        bool dithered;
    };
    using enum SampleFormat;
    constexpr Case kCases[] = {
        {kPcm24, "a.wav", kPcm16, true},  {kFloat, "b.wav", kPcm16, true},   {kFloat, "c.wav", kPcm24, true},
        {kPcm32, "d.wav", kPcm24, true},  {kPcm16, "e.wav", kPcm16, false},  {kPcm16, "f.wav", kPcm24, false},
        {kFloat, "g.wav", kPcm32, false}, {kDouble, "h.wav", kPcm32, false}, {kPcm24, "i.wav", kFloat, false},
    };
    const std::vector<float> quiet(1000, 0.2F / 8388608.0F); // a fifth of a step of 24 bits
    for (const Case& c : kCases) {
        const std::string path = mFolder / c.output;
        writeMono(path, c.written, quiet, {.inputSample = c.input});
        const std::vector<double> written = readReals(path).reals;
        const bool varies =
            std::any_of(written.begin(), written.end(), [&](double x) { return x != written[0]; });
        EXPECT_EQ(varies, c.dithered) << c.output;
        writeMono(path, c.written, quiet,
                  {.overwrite = Overwrite::kReplace, .dither = Dither::kNone, .inputSample = c.input});
        const std::vector<double> plain = readReals(path).reals;
        EXPECT_TRUE(std::all_of(plain.begin(), plain.end(), [&](double x) { return x == plain[0]; }))
            << c.output;
    }
}

class AudioWriterRepeatTest : public AudioWriterTest, public testing::WithParamInterface<const char*> {};

// Encoders, dither, headers and serial numbers: nothing may depend on block sizes, the run or the time of
// day.
TEST_P(AudioWriterRepeatTest, EveryRunAndBlockSizeGivesTheSameBytes) {
    writeSound(mIn, {SF_FORMAT_WAV | SF_FORMAT_FLOAT, 2, 48'000, {}, testReals(24'000)});
    std::string first;
    for (const int frames : {512, 1, 7, 4096, 12'000, 512}) {
        const std::string out = mFolder / (std::to_string(frames) + GetParam());
        Copy{.options = {.overwrite = Overwrite::kReplace}, .blockFrames = frames}.run(mIn, out);
        if (first.empty()) {
            first = readFile(out);
        }
        EXPECT_TRUE(readFile(out) == first) << frames;
    }
    const std::string later = mFolder / (std::string("later") + GetParam());
    EXPECT_EQ(inChildProcess([&] {
                  Copy().run(mIn, later);
                  return 0;
              }),
              0);
    EXPECT_TRUE(readFile(later) == first);
}

TEST_P(AudioWriterRepeatTest, HoldsNoTimeOfDay) {
    writeSound(mIn, {SF_FORMAT_WAV | SF_FORMAT_FLOAT, 2, 48'000, {}, testReals(100)});
    const std::string out = mFolder / (std::string("out") + GetParam());
    Copy().run(mIn, out);
    const FileDescriptor file(::open(out.c_str(), O_RDONLY));
    for (const ContainerChunk& chunk : readContainerChunks(file.get()).chunks) {
        const std::string start = readFile(out).substr(static_cast<std::size_t>(chunk.dataOffset), 8);
        EXPECT_TRUE(chunk.id != "PEAK" || start.substr(4) == std::string(4, '\0'));
    }
}

INSTANTIATE_TEST_SUITE_P(Containers, AudioWriterRepeatTest,
                         testing::Values(".wav", ".w64", ".rf64", ".aiff", ".caf", ".au", ".flac", ".ogg",
                                         ".opus"));

class AudioWriterFramesTest : public AudioWriterTest, public testing::WithParamInterface<const char*> {};

TEST_P(AudioWriterFramesTest, HasExactlyTheFramesOfTheInput) {
    for (const std::size_t frames : {1U, 63U, 4096U, 5001U, 24'000U}) {
        const std::string name = std::to_string(frames);
        writeSound(mIn, {SF_FORMAT_WAV | SF_FORMAT_PCM_16, 1, 48'000, testIntegers(16, frames), {}});
        const std::string out = mFolder / (name + GetParam());
        Copy().run(mIn, out);
        EXPECT_EQ(readReals(out).reals.size(), frames) << out;
    }
}

INSTANTIATE_TEST_SUITE_P(Containers, AudioWriterFramesTest,
                         testing::Values(".wav", ".w64", ".rf64", ".aiff", ".caf", ".au", ".flac", ".ogg",
                                         ".opus"));

TEST_F(AudioWriterTest, OtherProgramsReadTheSameSamples) {
    writeSound(mIn, {SF_FORMAT_WAV | SF_FORMAT_PCM_24, 2, 48'000, testIntegers(24, 20'000), {}});
    const std::string raw = " -t raw -e signed -b 24 -L -";
    const std::string expected = shell("sox -t wav " + mIn + raw);
    for (const char* name : {"o.wav", "o.w64", "o.aiff", "o.caf", "o.au", "o.flac"}) {
        Copy().run(mIn, mFolder / name);
        EXPECT_TRUE(shell("sox -V1 " + (mFolder / name) + raw) == expected) << name;
    }
    shell("flac --test --silent " + mFolder / "o.flac");
    EXPECT_EQ(shell("soxi -s " + mFolder / "o.aiff"), "10000\n");
}

TEST_F(AudioWriterTest, OtherProgramsReadOggFiles) {
    const std::string in = mFolder / "in.wav";
    shell("sox -n -r 48000 -b 24 " + in + " synth 1 sine 440 gain -6");
    const std::string out = mFolder / "out.ogg";
    Copy().run(in, out);
    EXPECT_EQ(shell("soxi -s " + out), "48000\n");
    const std::string stats = shell("sox " + out + " -n stat 2>&1");
    EXPECT_THAT(stats, testing::ContainsRegex("Rough   frequency:          4(39|40)"));
}

TEST_F(AudioWriterTest, EncodersGetNumbersOnly) {
    std::vector<float> samples(48'000, 0.25F);
    samples[1000] = std::nanf("");
    samples[2000] = std::numeric_limits<float>::infinity();
    for (const char* name : {"out.ogg", "out.opus"}) {
        writeMono(mFolder / name, SampleFormat::kFloat, samples);
        const std::vector<double> written = readReals(mFolder / name).reals;
        EXPECT_TRUE(std::all_of(written.begin(), written.end(), [](double x) { return std::isfinite(x); }))
            << name;
    }
}

TEST_F(AudioWriterTest, WavHeadersStayPlainOrExtensible) {
    for (const int major : {SF_FORMAT_WAV, SF_FORMAT_WAVEX}) {
        for (const int subtype : {SF_FORMAT_PCM_16, SF_FORMAT_PCM_24, SF_FORMAT_FLOAT}) {
            writeSound(mIn, {major | subtype, 2, 48'000, {}, testReals(100)});
            Copy{.options = {.overwrite = Overwrite::kReplace}}.run(mIn, mOut);
            EXPECT_EQ(readReals(mOut).format & SF_FORMAT_TYPEMASK, major);
            const auto tag = static_cast<unsigned char>(readFile(mOut)[20]); // of the format chunk
            const unsigned plainTag = subtype == SF_FORMAT_FLOAT ? 3U : 1U;
            EXPECT_EQ(tag, major == SF_FORMAT_WAV ? plainTag : 0xFEU);
        }
    }
    writeSound(mIn, {SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 2, 48'000, testIntegers(24, 100), {}});
    Copy{.options = {.overwrite = Overwrite::kReplace}}.run(mIn, mOut);
    EXPECT_EQ(readReals(mOut).format & SF_FORMAT_TYPEMASK, SF_FORMAT_WAV);
}

TEST_F(AudioWriterTest, SpeakersOfAnExtensibleHeaderAreKept) {
    writeSound(mIn, {SF_FORMAT_WAVEX | SF_FORMAT_PCM_16, 2, 48'000, testIntegers(16, 100), {}});
    std::string bytes = readFile(mIn);
    constexpr std::size_t kMaskOffset = 40; // RIFF header, chunk header, 20 bytes of the format
    bytes[kMaskOffset] = 0x30;              // back left and right
    writeFile(mIn, bytes);
    Copy().run(mIn, mOut);
    EXPECT_EQ(readFile(mOut).substr(kMaskOffset, 4), bytes.substr(kMaskOffset, 4));
}

TEST_F(AudioWriterTest, AnAbandonedRenderLeavesNothing) {
    for (const char* name : {"out.wav", "out.flac", "out.ogg"}) {
        AudioWriter writer(
            mFolder / name,
            chooseOutputFormat(formatOf(SampleFormat::kFloat, 1, 9), name, std::nullopt, 9).format, {}, {});
        AudioBlock block(1, 9);
        block.setSilence(9);
        writer.write(block, block.samples());
    }
    EXPECT_EQ(mFolder.listing(), "");
}

TEST_F(AudioWriterTest, RefusesAnExistingFileAndReplacesItWhenForced) {
    writeFile(mOut, "old");
    EXPECT_THAT(errorText(kExitWorkFailed, [&] { writeMono(mOut, SampleFormat::kPcm16, {0.0F}); }),
                HasSubstr("exists already"));
    EXPECT_EQ(readFile(mOut), "old");
    writeMono(mOut, SampleFormat::kPcm16, {0.5F}, {.overwrite = Overwrite::kReplace});
    EXPECT_EQ(readIntegers(mOut).integers.size(), 1U);
}

class AudioWriterFullDiskTest : public AudioWriterTest,
                                public testing::WithParamInterface<std::tuple<const char*, rlim_t>> {};

// The disk is full from the start, after some blocks, or only for the last bytes.
TEST_P(AudioWriterFullDiskTest, IsReportedAndLeavesNothing) {
    const auto [extension, limitBytes] = GetParam();
    const std::string in = mFolder / "in.wav";
    writeSound(in, {SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, 48'000, testIntegers(16, 100'000), {}});
    const std::string out = mFolder / (std::string("out") + extension);
    const int status = inChildProcess([&, limit = limitBytes] {
        catchInterruptions();
        const rlimit most{limit, limit};
        ::setrlimit(RLIMIT_FSIZE, &most);
        EXPECT_EQ(errorText(kExitWorkFailed, [&] { Copy().run(in, out); }),
                  out + ": cannot be written: File too large");
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(mFolder.listing(), "in.wav");
}

INSTANTIATE_TEST_SUITE_P(Limits, AudioWriterFullDiskTest,
                         testing::Combine(testing::Values(".wav", ".w64", ".rf64", ".aiff", ".caf", ".flac",
                                                          ".ogg", ".opus"),
                                          testing::Values(rlim_t{10}, rlim_t{5000})));

TEST_F(AudioWriterTest, ADiskFullWithTheLastBytesIsReported) {
    const std::string in = mFolder / "in.wav";
    writeSound(in, {SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, 48'000, testIntegers(16, 50'000), {}});
    for (const char* name : {"out.flac", "out.ogg", "out.wav"}) {
        const std::string whole = mFolder / (std::string("whole-") + name);
        Copy().run(in, whole);
        const int status = inChildProcess([&] {
            catchInterruptions();
            const rlimit most{fs::file_size(whole) - 1, fs::file_size(whole) - 1};
            ::setrlimit(RLIMIT_FSIZE, &most);
            Copy().run(in, mFolder / name);
            return 0;
        });
        EXPECT_EQ(status, kExitWorkFailed) << name;
        EXPECT_FALSE(fs::exists(mFolder / name)) << name;
    }
}

TEST_F(AudioWriterTest, WritesToAPipe) {
    const std::string in = mFolder / "in.wav";
    writeSound(in, {SF_FORMAT_WAV | SF_FORMAT_PCM_24, 2, 48'000, testIntegers(24, 50'000), {}});
    const std::string fifo = mFolder / "pipe";
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    const std::string received = mFolder / "received.wav";
    FILE* reader = ::popen(("cat " + fifo + " > " + received).c_str(), "r");
    const int status = inChildProcess([&] {
        const int pipe = ::open(fifo.c_str(), O_WRONLY);
        ::dup2(pipe, STDOUT_FILENO);
        ::close(pipe);
        Copy().run(in, "-");
        return 0;
    });
    ::pclose(reader);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readIntegers(received).integers, readIntegers(in).integers);
}

TEST_F(AudioWriterTest, DoesNotWriteToATerminal) {
    const int status = inChildProcess([&] {
        const int terminal = ::posix_openpt(O_RDWR | O_NOCTTY);
        ::dup2(terminal, STDOUT_FILENO);
        EXPECT_EQ(errorText(kExitWorkFailed, [&] { writeMono("-", SampleFormat::kPcm16, {0.0F}); }),
                  "standard output: is a terminal; expected a file or a pipe");
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
}

TEST_F(AudioWriterTest, TheTailFollowsTheInput) {
    AudioBlock block(1, 2);
    const double sound[] = {0.25, 0.5};
    AudioFormat format = formatOf(SampleFormat::kPcm16, 1, 4);
    AudioWriter writer(mOut, format, {}, {.inputSample = SampleFormat::kPcm16});
    block.setInterleaved(sound, 2);
    writer.write(block, block.samples());
    block.setSilence(2);
    block.samples()[0][0] = -0.25F;
    writer.write(block, block.samples());
    writer.commit();
    EXPECT_THAT(readIntegers(mOut).integers, ElementsAre(1 << 29, 1 << 30, -(1 << 29), 0));
}

} // namespace
} // namespace varno::test
