#include "AudioFile/Reader.h"

#include "Tests/Apps/varno/Support/ChildProcess.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Apps/varno/Support/SoundFiles.h"
#include "Tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sndfile.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

// How long a file is, where its header does not say so or is wrong.

namespace varno::test {
namespace {

using testing::HasSubstr;

namespace fs = std::filesystem;

constexpr std::size_t kFrames = 3000;

// All samples, as integers in the uppermost bits; decoders may exceed full scale.
std::vector<std::int32_t> integersOf(AudioReader& reader) {
    std::vector<std::int32_t> integers;
    AudioBlock block(reader.format().channels, 512);
    while (reader.read(block) > 0) {
        for (int frame = 0; frame < block.frames(); ++frame) {
            for (int channel = 0; channel < block.channels(); ++channel) {
                const double scaled = block.samples()[channel][frame] * 2147483648.0;
                integers.push_back(
                    static_cast<std::int32_t>(std::clamp(scaled, -2147483648.0, 2147483647.0)));
            }
        }
    }
    return integers;
}

class LengthTest : public testing::Test {
protected:
    // A mono 16-bit file.
    std::string soundBytes(int major) {
        writeSound(mPath, {major | SF_FORMAT_PCM_16, 1, 48'000, mIntegers, {}});
        return readFile(mPath);
    }

    AudioReader opened(const std::string& bytes, AudioReader::Options options = {}) {
        writeFile(mPath, bytes);
        return AudioReader(mPath, std::move(options));
    }

    std::string openError(const std::string& bytes) {
        return errorText(kExitWorkFailed, [&] { opened(bytes); });
    }

    // The bytes through a pipe.
    std::vector<std::int32_t> readPiped(const std::string& bytes, bool whileWritten) {
        const std::string fifo = mFolder / "pipe";
        EXPECT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
        std::jthread writer([&] { writeFile(fifo, bytes); });
        AudioReader reader(fifo, {.whileWritten = whileWritten});
        EXPECT_EQ(reader.isWhileWritten(), whileWritten);
        std::vector<std::int32_t> integers = integersOf(reader);
        EXPECT_EQ(reader.truncation(), "");
        writer.join();
        fs::remove(fifo);
        return integers;
    }

    TemporaryFolder mFolder;
    std::string mPath = mFolder / "in";
    std::vector<std::int32_t> mIntegers = testIntegers(16, kFrames);
};

// What programs leave in headers that they cannot go back to.
struct Placeholder {
    const char* name;
    int major;
    struct Field {
        const char* after; // the field's place: behind this text and so many bytes
        std::size_t distance;
        std::string bytes;
    };
    std::vector<Field> fields;
};

class PlaceholderTest : public LengthTest, public testing::WithParamInterface<Placeholder> {
protected:
    std::string streamed() {
        std::string bytes = soundBytes(GetParam().major);
        for (const auto& field : GetParam().fields) {
            const std::string after(field.after);
            bytes.replace(bytes.find(after) + after.size() + field.distance, field.bytes.size(), field.bytes);
        }
        return bytes;
    }
};

TEST_P(PlaceholderTest, AFileIsReadToItsEnd) {
    writeFile(mPath, streamed());
    AudioReader reader(mPath);
    EXPECT_EQ(reader.format().frames, static_cast<std::int64_t>(kFrames));
    EXPECT_EQ(integersOf(reader), mIntegers);
    EXPECT_EQ(reader.truncation(), "");
}

TEST_P(PlaceholderTest, APipeIsReadToItsEnd) {
    EXPECT_EQ(readPiped(streamed(), false), mIntegers);
    EXPECT_EQ(readPiped(streamed(), true), mIntegers);
}

TEST_P(PlaceholderTest, StandardInputIsReadToItsEnd) {
    const std::string bytes = streamed();
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ASSERT_EQ(::write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    ::close(ends[1]);
    EXPECT_EQ(inChildProcess([&] {
                  ::dup2(ends[0], STDIN_FILENO);
                  AudioReader reader("-");
                  return integersOf(reader) == mIntegers ? 0 : 1;
              }),
              0);
    ::close(ends[0]);
}

std::string zeros(std::size_t count) {
    return std::string(count, '\0');
}

std::string ones(std::size_t count) {
    return std::string(count, '\xFF');
}

INSTANTIATE_TEST_SUITE_P(
    Programs, PlaceholderTest,
    testing::Values(Placeholder{"ffmpegWav", SF_FORMAT_WAV, {{"RIFF", 0, ones(4)}, {"data", 0, ones(4)}}},
                    Placeholder{"arecordWav",
                                SF_FORMAT_WAV,
                                {{"RIFF", 0, std::string("\x24\0\0\x80", 4)},
                                 {"data", 0, std::string("\0\0\0\x80", 4)}}},
                    Placeholder{"soxWav",
                                SF_FORMAT_WAV,
                                {{"RIFF", 0, std::string("\x24\xF0\xFF\x7F", 4)},
                                 {"data", 0, std::string("\0\xF0\xFF\x7F", 4)}}},
                    Placeholder{"leastBound", SF_FORMAT_WAV, {{"data", 0, std::string("\0\0\0\x7F", 4)}}},
                    Placeholder{"zeroWav", SF_FORMAT_WAV, {{"RIFF", 0, zeros(4)}, {"data", 0, zeros(4)}}},
                    Placeholder{"wavex", SF_FORMAT_WAVEX, {{"data", 0, ones(4)}}},
                    Placeholder{"rifx", SF_FORMAT_WAV | SF_ENDIAN_BIG, {{"data", 0, ones(4)}}},
                    Placeholder{"rf64Zero", SF_FORMAT_RF64, {{"ds64", 4, zeros(24)}}},
                    Placeholder{"rf64Ones", SF_FORMAT_RF64, {{"ds64", 12, ones(8)}}},
                    Placeholder{"ffmpegW64", SF_FORMAT_W64, {{"data", 12, ones(7) + "\x7F"}}},
                    Placeholder{"onesW64", SF_FORMAT_W64, {{"data", 12, ones(8)}}},
                    Placeholder{"zeroW64", SF_FORMAT_W64, {{"data", 12, zeros(8)}}},
                    Placeholder{"ffmpegAiff",
                                SF_FORMAT_AIFF,
                                {{"FORM", 0, zeros(4)}, {"COMM", 6, zeros(4)}, {"SSND", 0, zeros(4)}}},
                    Placeholder{"soxAiff",
                                SF_FORMAT_AIFF,
                                {{"FORM", 0, std::string("\x7F\0\0\x50", 4)},
                                 {"SSND", 0, std::string("\x7F\0\0\x08", 4)}}},
                    Placeholder{"aifc", SF_FORMAT_AIFF | SF_ENDIAN_LITTLE, {{"SSND", 0, ones(4)}}},
                    Placeholder{"ffmpegCaf", SF_FORMAT_CAF, {{"data", 0, ones(8)}}},
                    Placeholder{"ffmpegAu", SF_FORMAT_AU, {{".snd", 4, ones(4)}}},
                    Placeholder{"zeroAu", SF_FORMAT_AU, {{".snd", 4, zeros(4)}}}),
    [](const auto& test) { return test.param.name; });

// sox reads such files too, if it is asked to ignore their lengths.
TEST_F(LengthTest, SoxReadsTheSameSamples) {
    std::string bytes = soundBytes(SF_FORMAT_WAV);
    bytes.replace(bytes.find("data") + 4, 4, std::string("\0\0\0\x80", 4));
    writeFile(mPath, bytes);
    const std::string raw = shell("sox -V1 --ignore-length -t wav " + mPath + " -t raw -e signed -b 32 -L -");
    AudioReader reader(mPath);
    const std::vector<std::int32_t> integers = integersOf(reader);
    EXPECT_EQ(raw, std::string(reinterpret_cast<const char*>(integers.data()), integers.size() * 4));
}

// Other formats than 16-bit integers are decoded as libsndfile decodes them.
TEST_F(LengthTest, EveryUncompressedFormatIsDecodedAlike) {
    for (const int subtype :
         std::initializer_list<int>{SF_FORMAT_PCM_U8, SF_FORMAT_PCM_16, SF_FORMAT_PCM_24, SF_FORMAT_PCM_32,
                                    SF_FORMAT_FLOAT, SF_FORMAT_DOUBLE, SF_FORMAT_ULAW, SF_FORMAT_ALAW}) {
        writeSound(mPath, {SF_FORMAT_WAV | subtype, 2, 48'000, {}, testReals(2 * kFrames)});
        std::string bytes = readFile(mPath);
        AudioReader whole(mPath);
        const std::vector<std::int32_t> integers = integersOf(whole);
        bytes.replace(bytes.find("data") + 4, 4, ones(4));
        EXPECT_EQ(readPiped(bytes, true), integers) << std::hex << subtype;
    }
}

// The end of a stream may lie within a frame.
TEST_F(LengthTest, AnIncompleteFrameAtTheEndIsDropped) {
    std::string bytes = soundBytes(SF_FORMAT_WAV);
    bytes.replace(bytes.find("data") + 4, 4, ones(4));
    EXPECT_EQ(readPiped(bytes + 'x', true), mIntegers);
    EXPECT_EQ(readPiped(bytes + 'x', false), mIntegers);
}

// Samples that read like the start of a chunk, whose size is not.
TEST_F(LengthTest, SamplesOfSizeZeroMayLookLikeAName) {
    std::string bytes = soundBytes(SF_FORMAT_WAV);
    const std::size_t samples = bytes.find("data") + 8;
    bytes.replace(samples - 4, 4, zeros(4));
    bytes.replace(samples, 8, "LISTwxyz");
    AudioReader reader = opened(bytes);
    const std::vector<std::int32_t> integers = integersOf(reader);
    EXPECT_EQ(integers.size(), kFrames);
    EXPECT_EQ(readPiped(bytes, true), integers);
}

TEST_F(LengthTest, AChunkAfterSamplesOfSizeZeroIsNoSample) {
    const std::string bytes = soundBytes(SF_FORMAT_WAV);
    const std::size_t samples = bytes.find("data") + 8;
    const std::string empty = bytes.substr(0, samples - 4) + zeros(4) + std::string("LIST\4\0\0\0INFO", 12);
    const std::string reason = ": holds no frames; expected at least one";
    EXPECT_EQ(openError(empty), mPath + reason);
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { readPiped(empty, true); }), mFolder / "pipe" + reason);
}

// A bound that the file reaches is the end of the samples. The file system holds the header alone.
TEST_F(LengthTest, ChunksAfterABoundStayChunks) {
    constexpr std::int64_t kBound = 0x7F000000;
    std::string bytes = soundBytes(SF_FORMAT_WAV);
    const std::size_t samples = bytes.find("data") + 8;
    bytes.replace(samples - 4, 4, std::string("\0\0\0\x7F", 4));
    writeFile(mPath, bytes);
    fs::resize_file(mPath, samples + kBound);
    std::ofstream(mPath, std::ios::app) << std::string("LIST\x10\0\0\0INFOINAM\4\0\0\0name", 24);
    AudioReader reader(mPath);
    EXPECT_EQ(reader.format().frames, kBound / 2);
    ASSERT_EQ(reader.metadata().chunks.size(), 1U);
    EXPECT_EQ(reader.metadata().chunks[0].id, "LIST");
}

TEST_F(LengthTest, AnUnknownLengthMayExceedTheField) {
    constexpr std::int64_t kBytes = std::int64_t{5} << 30;
    std::string bytes = soundBytes(SF_FORMAT_WAV);
    const std::size_t samples = bytes.find("data") + 8;
    bytes.replace(samples - 4, 4, ones(4));
    writeFile(mPath, bytes);
    fs::resize_file(mPath, samples + kBytes);
    EXPECT_EQ(AudioReader(mPath).format().frames, kBytes / 2);
}

// An MP3 file; its first frame states the length.
std::string mp3Bytes(const std::string& path) {
    std::vector<double> reals = testReals(2 * 30'000);
    for (double& real : reals) {
        real *= 0.5;
    }
    writeSound(path, {SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 2, 48'000, {}, reals});
    return readFile(path);
}

std::string withoutFirstFrame(const std::string& mp3) {
    return mp3.substr(mp3.find(mp3.substr(0, 2), 2));
}

TEST_F(LengthTest, Mp3WithoutALengthIsReadToItsEnd) {
    const std::string bytes = mp3Bytes(mPath);
    ASSERT_NE(bytes.find("Xing"), std::string::npos);
    const std::string id3 = std::string("ID3\3\0\0\0\0\1\0", 10) + zeros(128);
    for (const std::string& start : {std::string(), id3}) {
        writeFile(mPath, start + withoutFirstFrame(bytes));
        AudioReader reader(mPath);
        const auto frames = static_cast<std::size_t>(reader.format().frames);
        EXPECT_GE(frames, 30'000U);
        EXPECT_LE(frames, 30'000U + 4 * 1152); // the coder's delay and padding
        EXPECT_EQ(integersOf(reader).size(), 2 * frames);
        EXPECT_EQ(readPiped(start + withoutFirstFrame(bytes), false).size(), 2 * frames);
    }
}

TEST_F(LengthTest, Mp3WithALengthMustHaveIt) {
    const std::string bytes = mp3Bytes(mPath);
    AudioReader whole(mPath);
    EXPECT_EQ(whole.format().frames, 30'000);
    EXPECT_EQ(integersOf(whole).size(), 60'000U);
    writeFile(mPath, bytes.substr(0, bytes.size() / 2));
    EXPECT_THAT(errorText(kExitWorkFailed,
                          [&] {
                              AudioReader reader(mPath);
                              integersOf(reader);
                          }),
                HasSubstr("expected the 30000 that its header promises"));
}

struct Truncated {
    const char* name;
    int format;
};

class TruncatedTest : public LengthTest, public testing::WithParamInterface<Truncated> {
protected:
    std::string halfFile() {
        writeSound(mPath, {GetParam().format, 1, 48'000, {}, testReals(200'000)});
        const std::string bytes = readFile(mPath);
        return bytes.substr(0, bytes.size() / 2);
    }
};

TEST_P(TruncatedTest, IsReadAsFarAsItGoesWhereThatIsAccepted) {
    writeFile(mPath, halfFile());
    AudioReader reader(mPath, {.acceptTruncated = true});
    const std::string start = mPath + ": is truncated: ";
    EXPECT_THAT(reader.truncation(), testing::StartsWith(start));
    const std::int64_t frames = reader.format().frames;
    EXPECT_GT(frames, 50'000);
    EXPECT_LT(frames, 199'000);
    EXPECT_EQ(static_cast<std::int64_t>(integersOf(reader).size()), frames);
}

TEST_P(TruncatedTest, OfAPipeToo) {
    const std::string bytes = halfFile();
    AudioReader file = opened(bytes, {.acceptTruncated = true});
    const std::vector<std::int32_t> integers = integersOf(file);
    const std::string fifo = mFolder / "pipe";
    for (const bool whileWritten : {false, true}) {
        ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
        std::jthread writer([&] { writeFile(fifo, bytes); });
        AudioReader reader(fifo, {.acceptTruncated = true, .whileWritten = whileWritten});
        EXPECT_EQ(integersOf(reader), integers);
        EXPECT_THAT(reader.truncation(), testing::StartsWith(fifo + ": is truncated: "));
        writer.join();
        fs::remove(fifo);
    }
}

TEST_P(TruncatedTest, IsAnErrorElse) {
    writeFile(mPath, halfFile());
    EXPECT_THAT(errorText(kExitWorkFailed,
                          [&] {
                              AudioReader reader(mPath);
                              integersOf(reader);
                          }),
                testing::AllOf(HasSubstr(mPath + ": is truncated: "),
                               testing::EndsWith("; --truncated reads what is there")));
}

INSTANTIATE_TEST_SUITE_P(Formats, TruncatedTest,
                         testing::Values(Truncated{"wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16},
                                         Truncated{"wavAdpcm", SF_FORMAT_WAV | SF_FORMAT_IMA_ADPCM},
                                         Truncated{"rf64", SF_FORMAT_RF64 | SF_FORMAT_PCM_24},
                                         Truncated{"w64", SF_FORMAT_W64 | SF_FORMAT_FLOAT},
                                         Truncated{"aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16},
                                         Truncated{"caf", SF_FORMAT_CAF | SF_FORMAT_PCM_16},
                                         Truncated{"au", SF_FORMAT_AU | SF_FORMAT_PCM_16},
                                         Truncated{"flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16},
                                         Truncated{"ogg", SF_FORMAT_OGG | SF_FORMAT_VORBIS},
                                         Truncated{"mp3", SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III}),
                         [](const auto& test) { return test.param.name; });

// Whatever a damaged header holds, the file is read or refused.
TEST_F(LengthTest, DamagedHeadersAreReadOrRefused) {
    constexpr std::size_t kMostHeaderBytes = 120;
    int refused = 0;
    for (const int major : std::initializer_list<int>{SF_FORMAT_WAV, SF_FORMAT_RF64, SF_FORMAT_W64,
                                                      SF_FORMAT_AIFF, SF_FORMAT_AU}) {
        writeSound(mPath, {major | SF_FORMAT_PCM_16, 1, 48'000, testIntegers(16, 100), {}});
        const std::string bytes = readFile(mPath);
        for (std::size_t offset = 0; offset + 4 < std::min(bytes.size(), kMostHeaderBytes); ++offset) {
            for (const char fill : {'\0', '\xFF'}) {
                std::string damaged = bytes;
                damaged.replace(offset, 4, 4, fill);
                try {
                    AudioReader reader = opened(damaged, {.acceptTruncated = true});
                    EXPECT_LE(reader.format().frames * reader.format().channels, 400);
                    EXPECT_LE(integersOf(reader).size(), 400U);
                } catch (const FileError&) {
                    ++refused;
                }
            }
        }
    }
    EXPECT_GT(refused, 100);
}

TEST_F(LengthTest, NothingIsSaidOfAWholeFile) {
    AudioReader reader = opened(soundBytes(SF_FORMAT_WAV), {.acceptTruncated = true});
    EXPECT_EQ(integersOf(reader), mIntegers);
    EXPECT_EQ(reader.truncation(), "");
}

} // namespace
} // namespace varno::test
