#include "AudioFile/ContainerChunks.h"

#include "AudioFile/Transfer.h"
#include "Tests/Apps/varno/Support/SoundFiles.h"
#include "Tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <sndfile.h>
#include <sys/mman.h>
#include <unistd.h>

namespace varno::test {
namespace {

using testing::IsEmpty;

// Replaces the bytes at an offset.
std::string patched(std::string bytes, std::size_t offset, const std::string& with) {
    return bytes.replace(offset, with.size(), with);
}

class ContainerChunksTest : public testing::Test {
protected:
    ContainerChunks chunksOf(const std::string& bytes) {
        const FileDescriptor file(::memfd_create("file", 0)); // in memory, since there are many
        EXPECT_EQ(::write(file.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        return readContainerChunks(file.get());
    }

    // A mono 16-bit file of 100 frames.
    std::string soundBytes(int major) {
        writeSound(mPath, {major | SF_FORMAT_PCM_16, 1, 48'000, testIntegers(16, 100), {}});
        return readFile(mPath);
    }

    TemporaryFolder mFolder;
    std::string mPath = mFolder / "file";
};

TEST_F(ContainerChunksTest, FindsTheSamplesOfEachContainer) {
    for (const int major : std::initializer_list<int>{SF_FORMAT_WAV, SF_FORMAT_WAVEX, SF_FORMAT_RF64,
                                                      SF_FORMAT_W64, SF_FORMAT_AIFF, SF_FORMAT_CAF,
                                                      SF_FORMAT_AU, SF_FORMAT_WAV | SF_ENDIAN_BIG}) {
        const SampleExtent extent = sampleExtent(chunksOf(soundBytes(major)));
        EXPECT_EQ(extent.promised, 200) << std::hex << major;
        EXPECT_EQ(extent.present, 200) << std::hex << major;
        EXPECT_FALSE(extent.isTruncated());
    }
}

TEST_F(ContainerChunksTest, ReportsWhatTheHeaderOfACutOffFileStates) {
    for (const int major : std::initializer_list<int>{SF_FORMAT_WAV, SF_FORMAT_RF64, SF_FORMAT_W64,
                                                      SF_FORMAT_AIFF, SF_FORMAT_AU}) {
        const std::string bytes = soundBytes(major);
        const SampleExtent extent = sampleExtent(chunksOf(bytes.substr(0, bytes.size() - 150)));
        EXPECT_EQ(extent.promised, 200) << std::hex << major;
        EXPECT_EQ(extent.present, 50) << std::hex << major;
        EXPECT_TRUE(extent.isTruncated());
    }
}

TEST_F(ContainerChunksTest, PlaceholdersOfStreamsStateNoSize) {
    const std::string wav = soundBytes(SF_FORMAT_WAV);
    const std::size_t sizeOffset = wav.find("data") + 4;
    for (const char* size : {"\xFF\xFF\xFF\xFF", "\xFC\xEF\xFF\x7F", "\xFF\xFF\xFF\x7F"}) {
        EXPECT_FALSE(sampleExtent(chunksOf(patched(wav, sizeOffset, size))).isTruncated());
    }
    EXPECT_TRUE(sampleExtent(chunksOf(patched(wav, sizeOffset, "\xFF\xFF\xFF\x6F"))).isTruncated());
    const std::string caf = soundBytes(SF_FORMAT_CAF);
    EXPECT_FALSE(
        sampleExtent(chunksOf(patched(caf, caf.find("data") + 4, std::string(8, '\xFF')))).isTruncated());
}

TEST_F(ContainerChunksTest, RecognisesTheFamilies) {
    EXPECT_EQ(chunksOf(soundBytes(SF_FORMAT_WAV)).family, ChunkFamily::kRiff);
    EXPECT_EQ(chunksOf(soundBytes(SF_FORMAT_RF64)).family, ChunkFamily::kRiff);
    EXPECT_EQ(chunksOf(soundBytes(SF_FORMAT_AIFF)).family, ChunkFamily::kAiff);
    EXPECT_EQ(chunksOf(soundBytes(SF_FORMAT_CAF)).family, ChunkFamily::kCaf);
    EXPECT_EQ(chunksOf(soundBytes(SF_FORMAT_W64)).family, ChunkFamily::kNone);
    EXPECT_EQ(chunksOf(soundBytes(SF_FORMAT_WAV | SF_ENDIAN_BIG)).family, ChunkFamily::kNone);
}

TEST_F(ContainerChunksTest, OddChunksArePadded) {
    const std::string bytes = std::string("RIFF\x24\0\0\0WAVE", 12) + std::string("odd \3\0\0\0abc\0", 12) +
                              std::string("even\2\0\0\0de", 10);
    const ContainerChunks found = chunksOf(bytes);
    ASSERT_EQ(found.chunks.size(), 2U);
    EXPECT_EQ(found.chunks[1].id, "even");
    EXPECT_EQ(found.chunks[1].dataOffset, 32);
    EXPECT_EQ(found.chunks[1].dataBytes, 2);
}

TEST_F(ContainerChunksTest, OtherFilesHaveNone) {
    for (const std::string& bytes :
         {std::string(), std::string("RIF"), std::string("text that is no audio"), std::string(1000, '\0')}) {
        EXPECT_THAT(chunksOf(bytes).chunks, IsEmpty());
        EXPECT_FALSE(sampleExtent(chunksOf(bytes)).isTruncated());
    }
}

// Whatever a damaged header holds, reading ends and stays within the file.
TEST_F(ContainerChunksTest, DamagedSizesEndTheReading) {
    for (const int major : std::initializer_list<int>{SF_FORMAT_WAV, SF_FORMAT_RF64, SF_FORMAT_W64,
                                                      SF_FORMAT_AIFF, SF_FORMAT_CAF}) {
        const std::string bytes = soundBytes(major);
        for (std::size_t offset = 4; offset + 8 < std::min<std::size_t>(bytes.size(), 120); ++offset) {
            for (const char fill : {'\0', '\x7F', '\x80', '\xFF'}) {
                EXPECT_LE(chunksOf(patched(bytes, offset, std::string(8, fill))).chunks.size(), bytes.size());
            }
        }
    }
}

} // namespace
} // namespace varno::test
