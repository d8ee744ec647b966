#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <sndfile.h>

namespace varno::test {
namespace {

using testing::HasSubstr;

// What a render does with what an input holds beside its samples.
class RenderMetadata : public ProgramTest {
protected:
    void SetUp() override {
        makeMusic("in.flac", SF_FORMAT_FLAC | SF_FORMAT_PCM_16, 1, 4800);
        writeFile(path("in.cue"), "FILE \"x\" WAVE\n  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n");
        writeFile(path("cover"), std::string("\x89PNG\r\n\x1A\n", 8) + std::string(100, 'x'));
        shell("cd '" + mFolder.path().string() +
              "' && metaflac --import-cuesheet-from=in.cue --set-tag=ARTIST=one --set-tag=ARTIST=two "
              "--set-tag=DATE=2024 --import-picture-from='3|image/png|front|8x8x24|cover' in.flac");
    }

    std::string tagsOf(const std::string& name) const {
        return shell("metaflac --export-tags-to=- '" + path(name) + "'");
    }
};

constexpr const char* kWarning =
    "varno: warning: out.au: AU has no place for: 3 comments (ARTIST, DATE), 1 picture, "
    "the cue sheet\n";

TEST_F(RenderMetadata, NamesOnOneLineWhatTheOutputCannotHold) {
    const Outcome outcome = varno({"render", "in.flac", "out.au"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, kWarning);
}

TEST_F(RenderMetadata, NamesItBeforeAnythingIsWritten) {
    EXPECT_EQ(varno({"render", "--dry-run", "in.flac", "out.au"}).err, kWarning);
}

TEST_F(RenderMetadata, NamesItInJsonAndNotWhenQuiet) {
    EXPECT_THAT(varno({"render", "--json", "in.flac", "out.au"}).out,
                HasSubstr("AU has no place for: 3 comments (ARTIST, DATE), 1 picture, the cue sheet"));
    EXPECT_EQ(varno({"render", "--force", "--quiet", "in.flac", "out.au"}).err, "");
}

TEST_F(RenderMetadata, KeepsEverythingBetweenFlacFilesWithoutAWord) {
    varnoOut({"render", "in.flac", "out.flac"});
    const std::string list = " | grep -v -e METADATA -e 'is last' -e '^  length' -e vendor";
    const auto blocks = [&](const std::string& name) {
        return shell("metaflac --list --block-type=VORBIS_COMMENT,PICTURE,CUESHEET '" + path(name) + "'" +
                     list);
    };
    EXPECT_EQ(blocks("out.flac"), blocks("in.flac"));
    EXPECT_THAT(blocks("out.flac"), HasSubstr("comment[1]: ARTIST=two"));
    EXPECT_THAT(blocks("out.flac"), HasSubstr("description: front"));
    EXPECT_THAT(blocks("out.flac"), HasSubstr("number of tracks: 2"));
}

TEST_F(RenderMetadata, DoesNotChangeASample) {
    shell("cp '" + path("in.flac") + "' '" + path("bare.flac") + "' && metaflac --remove-all '" +
          path("bare.flac") + "'");
    for (const char* extension : {".flac", ".wav", ".aiff", ".ogg", ".caf"}) {
        varno({"render", "--quiet", "in.flac", std::string("out") + extension});
        varno({"render", "--quiet", "bare.flac", std::string("bare-out") + extension});
        EXPECT_EQ(readReals(path(std::string("out") + extension)).reals,
                  readReals(path(std::string("bare-out") + extension)).reals)
            << extension;
    }
}

TEST_F(RenderMetadata, PassesThroughPipes) {
    Surroundings surroundings;
    surroundings.folder = mFolder.path();
    surroundings.input = readFile(path("in.flac"));
    const Outcome piped = runVarno({"render", "--quiet", "-", "-"}, surroundings);
    ASSERT_EQ(piped.status, 0);
    writeFile(path("piped.wav"), piped.out);
    varnoOut({"render", "piped.wav", "back.flac"});
    EXPECT_EQ(tagsOf("back.flac"), "ARTIST=one\nARTIST=two\nDATE=2024\n");
    EXPECT_THAT(shell("metaflac --list --block-type=PICTURE '" + path("back.flac") + "'"),
                HasSubstr("description: front"));
}

TEST_F(RenderMetadata, KeysOfAFileCannotControlTheTerminal) {
    shell("metaflac --remove-all '" + path("in.flac") + "'");
    shell("metaflac --set-tag=EVIL01=x '" + path("in.flac") + "'");
    std::string bytes = readFile(path("in.flac"));
    bytes.replace(bytes.find("EVIL01"), 6, "\x1B[31m\n");
    writeFile(path("in.flac"), bytes);
    EXPECT_EQ(
        varno({"render", "in.flac", "out.wav"}).err,
        "varno: warning: in.flac: not carried over, since it cannot be read: 1 comment (\\u001b[31m\\n)\n");
}

} // namespace
} // namespace varno::test
