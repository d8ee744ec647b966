#include "AudioFile/Sndfile.h"

#include "Tests/Apps/varno/Support/SoundFiles.h"
#include "Tests/Support/TemporaryFolder.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <gmock/gmock.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::map<int, std::string> kTags = {
    {SF_STR_TITLE, "Take seven"}, {SF_STR_COPYRIGHT, "nobody"},          {SF_STR_SOFTWARE, "Recorder 2"},
    {SF_STR_ARTIST, "The Band"},  {SF_STR_COMMENT, "too loud \xC3\xA9"},
};

class SndfileMetadataTest : public testing::Test {
protected:
    // A 16-bit file of 100 frames, made by libsndfile, with text and, in WAV, a broadcast extension and
    // loops.
    std::string makeFile(const std::string& name, int format) {
        std::string path = mFolder / name;
        SF_INFO info{};
        info.samplerate = 48'000;
        info.channels = 1;
        info.format = format;
        SNDFILE* file = sf_open(path.c_str(), SFM_WRITE, &info);
        for (const auto& [tag, text] : kTags) {
            EXPECT_EQ(sf_set_string(file, tag, text.c_str()), 0);
        }
        if ((format & SF_FORMAT_TYPEMASK) == SF_FORMAT_WAV) {
            SF_BROADCAST_INFO broadcast{};
            std::strcpy(broadcast.description, "scene 12");
            std::strcpy(broadcast.coding_history, "A=PCM,F=48000\r\n");
            broadcast.coding_history_size = 15;
            broadcast.time_reference_low = 123'456;
            EXPECT_EQ(sf_command(file, SFC_SET_BROADCAST_INFO, &broadcast, sizeof broadcast), SF_TRUE);
            SF_INSTRUMENT instrument{};
            instrument.basenote = 60;
            EXPECT_EQ(sf_command(file, SFC_SET_INSTRUMENT, &instrument, sizeof instrument), SF_TRUE);
        }
        const std::vector<std::int32_t> samples = testIntegers(16, 100);
        EXPECT_EQ(sf_writef_int(file, samples.data(), 100), 100);
        sf_close(file);
        return path;
    }

    using BroadcastBytes = std::array<std::byte, sizeof(SF_BROADCAST_INFO)>;
    static BroadcastBytes bytesOf(const SF_BROADCAST_INFO& broadcast) {
        return std::bit_cast<BroadcastBytes>(broadcast);
    }

    SF_BROADCAST_INFO broadcastOf(const std::string& path) {
        SF_INFO info{};
        SNDFILE* file = sf_open(path.c_str(), SFM_READ, &info);
        SF_BROADCAST_INFO broadcast{};
        EXPECT_EQ(sf_command(file, SFC_GET_BROADCAST_INFO, &broadcast, sizeof broadcast), SF_TRUE) << path;
        sf_close(file);
        return broadcast;
    }

    TemporaryFolder mFolder;
};

TEST_F(SndfileMetadataTest, TheSoftwareTagOfAWavFileStaysAsItIs) {
    const std::string in = mFolder / "in.wav";
    const std::string out = mFolder / "out.wav";
    shell("sox -n -r 48000 " + in + " synth 0.01 sine 440");
    std::string bytes = readFile(in);
    const std::string list("LIST\x12\0\0\0INFOISFT\6\0\0\0Reaper", 26);
    bytes += list;
    bytes[4] = static_cast<char>(bytes[4] + 26);
    writeFile(in, bytes);
    Copy().run(in, out);
    EXPECT_NE(readFile(out).find(list), std::string::npos);
    EXPECT_EQ(shell("sox " + out + " -n stat 2>&1 | grep -c Samples"), "1\n");
}

TEST_F(SndfileMetadataTest, TheBroadcastExtensionStaysByteForByte) {
    const std::string in = makeFile("in.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    const SF_BROADCAST_INFO before = broadcastOf(in);
    for (const char* name : {"out.wav", "out.rf64"}) {
        EXPECT_THAT(Copy().run(in, mFolder / name).leftOut, IsEmpty());
        const SF_BROADCAST_INFO after = broadcastOf(mFolder / name);
        EXPECT_EQ(bytesOf(after), bytesOf(before)) << name;
    }
}

TEST_F(SndfileMetadataTest, ReportsWhatAContainerCannotHold) {
    const std::string in = makeFile("in.wav", SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    EXPECT_THAT(Copy().run(in, mFolder / "out.flac").leftOut,
                ElementsAre("OUT: FLAC has no place for: 2 chunks (bext, smpl)"));
    EXPECT_THAT(
        Copy().run(in, mFolder / "out.w64").leftOut,
        ElementsAre("OUT: W64 has no place for: 5 comments (TITLE, COPYRIGHT, ENCODER, ARTIST, COMMENT), "
                    "2 chunks (bext, smpl)"));
}

// libsndfile closes a descriptor whose file it cannot open, and another thread may have been given its
// number.
TEST_F(SndfileMetadataTest, ASourceKeepsItsDescriptor) {
    const std::string path = mFolder / "in.caf";
    writeSound(path, {SF_FORMAT_CAF | SF_FORMAT_PCM_16, 1, 48'000, testIntegers(16, 100), {}});
    std::string bytes = readFile(path);
    bytes.replace(bytes.find("data") + 4, 8, 8, '\xFF');
    writeFile(path, bytes);
    const FileDescriptor file = openFile(path, O_RDONLY, {});
    SF_INFO info{};
    SndfileSource source(file.get());
    EXPECT_EQ(source.open(info), nullptr);
    EXPECT_GE(::fcntl(file.get(), F_GETFD), 0);
}

} // namespace
} // namespace varno::test
