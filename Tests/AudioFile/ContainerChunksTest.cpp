#include "AudioFile/ContainerChunks.h"

#include "Files/Transfer.h"
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

    SampleExtent samplesOf(const std::string& bytes) {
        const std::optional<SampleExtent> samples = chunksOf(bytes).samples;
        EXPECT_TRUE(samples.has_value());
        return samples.value_or(SampleExtent{});
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
        const std::string bytes = soundBytes(major);
        const SampleExtent extent = samplesOf(bytes);
        EXPECT_EQ(extent.limit, 200) << std::hex << major;
        EXPECT_EQ(extent.present, 200) << std::hex << major;
        EXPECT_TRUE(extent.isStated);
        EXPECT_FALSE(extent.isTruncated());
        EXPECT_EQ(bytes.size(), static_cast<std::size_t>(extent.offset + 200)) << std::hex << major;
    }
}

TEST_F(ContainerChunksTest, ReportsWhatTheHeaderOfACutOffFileStates) {
    for (const int major : std::initializer_list<int>{SF_FORMAT_WAV, SF_FORMAT_RF64, SF_FORMAT_W64,
                                                      SF_FORMAT_AIFF, SF_FORMAT_CAF, SF_FORMAT_AU}) {
        const std::string bytes = soundBytes(major);
        const SampleExtent extent = samplesOf(bytes.substr(0, bytes.size() - 150));
        EXPECT_EQ(extent.limit, 200) << std::hex << major;
        EXPECT_EQ(extent.present, 50) << std::hex << major;
        EXPECT_TRUE(extent.isTruncated());
    }
}

TEST_F(ContainerChunksTest, AllOnesStateNothing) {
    const std::string wav = soundBytes(SF_FORMAT_WAV);
    const SampleExtent extent = samplesOf(patched(wav, wav.find("data") + 4, "\xFF\xFF\xFF\xFF"));
    EXPECT_FALSE(extent.isStated);
    EXPECT_GT(extent.limit, std::int64_t{1} << 40);
    EXPECT_EQ(extent.present, 200);
}

TEST_F(ContainerChunksTest, LargeSizesAreABound) {
    const std::string wav = soundBytes(SF_FORMAT_WAV);
    const std::size_t sizeOffset = wav.find("data") + 4;
    const SampleExtent least = samplesOf(patched(wav, sizeOffset, std::string("\0\0\0\x7F", 4)));
    EXPECT_FALSE(least.isStated);
    EXPECT_EQ(least.limit, 0x7F000000);
    EXPECT_EQ(least.present, 200);
    const SampleExtent most = samplesOf(patched(wav, sizeOffset, "\xFE\xFF\xFF\xFF"));
    EXPECT_FALSE(most.isStated);
    EXPECT_EQ(most.limit, 0xFFFFFFFE);
    const SampleExtent smaller = samplesOf(patched(wav, sizeOffset, "\xFF\xFF\xFF\x7E"));
    EXPECT_TRUE(smaller.isTruncated());
    EXPECT_EQ(smaller.limit, 0x7EFFFFFF);
}

// AU has a value of its own for an unknown size; every other is exact.
TEST_F(ContainerChunksTest, LargeSizesOfAuAreExact) {
    const std::string au = soundBytes(SF_FORMAT_AU);
    EXPECT_TRUE(samplesOf(patched(au, 8, std::string("\x7F\0\0\0", 4))).isTruncated());
    EXPECT_FALSE(samplesOf(patched(au, 8, "\xFF\xFF\xFF\xFF")).isStated);
}

TEST_F(ContainerChunksTest, SamplesOfAuBeginBehindItsHeader) {
    const std::string au = soundBytes(SF_FORMAT_AU);
    EXPECT_FALSE(chunksOf(patched(au, 4, std::string("\0\0\0\x17\xFF\xFF\xFF\xFF", 8))).samples);
    EXPECT_TRUE(chunksOf(patched(au, 4, std::string("\0\0\0\x18\xFF\xFF\xFF\xFF", 8))).samples);
}

// Behind samples of size 0: nothing, a chunk, or samples.
TEST_F(ContainerChunksTest, WhatFollowsAnEmptyChunkDecides) {
    const std::string wav = soundBytes(SF_FORMAT_WAV);
    const std::size_t samples = wav.find("data") + 8;
    const std::string empty = patched(wav, samples - 4, std::string(4, '\0')).substr(0, samples);
    const std::string chunk("LIST\4\0\0\0INFO", 12);
    for (const std::string& after : {std::string(), chunk, chunk + chunk}) {
        const SampleExtent extent = samplesOf(empty + after);
        EXPECT_TRUE(extent.isStated) << after.size();
        EXPECT_EQ(extent.limit, 0) << after.size();
    }
    EXPECT_EQ(chunksOf(empty + chunk).chunks.back().id, "LIST");
    // Bytes without a name, a name with a size beyond the end, and a piece of a chunk's header.
    for (const std::string& after : {std::string(100, '\1'), "LIST" + std::string(96, '\x11'),
                                     chunk.substr(0, 11), chunk.substr(0, 6)}) {
        const SampleExtent extent = samplesOf(empty + after);
        EXPECT_FALSE(extent.isStated) << after.size();
        EXPECT_EQ(extent.present, static_cast<std::int64_t>(after.size()));
    }
}

TEST_F(ContainerChunksTest, Rf64HasItsSizeInItsFirstChunk) {
    const std::string rf64 = soundBytes(SF_FORMAT_RF64);
    const std::size_t sizeOffset = rf64.find("ds64") + 16;
    EXPECT_EQ(samplesOf(patched(rf64, sizeOffset, std::string("\x90\0\0\0\0\0\0\0", 8))).limit, 0x90);
    EXPECT_FALSE(samplesOf(patched(rf64, sizeOffset, std::string(8, '\xFF'))).isStated);
    EXPECT_FALSE(samplesOf(patched(rf64, sizeOffset, std::string(8, '\0'))).isStated);
    // Of 64 bits, a size of 2 GB is nothing special.
    EXPECT_TRUE(samplesOf(patched(rf64, sizeOffset, std::string("\0\0\0\x7F\0\0\0\0", 8))).isTruncated());
}

// A pipe is read piece by piece.
TEST_F(ContainerChunksTest, ReportsHowManyBytesItNeeds) {
    for (const int major :
         std::initializer_list<int>{SF_FORMAT_WAV, SF_FORMAT_WAVEX, SF_FORMAT_RF64, SF_FORMAT_W64,
                                    SF_FORMAT_AIFF, SF_FORMAT_CAF, SF_FORMAT_AU}) {
        const std::string bytes = soundBytes(major);
        const auto offset = static_cast<std::size_t>(samplesOf(bytes).offset);
        std::size_t have = 0;
        for (ContainerChunks found = chunksOf(""); found.wantedBytes > 0;
             found = chunksOf(bytes.substr(0, have))) {
            ASSERT_GT(found.wantedBytes, static_cast<std::int64_t>(have)) << std::hex << major;
            have = static_cast<std::size_t>(found.wantedBytes);
        }
        EXPECT_LE(have, offset) << std::hex << major; // not one sample
        EXPECT_EQ(samplesOf(bytes.substr(0, have)).limit, 200) << std::hex << major;
    }
    EXPECT_EQ(chunksOf("fLaC, or anything else").wantedBytes, 0);
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
        EXPECT_FALSE(chunksOf(bytes).samples);
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
