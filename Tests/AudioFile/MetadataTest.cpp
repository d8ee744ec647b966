#include "AudioFile/Metadata.h"

#include "Files/Transfer.h"
#include "Tests/Apps/varno/Support/SoundFiles.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <map>
#include <sndfile.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

CarriedChunk chunk(const std::string& id, const std::string& data) {
    return {id, {data.begin(), data.end()}};
}

std::map<std::string, std::string> byId(const std::vector<CarriedChunk>& chunks) {
    std::map<std::string, std::string> found;
    for (const CarriedChunk& one : chunks) {
        found[one.id] = std::string(one.data.begin(), one.data.end());
    }
    return found;
}

class CarriedChunksTest : public testing::Test {
protected:
    // A mono 16-bit file of 100 frames with these chunks at its end.
    std::string makeFile(const std::string& name, int major, const std::vector<CarriedChunk>& chunks) {
        std::string path = mFolder / name;
        writeSound(path, {major | SF_FORMAT_PCM_16, 1, 48'000, testIntegers(16, 100), {}});
        const FileDescriptor file(::open(path.c_str(), O_RDWR));
        const ChunkFamily family = readContainerChunks(file.get()).family;
        appendChunks(file.get(), family, chunks, path);
        return path;
    }

    TemporaryFolder mFolder;
};

struct FamilyCase {
    const char* name;
    int major;
    std::vector<const char*> ids;
};

class CarriedChunksFamilyTest : public CarriedChunksTest, public testing::WithParamInterface<FamilyCase> {};

// Odd and even sizes, bytes of many values: the chunks of another program are copied byte for byte, also
// twice.
TEST_P(CarriedChunksFamilyTest, ComeBackByteForByteThroughEveryCopy) {
    std::vector<CarriedChunk> chunks;
    std::string data;
    for (const char* id : GetParam().ids) {
        data += static_cast<char>(0xF0 + data.size());
        chunks.push_back(
            chunk(id, std::string(id) == "LIST" ? std::string("INFOISFT\6\0\0\0Reaper", 18) : data));
    }
    const std::string in = makeFile("in", GetParam().major, chunks);
    const std::string extension = GetParam().name;
    const std::string once = mFolder / ("once." + extension);
    const std::string twice = mFolder / ("twice." + extension);
    EXPECT_THAT(Copy().run(in, once).leftOut, IsEmpty());
    EXPECT_THAT(Copy().run(once, twice).leftOut, IsEmpty());
    EXPECT_EQ(byId(AudioReader(once).metadata().chunks), byId(chunks));
    EXPECT_TRUE(readFile(twice) == readFile(once));
    EXPECT_EQ(readIntegers(once).integers, readIntegers(in).integers);
}

INSTANTIATE_TEST_SUITE_P(
    Families, CarriedChunksFamilyTest,
    testing::Values(FamilyCase{"wav", SF_FORMAT_WAV, {"iXML", "LIST", "axml", "acid", "DISP", "_PMX"}},
                    FamilyCase{"rf64", SF_FORMAT_RF64, {"iXML", "LIST", "axml", "acid"}},
                    FamilyCase{"aiff", SF_FORMAT_AIFF, {"ANNO", "APPL", "MIDI", "AUTH"}},
                    FamilyCase{"caf", SF_FORMAT_CAF, {"midi", "umid", "strg"}}),
    [](const auto& test) { return test.param.name; });

TEST_F(CarriedChunksTest, LengthsInTheHeaderStayTrue) {
    const std::string wav = makeFile("a.wav", SF_FORMAT_WAV, {chunk("iXML", "odd")});
    const std::string bytes = readFile(wav);
    EXPECT_EQ(static_cast<unsigned char>(bytes[4]) + 256 * static_cast<unsigned char>(bytes[5]),
              bytes.size() - 8);
    const std::string rf64 = readFile(makeFile("a.rf64", SF_FORMAT_RF64, {chunk("iXML", "odd")}));
    EXPECT_EQ(static_cast<unsigned char>(rf64[20]) + 256 * static_cast<unsigned char>(rf64[21]),
              rf64.size() - 8);
    const std::string aiff = readFile(makeFile("a.aiff", SF_FORMAT_AIFF, {chunk("ANNO", "odd")}));
    EXPECT_EQ(static_cast<unsigned char>(aiff[7]) + 256 * static_cast<unsigned char>(aiff[6]),
              aiff.size() - 8);
}

TEST_F(CarriedChunksTest, WhatDescribesTheSamplesIsNotCarriedAndReported) {
    const std::string in = makeFile("in.wav", SF_FORMAT_WAV,
                                    {chunk("levl", "peaks"), chunk("LIST", "wavl"), chunk("iXML", "kept")});
    EXPECT_EQ(byId(AudioReader(in).metadata().chunks),
              (std::map<std::string, std::string>{{"iXML", "kept"}}));
    EXPECT_THAT(
        Copy().run(in, mFolder / "out.wav").leftOut,
        ElementsAre("IN: not carried over, since it describes the samples as they were: 2 chunks (levl, "
                    "LIST)"));
}

TEST_F(CarriedChunksTest, ChunksOfAnyNameAreCarried) {
    const std::vector<CarriedChunk> chunks = {chunk("qrst", "unknown"), chunk("Zz01", ""),
                                              chunk("qrst", "once more"), chunk("LIST", "exifabc")};
    const std::string in = makeFile("in.wav", SF_FORMAT_WAV, chunks);
    for (const char* name : {"out.wav", "out.rf64"}) {
        EXPECT_THAT(Copy().run(in, mFolder / name).leftOut, IsEmpty()) << name;
        EXPECT_EQ(AudioReader(mFolder / name).metadata().chunks, chunks) << name;
    }
    EXPECT_THAT(Copy().run(in, mFolder / "out.caf").leftOut,
                ElementsAre("OUT: CAF has no place for: 4 chunks (qrst, Zz01, LIST exif)"));
}

TEST_F(CarriedChunksTest, OversizedChunksAreLeftOutAndReported) {
    const std::string large(kMostCarriedBytes + 1, 'x');
    const std::string in = makeFile("in.wav", SF_FORMAT_WAV, {chunk("ID3 ", large), chunk("iXML", "kept")});
    EXPECT_THAT(Copy().run(in, mFolder / "out.wav").leftOut,
                ElementsAre("IN: not carried over, beyond 64 MiB of metadata: 1 chunk (ID3 )"));
    EXPECT_EQ(AudioReader(mFolder / "out.wav").metadata().chunks.size(), 1U);
}

TEST_F(CarriedChunksTest, AChunkThatRunsPastTheEndIsNotCarriedAndReported) {
    std::string bytes = readFile(makeFile("in.wav", SF_FORMAT_WAV, {chunk("iXML", "cut off")}));
    bytes.resize(bytes.size() - 4);
    writeFile(mFolder / "cut.wav", bytes);
    EXPECT_THAT(AudioReader(mFolder / "cut.wav").metadata().chunks, IsEmpty());
    EXPECT_THAT(Copy().run(mFolder / "cut.wav", mFolder / "out.wav").leftOut,
                ElementsAre("IN: not carried over, since it cannot be read: 1 chunk (iXML)"));
}

TEST_F(CarriedChunksTest, ChunksOfContainersThatAreNotReadAreReported) {
    const std::string in = makeFile("in.wav", SF_FORMAT_WAV, {});
    std::string bytes = readFile(in);
    Copy().run(in, mFolder / "in.w64");
    // "bext" with the rest of W64's identifiers, and a size of 32 bytes with the header.
    const std::string id("bext\xF3\xAC\xD3\x11\x8C\xD1\0\xC0\x4F\x8E\xDB\x8A", 16);
    writeFile(mFolder / "in.w64",
              readFile(mFolder / "in.w64") + id + std::string("\x20\0\0\0\0\0\0\0", 8) + std::string(8, 'x'));
    EXPECT_THAT(Copy().run(mFolder / "in.w64", mFolder / "out.wav").leftOut,
                ElementsAre("IN: not carried over, since it cannot be read: 1 chunk (bext)"));
}

TEST_F(CarriedChunksTest, MarkersCrossFamiliesWithTheirNames) {
    const std::vector<CuePoint> cues = {{1, 10, "verse"}, {2, 20, ""}, {3, 99, "coda!"}};
    std::string in = makeFile("a.wav", SF_FORMAT_WAV, cueChunks(ChunkFamily::kRiff, cues));
    for (const char* name : {"b.aiff", "c.wav", "d.aiff"}) {
        const std::string out = mFolder / name;
        EXPECT_THAT(Copy().run(in, out).leftOut, IsEmpty()) << name;
        const FileMetadata metadata = AudioReader(out).metadata();
        ASSERT_EQ(metadata.cues.size(), cues.size()) << name;
        for (std::size_t i = 0; i < cues.size(); ++i) {
            EXPECT_EQ(metadata.cues[i].frame, cues[i].frame) << name;
            EXPECT_EQ(metadata.cues[i].name, cues[i].name) << name;
        }
        in = out;
    }
}

TEST_F(CarriedChunksTest, ContainersWithoutMarkersReportIt) {
    const std::string in =
        makeFile("in.wav", SF_FORMAT_WAV, cueChunks(ChunkFamily::kRiff, {{1, 10, "verse"}}));
    for (const char* name : {"out.flac", "out.w64", "out.caf", "out.ogg"}) {
        EXPECT_THAT(Copy().run(in, mFolder / name).leftOut,
                    ElementsAre(testing::EndsWith(" has no place for: 1 cue point (verse)")))
            << name;
    }
}

} // namespace
} // namespace varno::test
