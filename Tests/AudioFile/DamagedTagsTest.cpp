#include "AudioFile/CarryOver.h"
#include "AudioFile/OggPages.h"
#include "AudioFile/OggTags.h"
#include "Files/FileError.h"
#include "Tests/Apps/varno/Support/SoundFiles.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/TestRun.h"

#include <algorithm>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <random>

namespace varno::test {
namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr unsigned kSeed = 4711;
constexpr int kDamagedFiles = 60; // per container, times testScale()

class DamagedTagsTest : public testing::Test {
protected:
    std::string path(const std::string& name) const { return mFolder / name; }

    std::vector<std::string> copy(const std::string& from, const std::string& to) {
        return Copy{.options = {.overwrite = Overwrite::kReplace}}.run(path(from), path(to)).leftOut;
    }

    // Comments, a picture, and in FLAC a cue sheet; before the samples or, in WAV and AIFF, after them.
    void makeTagged(const std::string& name) {
        writeSound(path("plain.flac"),
                   {SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 1, 48'000, testIntegers(16, 2000), {}});
        const FileDescriptor file(::open(path("plain.flac").c_str(), O_RDWR));
        const Picture cover{3, "image/png", "cover", 0, 0, 0, 0, std::string(500, '\x42')};
        writeFlacMetadata(file.get(), {{"TITLE=one", "ARTIST=a", "ARTIST=b", "X=y"}, {cover}, {}},
                          "plain.flac");
        copy("plain.flac", name);
    }

    // Of the pages of an Ogg file, so that the damage arrives; where a page has no size any more, it stays.
    void correctChecksums(const std::string& name) {
        const FileDescriptor file(::open(path(name).c_str(), O_RDWR));
        if (readFile(path(name)).starts_with("OggS")) {
            try {
                setOggSerial(file.get(), name);
            } catch (const FileError&) {
            }
        }
    }

    TemporaryFolder mFolder;
};

class RandomlyDamagedTagsTest : public DamagedTagsTest, public testing::WithParamInterface<const char*> {};

// Bytes anywhere in the tags: a render ends, with the samples as they are or with the message of a file that
// libsndfile refuses too.
TEST_P(RandomlyDamagedTagsTest, NeverEndTheProgram) {
    const std::string name = std::string("in.") + GetParam();
    makeTagged(name);
    const std::string whole = readFile(path(name));
    const std::size_t first = whole.find("TITLE") == std::string::npos ? 12 : 36;
    const std::size_t most = std::min<std::size_t>(whole.size(), 1200);
    const bool isAtEnd = std::string(GetParam()) == "wav" || std::string(GetParam()) == "aiff";
    const std::size_t offset = isAtEnd ? whole.size() - most : first;
    std::mt19937 random(kSeed);
    std::uniform_int_distribution<std::size_t> place(offset, isAtEnd ? whole.size() - 1 : most - 1);
    std::uniform_int_distribution<int> value(0, 255);
    int rendered = 0;
    for (int i = 0; i < kDamagedFiles * testScale(); ++i) {
        std::string bytes = whole;
        for (int hits = 1 + i % 4; hits > 0; --hits) {
            bytes[place(random)] = static_cast<char>(i % 3 == 0 ? 0xFF : value(random));
        }
        writeFile(path(name), bytes);
        correctChecksums(name);
        for (const char* out : {"out.flac", "out.wav", "out.au"}) {
            try {
                copy(name, out);
                ++rendered;
            } catch (const FileError&) {
            }
        }
    }
    EXPECT_GT(rendered, 0);
}

// Not Vorbis, whose comments are those of Opus: libsndfile 1.2 leaks memory where it refuses such a file.
INSTANTIATE_TEST_SUITE_P(Containers, RandomlyDamagedTagsTest,
                         testing::Values("flac", "opus", "wav", "aiff", "caf"));

TEST_F(DamagedTagsTest, MoreCommentsThanFlacDecodersTakeLeaveTheSamples) {
    makeTagged("in.ogg");
    XiphComments comments;
    for (int i = 0; i < 150'000; ++i) {
        comments.push_back("N=" + std::to_string(i));
    }
    const FileDescriptor file(::open(path("plain.flac").c_str(), O_RDWR));
    writeFlacMetadata(file.get(), {comments, {}, {}}, "plain.flac");
    EXPECT_THAT(copy("plain.flac", "out.flac"),
                ElementsAre("OUT: FLAC has no place for: 50000 comments (N)"));
    shell("flac --test --silent " + path("out.flac"));
    EXPECT_EQ(readIntegers(path("out.flac")).integers, testIntegers(16, 2000));
    EXPECT_THAT(copy("plain.flac", "out.au"),
                ElementsAre("OUT: AU has no place for: 150000 comments (N), 1 picture"));
}

TEST_F(DamagedTagsTest, ADamagedBlockOfFlacLeavesTheSamples) {
    makeTagged("in.flac");
    std::string bytes = readFile(path("in.flac"));
    const std::size_t count = bytes.find("TITLE=one") - 8; // the number of comments, 32 bits
    bytes.replace(count, 4, std::string(4, '\xFF'));
    writeFile(path("damaged.flac"), bytes);
    // libFLAC 1.5 reads no other block of such a file either.
    const std::string refused = "IN: not carried over, since it cannot be read: ";
    EXPECT_THAT(copy("damaged.flac", "out.flac"),
                ElementsAre(AnyOf(refused + "1 comment", refused + "the tags")));
    EXPECT_EQ(readIntegers(path("out.flac")).integers, testIntegers(16, 2000));
}

TEST_F(DamagedTagsTest, MetadataBeyondTheBoundIsNotReadAndReported) {
    makeTagged("in.flac");
    const Picture large{3, "image/png", "", 0, 0, 0, 0, std::string(15 << 20, '\x42')};
    const FileDescriptor file(::open(path("in.flac").c_str(), O_RDWR));
    writeFlacMetadata(file.get(), {{"A=1"}, std::vector<Picture>(5, large), {}}, "in.flac");
    EXPECT_THAT(copy("in.flac", "out.ogg"),
                ElementsAre("IN: not carried over, beyond 64 MiB of metadata: the tags"));
    EXPECT_EQ(AudioReader(path("out.ogg")).format().frames, 2000);
}

TEST_F(DamagedTagsTest, OggCommentsBeyondTheBoundAreNotReadAndReported) {
    makeTagged("in.ogg");
    const FileDescriptor file(::open(path("in.ogg").c_str(), O_RDWR));
    const XiphComments comments = {"A=1", "B=" + std::string(200'000, 'x')};
    writeOggComments(file.get(), comments, "in.ogg");
    LeftOutList leftOut;
    EXPECT_EQ(readOggComments(file.get(), 1 << 20, leftOut), comments);
    EXPECT_THAT(leftOut, IsEmpty());
    EXPECT_THAT(readOggComments(file.get(), 100'000, leftOut), IsEmpty());
    ASSERT_EQ(leftOut.size(), 1U);
    EXPECT_EQ(leftOut[0].reason, LeftOutReason::kTooLarge);
}

TEST_F(DamagedTagsTest, AnId3TagBeyondTheBoundIsNotReadAndReported) {
    writeSound(path("plain.mp3"),
               {SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 1, 48'000, {}, testReals(5000)});
    constexpr std::size_t kBytes = std::size_t{65} << 20;
    std::string tag = std::string("ID3\x04\0\0", 6);
    for (int shift = 21; shift >= 0; shift -= 7) {
        tag += static_cast<char>(kBytes >> shift & 0x7F);
    }
    writeFile(path("in.mp3"), tag + std::string(kBytes, '\0') + readFile(path("plain.mp3")));
    EXPECT_THAT(copy("in.mp3", "out.flac"),
                ElementsAre("IN: not carried over, beyond 64 MiB of metadata: the tags"));
    copy("plain.mp3", "plain.flac");
    EXPECT_EQ(readIntegers(path("out.flac")).integers, readIntegers(path("plain.flac")).integers);
}

TEST_F(DamagedTagsTest, APictureTooLargeForFlacIsReported) {
    makeTagged("in.ogg");
    const Picture large{3, "image/png", "", 0, 0, 0, 0, std::string(17 << 20, '\x42')};
    FileMetadata metadata = AudioReader(path("in.ogg")).metadata();
    metadata.comments = {commentOfPicture(large), "A=1"};
    AudioFormat output;
    output.container = Container::kFlac;
    const CarriedOver carried = carryOver(metadata, output);
    EXPECT_THAT(carried.flac.pictures, IsEmpty());
    EXPECT_THAT(carried.flac.comments, ElementsAre("A=1"));
    ASSERT_EQ(carried.leftOut.size(), 1U);
    EXPECT_EQ(carried.leftOut[0].kind, LeftOutKind::kPicture);
}

} // namespace
} // namespace varno::test
