#include "AudioFile/Reader.h"

#include "Tests/Apps/varno/Support/ChildProcess.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Apps/varno/Support/SoundFiles.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sndfile.h>
#include <sys/stat.h>
#include <unistd.h>

namespace varno::test {
namespace {

using testing::HasSubstr;

namespace fs = std::filesystem;

std::vector<double> readAll(AudioReader& reader, int blockFrames) {
    std::vector<double> samples;
    AudioBlock block(reader.format().channels, blockFrames);
    while (reader.read(block) > 0) {
        for (int frame = 0; frame < block.frames(); ++frame) {
            for (int channel = 0; channel < block.channels(); ++channel) {
                samples.push_back(block.exact(channel) != nullptr ? block.exact(channel)[frame]
                                                                  : block.samples()[channel][frame]);
            }
        }
    }
    return samples;
}

class AudioReaderTest : public testing::Test {
protected:
    // A 16-bit stereo WAV file of 1000 frames.
    std::string makeWav(const std::string& name = "in.wav", int format = SF_FORMAT_WAV | SF_FORMAT_PCM_16) {
        std::string path = mFolder / name;
        writeSound(path, {format, 2, 48'000, testIntegers(16, 2000), {}});
        return path;
    }

    std::string openError(const std::string& path) {
        return errorText(kExitWorkFailed, [&] { AudioReader reader(path); });
    }

    TemporaryFolder mFolder;
};

TEST_F(AudioReaderTest, ReportsTheFormat) {
    AudioReader reader(makeWav());
    EXPECT_EQ(reader.format().container, Container::kWav);
    EXPECT_EQ(reader.format().sample, SampleFormat::kPcm16);
    EXPECT_EQ(reader.format().channels, 2);
    EXPECT_EQ(reader.format().rateHz, 48'000);
    EXPECT_EQ(reader.format().frames, 1000);
    EXPECT_FALSE(reader.format().extensibleHeader);
    EXPECT_EQ(reader.name(), mFolder / "in.wav");
    EXPECT_TRUE(AudioReader(makeWav("x.wav", SF_FORMAT_WAVEX | SF_FORMAT_PCM_16)).format().extensibleHeader);
}

struct Stored {
    const char* name;
    int format;
    int bits;
};

class AudioReaderIntegerTest : public AudioReaderTest, public testing::WithParamInterface<Stored> {};

// An integer v of n bits is read as v / 2^(n-1), which single precision holds up to 24 bits.
TEST_P(AudioReaderIntegerTest, ReadsTheExactValues) {
    const Stored& stored = GetParam();
    const std::string path = mFolder / "in";
    const std::vector<std::int32_t> integers = testIntegers(stored.bits, 3000);
    writeSound(path, {stored.format, 1, 44'100, integers, {}});
    AudioReader reader(path);
    EXPECT_EQ(integerBits(reader.format().sample), stored.bits);
    const std::vector<double> samples = readAll(reader, 777);
    ASSERT_EQ(samples.size(), integers.size());
    for (std::size_t i = 0; i < integers.size(); ++i) {
        ASSERT_EQ(samples[i] * 2147483648.0, integers[i]) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, AudioReaderIntegerTest,
                         testing::Values(Stored{"wav8", SF_FORMAT_WAV | SF_FORMAT_PCM_U8, 8},
                                         Stored{"wav16", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 16},
                                         Stored{"wav24", SF_FORMAT_WAV | SF_FORMAT_PCM_24, 24},
                                         Stored{"wav32", SF_FORMAT_WAV | SF_FORMAT_PCM_32, 32},
                                         Stored{"rifx24", SF_FORMAT_WAV | SF_FORMAT_PCM_24 | SF_ENDIAN_BIG,
                                                24},
                                         Stored{"w64", SF_FORMAT_W64 | SF_FORMAT_PCM_16, 16},
                                         Stored{"rf64", SF_FORMAT_RF64 | SF_FORMAT_PCM_24, 24},
                                         Stored{"aiff8", SF_FORMAT_AIFF | SF_FORMAT_PCM_S8, 8},
                                         Stored{"aiff32", SF_FORMAT_AIFF | SF_FORMAT_PCM_32, 32},
                                         Stored{"caf24", SF_FORMAT_CAF | SF_FORMAT_PCM_24, 24},
                                         Stored{"alac16", SF_FORMAT_CAF | SF_FORMAT_ALAC_16, 16},
                                         Stored{"flac8", SF_FORMAT_FLAC | SF_FORMAT_PCM_S8, 8},
                                         Stored{"flac16", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 16},
                                         Stored{"flac24", SF_FORMAT_FLAC | SF_FORMAT_PCM_24, 24}),
                         [](const auto& test) { return test.param.name; });

TEST_F(AudioReaderTest, ReadsDoublesExactly) {
    const std::string path = mFolder / "in.wav";
    const std::vector<double> reals = testReals(1000);
    writeSound(path, {SF_FORMAT_WAV | SF_FORMAT_DOUBLE, 2, 48'000, {}, reals});
    AudioReader reader(path);
    EXPECT_EQ(readAll(reader, 64), reals);
}

TEST_F(AudioReaderTest, BlockSizesDoNotMatter) {
    const std::string path = makeWav();
    AudioReader whole(path);
    const std::vector<double> samples = readAll(whole, 4096);
    for (const int frames : {1, 7, 999, 1000, 1001}) {
        AudioReader reader(path);
        EXPECT_EQ(readAll(reader, frames), samples) << frames;
    }
}

TEST_F(AudioReaderTest, ReadsNothingAfterTheEnd) {
    AudioReader reader(makeWav());
    AudioBlock block(2, 1000);
    EXPECT_EQ(reader.read(block), 1000);
    EXPECT_EQ(reader.read(block), 0);
    EXPECT_EQ(reader.read(block), 0);
    EXPECT_EQ(block.frames(), 0);
}

// A pipe is read like the file; `source` is a shell command that writes to it.
class AudioReaderPipeTest : public AudioReaderTest, public testing::WithParamInterface<const char*> {
protected:
    std::vector<double> readPipe(const std::string& source) {
        const std::string fifo = mFolder / "pipe";
        EXPECT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
        FILE* writer = ::popen((source + " > " + fifo + " 2> /dev/null").c_str(), "r");
        AudioReader reader(fifo);
        std::vector<double> samples = readAll(reader, 512);
        ::pclose(writer);
        return samples;
    }
};

TEST_P(AudioReaderPipeTest, ReadsWhatOtherProgramsStream) {
    const std::string path = makeWav();
    AudioReader direct(path);
    std::string command = GetParam();
    command.replace(command.find("IN"), 2, path);
    EXPECT_EQ(readPipe(command), readAll(direct, 512));
}

INSTANTIATE_TEST_SUITE_P(Programs, AudioReaderPipeTest,
                         testing::Values("cat IN", "sox IN -t wav -", "sox IN -b 24 -t wav -",
                                         "sox IN -t aiff -", "flac --stdout --silent IN",
                                         "cat IN | flac --stdout --silent -"));

TEST_F(AudioReaderTest, ReadsStandardInputFromAFileAndFromAPipe) {
    const std::string path = makeWav();
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ASSERT_EQ(::write(ends[1], readFile(path).data(), fs::file_size(path)),
              static_cast<ssize_t>(fs::file_size(path)));
    ::close(ends[1]);
    const int file = ::open(path.c_str(), O_RDONLY);
    for (const int source : {file, ends[0]}) {
        EXPECT_EQ(inChildProcess([&] {
                      ::dup2(source, STDIN_FILENO);
                      AudioReader reader("-");
                      return reader.name() == "standard input" && readAll(reader, 512).size() == 2000 ? 0 : 1;
                  }),
                  0);
    }
    ::close(file);
    ::close(ends[0]);
}

TEST_F(AudioReaderTest, ReadsStandardInputFromWhereItStands) {
    const std::string path = mFolder / "prefixed";
    writeFile(path, "prefix" + readFile(makeWav()));
    const int file = ::open(path.c_str(), O_RDONLY);
    ::lseek(file, 6, SEEK_SET);
    EXPECT_EQ(inChildProcess([&] {
                  ::dup2(file, STDIN_FILENO);
                  AudioReader reader("-");
                  return readAll(reader, 512).size() == 2000 ? 0 : 1;
              }),
              0);
    ::close(file);
}

TEST_F(AudioReaderTest, NamesAMissingFile) {
    const std::string path = mFolder / "missing.wav";
    EXPECT_EQ(openError(path), path + ": cannot be read: No such file or directory");
}

TEST_F(AudioReaderTest, NamesAnUnreadableFile) {
    const std::string path = makeWav();
    fs::permissions(path, fs::perms(0));
    const int status = inChildProcess([&] {
        becomeOrdinaryUser();
        EXPECT_THAT(openError(path), HasSubstr(": cannot be read: "));
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
}

TEST_F(AudioReaderTest, NamesAFolder) {
    const std::string folder = mFolder.path().string();
    EXPECT_EQ(openError(folder), folder + ": is a folder; expected an audio file");
}

TEST_F(AudioReaderTest, NamesADevice) {
    EXPECT_EQ(openError("/dev/zero"), "/dev/zero: is a device; expected an audio file or a pipe");
}

TEST_F(AudioReaderTest, NamesAnEmptyFile) {
    const std::string path = mFolder / "in.wav";
    writeFile(path, "");
    EXPECT_EQ(openError(path), path + ": is empty; expected an audio file");
}

TEST_F(AudioReaderTest, NamesAFileThatIsNoAudio) {
    const std::string path = mFolder / "in.wav";
    for (const std::string& bytes :
         {std::string("These are words.\n"), std::string(5000, '\0'), std::string("RIFF")}) {
        writeFile(path, bytes);
        const std::string text = openError(path);
        EXPECT_THAT(text, HasSubstr(path + ": is no audio that can be read ("));
        EXPECT_THAT(text, HasSubstr("); expected WAV, W64, RF64, AIFF, CAF, FLAC, Ogg or the like"));
    }
}

TEST_F(AudioReaderTest, NamesAFileWithoutFrames) {
    const std::string path = mFolder / "in.wav";
    writeSound(path, {SF_FORMAT_WAV | SF_FORMAT_PCM_16, 2, 48'000, {}, {}});
    EXPECT_EQ(openError(path), path + ": holds no frames; expected at least one");
}

class AudioReaderTruncatedTest : public AudioReaderTest, public testing::WithParamInterface<Stored> {};

TEST_P(AudioReaderTruncatedTest, ReportsTheFramesFound) {
    const std::string path = makeWav("in", GetParam().format);
    const int frameBytes = 2 * GetParam().bits / 8;
    fs::resize_file(path, fs::file_size(path) - static_cast<std::uintmax_t>(300 * frameBytes));
    EXPECT_EQ(openError(path),
              path + ": is truncated: 700 frames found, expected the 1000 that its header promises; "
                     "--truncated reads what is there");
}

INSTANTIATE_TEST_SUITE_P(Containers, AudioReaderTruncatedTest,
                         testing::Values(Stored{"wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 16},
                                         Stored{"wavex", SF_FORMAT_WAVEX | SF_FORMAT_PCM_24, 24},
                                         Stored{"rf64", SF_FORMAT_RF64 | SF_FORMAT_PCM_16, 16},
                                         Stored{"w64", SF_FORMAT_W64 | SF_FORMAT_PCM_16, 16},
                                         Stored{"aiff", SF_FORMAT_AIFF | SF_FORMAT_PCM_16, 16},
                                         Stored{"caf", SF_FORMAT_CAF | SF_FORMAT_PCM_16, 16},
                                         Stored{"au", SF_FORMAT_AU | SF_FORMAT_PCM_16, 16},
                                         Stored{"float", SF_FORMAT_WAV | SF_FORMAT_FLOAT, 32}),
                         [](const auto& test) { return test.param.name; });

TEST_F(AudioReaderTest, ReportsATruncatedFlacFileWhereItEnds) {
    const std::string path = mFolder / "in.flac";
    writeSound(path, {SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 1, 48'000, testIntegers(16, 100'000), {}});
    fs::resize_file(path, fs::file_size(path) / 2);
    EXPECT_THAT(errorText(kExitWorkFailed,
                          [&] {
                              AudioReader reader(path);
                              readAll(reader, 512);
                          }),
                testing::AllOf(HasSubstr(path + ": is truncated: "),
                               HasSubstr("expected the 100000 that its header promises")));
}

TEST_F(AudioReaderTest, ReportsATruncatedOggFile) {
    const std::string path = mFolder / "in.ogg";
    writeSound(path, {SF_FORMAT_OGG | SF_FORMAT_VORBIS, 1, 48'000, {}, testReals(100'000)});
    fs::resize_file(path, fs::file_size(path) / 2);
    EXPECT_EQ(openError(path), path + ": is truncated: its stream has no end; expected a whole file; "
                                      "--truncated reads what is there");
}

} // namespace
} // namespace varno::test
