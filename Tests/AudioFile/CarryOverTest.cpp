#include "AudioFile/CarryOver.h"

#include "CommandLine/Interruption.h"
#include "Tests/Apps/varno/Support/ChildProcess.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Apps/varno/Support/SoundFiles.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstddef>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <sndfile.h>
#include <sys/resource.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr std::size_t kSourceFrames = 48'000;

// Runs Debian's interpreter, which has mutagen.
std::string tags(const std::string& command, const std::string& path) {
    const Outcome outcome = test::run({"/usr/bin/python3", VARNO_TAGS_SCRIPT, command, path});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return outcome.out;
}

class CarryOverTest : public testing::Test {
protected:
    std::string path(const std::string& name) const { return mFolder / name; }

    // A file of one second without tags.
    void makePlain(const std::string& name) {
        const std::string extension = name.substr(name.rfind('.'));
        if (extension == ".mp3") {
            writeSound(path(name),
                       {SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 1, 48'000, {}, testReals(kSourceFrames)});
            return;
        }
        writeSound(path("plain.wav"), {kWav16, 1, 48'000, testIntegers(16, kSourceFrames), {}});
        Copy{.options = {.overwrite = Overwrite::kReplace}}.run(path("plain.wav"), path(name));
    }

    // The same with the texts and the picture of the script.
    void makeTagged(const std::string& name) {
        makePlain(name);
        tags("write", path(name));
    }

    std::vector<std::string> copy(const std::string& from, const std::string& to) {
        return Copy{.options = {.overwrite = Overwrite::kReplace}}.run(path(from), path(to)).leftOut;
    }

    TemporaryFolder mFolder;
};

class CarryOverPairTest : public CarryOverTest,
                          public testing::WithParamInterface<std::tuple<const char*, const char*>> {};

// Nineteen texts, several of them with one key or an unknown one, and a picture: read back by another
// program, each is there, exactly and as often, and the samples are those of a file without tags.
TEST_P(CarryOverPairTest, KeepsEveryTextAndPicture) {
    const auto [from, to] = GetParam();
    const std::string in = std::string("in.") + from;
    const std::string out = std::string("out.") + to;
    makeTagged(in);
    makePlain(std::string("silent.") + from);
    EXPECT_THAT(copy(in, out), IsEmpty());
    copy(std::string("silent.") + from, std::string("silent-out.") + to);
    EXPECT_EQ(tags("read", path(out)), tags("read", path(in)));
    EXPECT_EQ(readReals(path(out)).reals, readReals(path(std::string("silent-out.") + to)).reals);
    const std::string again = std::string("again.") + from;
    if (std::string(from) != "mp3") {
        EXPECT_THAT(copy(out, again), IsEmpty());
        EXPECT_EQ(tags("read", path(again)), tags("read", path(in)));
    }
}

INSTANTIATE_TEST_SUITE_P(Containers, CarryOverPairTest,
                         testing::Combine(testing::Values("flac", "ogg", "opus", "wav", "aiff", "mp3"),
                                          testing::Values("flac", "ogg", "opus", "wav", "aiff")),
                         [](const auto& test) {
                             return std::string(std::get<0>(test.param)) + "To" + std::get<1>(test.param);
                         });

// RF64 is no container of the script: its tags are read in a WAV file made of it.
TEST_F(CarryOverTest, Rf64KeepsEveryTextAndPicture) {
    makeTagged("in.flac");
    EXPECT_THAT(copy("in.flac", "out.rf64"), IsEmpty());
    EXPECT_THAT(copy("out.rf64", "back.wav"), IsEmpty());
    EXPECT_THAT(copy("out.rf64", "back.flac"), IsEmpty());
    EXPECT_EQ(tags("read", path("back.wav")), tags("read", path("in.flac")));
    EXPECT_EQ(tags("read", path("back.flac")), tags("read", path("in.flac")));
}

TEST_F(CarryOverTest, CafKeepsEveryText) {
    makeTagged("in.flac");
    EXPECT_THAT(copy("in.flac", "out.caf"), ElementsAre("OUT: CAF has no place for: 1 picture"));
    EXPECT_THAT(copy("out.caf", "back.flac"), IsEmpty());
    shell("metaflac --remove --block-type=PICTURE " + path("in.flac"));
    EXPECT_EQ(tags("read", path("back.flac")), tags("read", path("in.flac")));
    SF_INFO info{};
    SNDFILE* file = sf_open(path("out.caf").c_str(), SFM_READ, &info);
    EXPECT_STREQ(sf_get_string(file, SF_STR_ALBUM), "Twelve");
    EXPECT_STREQ(sf_get_string(file, SF_STR_COMMENT), "two\nlines");
    sf_close(file);
}

// Order, spelling of keys, empty values and bytes that are no text.
TEST_F(CarryOverTest, BetweenFlacAndOggCommentsStayByteForByte) {
    const XiphComments comments = {
        "zulu=1", "Alpha=2", "zulu=1", "empty=", "latin=\xE9", "no equals sign", "=", "a=b=c"};
    makePlain("in.flac");
    const FileDescriptor file(::open(path("in.flac").c_str(), O_RDWR));
    writeFlacMetadata(file.get(), {comments, {}, {}}, "in.flac");
    for (const auto& [from, to] : {std::pair("in.flac", "a.flac"),
                                   {"a.flac", "b.ogg"},
                                   {"b.ogg", "c.opus"},
                                   {"c.opus", "d.ogg"},
                                   {"d.ogg", "e.flac"}}) {
        EXPECT_THAT(copy(from, to), IsEmpty()) << to;
        const FileMetadata metadata = AudioReader(path(to)).metadata();
        EXPECT_EQ(metadata.flac.comments.empty() ? metadata.comments : metadata.flac.comments, comments)
            << to;
    }
    EXPECT_THAT(copy("e.flac", "out.wav"),
                ElementsAre(HasSubstr("cannot be read: 3 comments (latin, no equals sign)")));
}

class CueSheetTest : public CarryOverTest {
protected:
    void SetUp() override {
        makeTagged("in.flac");
        writeFile(path("in.cue"),
                  "CATALOG 1234567890123\nFILE \"x\" WAVE\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n"
                  "  TRACK 02 AUDIO\n    ISRC ABCDE1234567\n    INDEX 00 00:00:10\n"
                  "    INDEX 01 00:00:20\n");
        shell("metaflac --import-cuesheet-from=" + path("in.cue") + " " + path("in.flac"));
    }

    std::string cueSheet(const std::string& name) {
        return shell("metaflac --list --block-type=CUESHEET " + path(name) + " | tail -n +2");
    }
    std::string blocks(const std::string& name, const std::string& type) {
        return shell("metaflac --list --block-type=" + type + " " + path(name) +
                     " | grep -v -e METADATA -e 'is last' -e vendor -e '^  length'");
    }
};

TEST_F(CueSheetTest, FlacKeepsEveryBlock) {
    shell("head -c 3000 /dev/zero >" + path("data") + " && printf 'TESTxyz' >" + path("app"));
    EXPECT_THAT(copy("in.flac", "out.flac"), IsEmpty());
    for (const char* type : {"VORBIS_COMMENT", "PICTURE", "CUESHEET"}) {
        EXPECT_EQ(blocks("out.flac", type), blocks("in.flac", type)) << type;
    }
    EXPECT_THAT(cueSheet("out.flac"), HasSubstr("ABCDE1234567"));
    shell("flac --test --silent --warnings-as-errors " + path("out.flac"));
    EXPECT_EQ(readIntegers(path("out.flac")).integers, readIntegers(path("in.flac")).integers);
}

TEST_F(CueSheetTest, OtherContainersReportIt) {
    EXPECT_THAT(copy("in.flac", "out.ogg"), ElementsAre("OUT: Ogg has no place for: the cue sheet"));
    EXPECT_THAT(copy("in.flac", "out.wav"), ElementsAre("OUT: WAV has no place for: the cue sheet"));
    EXPECT_THAT(copy("in.flac", "out.aiff"), ElementsAre("OUT: AIFF has no place for: the cue sheet"));
    EXPECT_THAT(copy("in.flac", "out.rf64"), ElementsAre("OUT: RF64 has no place for: the cue sheet"));
    EXPECT_THAT(copy("in.flac", "out.caf"),
                ElementsAre("OUT: CAF has no place for: 1 picture, the cue sheet"));
    const std::string rest =
        " has no place for: 19 comments (TITLE, ARTIST, ALBUM, DATE, GENRE, TRACKNUMBER, "
        "COMMENT, COMPOSER and others), 1 picture, the cue sheet";
    EXPECT_THAT(copy("in.flac", "out.au"), ElementsAre("OUT: AU" + rest));
    EXPECT_THAT(copy("in.flac", "out.w64"), ElementsAre("OUT: W64" + rest));
}

TEST_F(CueSheetTest, EndsWhereALongerOutputEnds) {
    FileMetadata metadata = AudioReader(path("in.flac")).metadata();
    AudioFormat output;
    output.container = Container::kFlac;
    for (const std::int64_t frames : {std::int64_t{kSourceFrames}, std::int64_t{kSourceFrames} + 100}) {
        output.frames = frames;
        const FlacMetadata carried = carryOver(metadata, output).flac;
        makePlain("out.flac");
        const FileDescriptor file(::open(path("out.flac").c_str(), O_RDWR));
        writeFlacMetadata(file.get(), carried, "out.flac");
        EXPECT_THAT(cueSheet("out.flac"), HasSubstr("offset: " + std::to_string(frames) + "\n"));
    }
}

TEST_F(CarryOverTest, BinaryItemsOfATagStayBetweenContainersWithId3AndAreReportedElsewhere) {
    makeTagged("in.mp3");
    shell("/usr/bin/python3 -c 'import mutagen.id3 as i,sys; t=i.ID3(sys.argv[1]); "
          "t.add(i.PRIV(owner=\"me\",data=bytes(9))); t.add(i.GEOB(desc=\"g\",data=bytes(9))); t.save()' " +
          path("in.mp3"));
    EXPECT_THAT(copy("in.mp3", "out.aiff"), IsEmpty());
    EXPECT_EQ(tags("read", path("out.aiff")), tags("read", path("in.mp3")));
    EXPECT_THAT(copy("in.mp3", "out.flac"), ElementsAre(HasSubstr("FLAC has no place for: 2 tag items (")));
}

TEST_F(CarryOverTest, TagsAtTheEndOfAnMp3FileAreRead) {
    makePlain("in.mp3");
    std::string last = "TAGold title";
    last.resize(127, '\0');
    writeFile(path("in.mp3"), readFile(path("in.mp3")) + last + '\x08');
    EXPECT_THAT(copy("in.mp3", "out.flac"), IsEmpty());
    EXPECT_EQ(shell("metaflac --show-tag=TITLE --show-tag=GENRE " + path("out.flac")),
              "TITLE=old title\nGENRE=Jazz\n");
}

TEST_F(CarryOverTest, TextsOfRiffAndAiffAreWrittenInTheirOwnFormToo) {
    makeTagged("in.flac");
    copy("in.flac", "out.wav");
    copy("in.flac", "out.aiff");
    EXPECT_THAT(readFile(path("out.wav")), HasSubstr("IART\x0E" + std::string(3, '\0') + "First; Second"));
    EXPECT_THAT(readFile(path("out.aiff")), HasSubstr("AUTH" + std::string(3, '\0') +
                                                      "\x0D"
                                                      "First; Second"));
    makePlain("few.flac");
    shell("metaflac --set-tag=TITLE=one --set-tag=COMMENT=two " + path("few.flac"));
    copy("few.flac", "few.wav");
    copy("few.flac", "few.aiff");
    EXPECT_THAT(readFile(path("few.wav")), Not(HasSubstr("id3 ")));
    EXPECT_THAT(readFile(path("few.aiff")), Not(HasSubstr("ID3 ")));
    copy("few.wav", "back.flac");
    EXPECT_EQ(shell("metaflac --export-tags-to=- " + path("back.flac")), "COMMENT=two\nTITLE=one\n");
}

TEST_F(CarryOverTest, TheAnnotationOfAnAuFileIsAComment) {
    const std::string samples(200, '\x01');
    writeFile(path("in.au"), std::string(".snd\0\0\0\x28\0\0\0\xC8\0\0\0\x03\0\0\xBB\x80\0\0\0\x01", 24) +
                                 std::string("a note\0\0\0\0\0\0\0\0\0\0", 16) + samples);
    EXPECT_THAT(copy("in.au", "out.flac"), IsEmpty());
    EXPECT_EQ(shell("metaflac --export-tags-to=- " + path("out.flac")), "COMMENT=a note\n");
    EXPECT_THAT(copy("in.au", "out.au"), ElementsAre("OUT: AU has no place for: 1 comment (COMMENT)"));
}

TEST_F(CarryOverTest, OlderTextThatIsNoUtf8IsTakenAsLatin1) {
    makePlain("in.wav");
    const std::string bytes = readFile(path("in.wav"));
    const FileDescriptor file(::open(path("in.wav").c_str(), O_RDWR));
    appendChunks(file.get(), ChunkFamily::kRiff,
                 {makeChunk("LIST", std::string("INFOINAM\x04\0\0\0caf\xE9", 16))}, "in");
    EXPECT_THAT(copy("in.wav", "out.flac"), IsEmpty());
    EXPECT_EQ(shell("metaflac --no-utf8-convert --export-tags-to=- " + path("out.flac")),
              "TITLE=caf\xC3\xA9\n");
}

TEST_F(CarryOverTest, MarkersReportTextsBesideTheirNames) {
    makePlain("in.wav");
    std::vector<CarriedChunk> chunks = cueChunks(ChunkFamily::kRiff, {{1, 10, "verse"}});
    const std::string note =
        std::string(bytesOf(chunks[1])) + chunkBytes(ChunkFamily::kRiff, "note", "\1\0\0\0hi");
    chunks[1] = makeChunk("LIST", note);
    const FileDescriptor file(::open(path("in.wav").c_str(), O_RDWR));
    appendChunks(file.get(), ChunkFamily::kRiff, chunks, "in");
    EXPECT_THAT(copy("in.wav", "out.wav"), IsEmpty());
    EXPECT_THAT(copy("in.wav", "out.aiff"),
                ElementsAre("OUT: AIFF has no place for: 1 text of cue points (note)"));
}

// The disk is full only for the tags.
TEST_F(CarryOverTest, ADiskThatIsFullForTheTagsLeavesNothing) {
    makeTagged("in.flac");
    for (const char* name : {"out.flac", "out.ogg", "out.wav", "out.aiff"}) {
        copy("in.flac", std::string("whole-") + name);
        const auto bytes = std::filesystem::file_size(path(std::string("whole-") + name));
        const int status = inChildProcess([&] {
            catchInterruptions();
            const rlimit most{bytes - 1000, bytes - 1000};
            ::setrlimit(RLIMIT_FSIZE, &most);
            EXPECT_EQ(errorText(kExitWorkFailed, [&] { copy("in.flac", name); }),
                      path(name) + ": cannot be written: File too large");
            return testing::Test::HasFailure() ? 1 : 0;
        });
        EXPECT_EQ(status, 0) << name;
        EXPECT_FALSE(std::filesystem::exists(path(name))) << name;
    }
    EXPECT_THAT(mFolder.listing(), Not(HasSubstr(".part")));
}

} // namespace
} // namespace varno::test
