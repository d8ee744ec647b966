#include "Tests/Apps/varno/Support/EditTest.h"
#include "Tests/Support/Eventually.h"

#include <csignal>
#include <filesystem>
#include <sndfile.h>

// Each error of an editor's window: one line that states the reason.

namespace varno::test {
namespace {

namespace fs = std::filesystem;
using testing::StartsWith;

constexpr int kSignalStatus = 128;

class EditErrors : public EditTest {
protected:
    EditErrors() { makeMusic("in.wav", kWav16, 2, 4800); }
};

TEST_F(EditErrors, NoDisplay) {
    const auto refused = [&](const std::string& display) {
        return onlyLine(runVarno({"edit", "--module", "None.aaxplugin", "no.wav"},
                                 {.folder = mFolder.path(), .environment = {"DISPLAY=" + display}}));
    };
    EXPECT_EQ(refused(""),
              "cannot open a display: DISPLAY is not set; expected the name of an X server, such as "
              "\":0\"");
    EXPECT_EQ(refused(":4711"), "cannot open a display: no X server answers at DISPLAY \":4711\"");
}

TEST_F(EditErrors, NoDisplayEndsWithOne) {
    EXPECT_EQ(runVarno({"edit"}, {.environment = {"DISPLAY="}}).status, 1);
}

TEST_F(EditErrors, TheAudioFile) {
    EXPECT_EQ(refusedEdit(1, {"no.wav"}), "no.wav: cannot be read: No such file or directory");
    writeFile(path("text.wav"), "This is a text and no audio at all.\n");
    EXPECT_THAT(refusedEdit(1, {"text.wav"}), StartsWith("text.wav: is no audio that can be read"));
    makeMusic("surround.wav", kWav16, 6, 480);
    EXPECT_EQ(refusedEdit(1, {"surround.wav"}),
              "surround.wav: has 6 channels; expected 1 (mono) or 2 (stereo)");
    makeMusic("slow.wav", kWav16, 2, 480, 8000);
    EXPECT_THAT(refusedEdit(1, {"slow.wav"}), StartsWith("slow.wav: "));
    const std::string whole = readFile(path("in.wav"));
    writeFile(path("cut.wav"), whole.substr(0, whole.size() - 400));
    EXPECT_EQ(refusedEdit(1, {"cut.wav"}),
              "cut.wav: is truncated: 4700 frames found, expected the 4800 that its header promises; "
              "--truncated reads what is there");
    EXPECT_EQ(refusedEdit(2, {"--truncated"}), "option --truncated needs AUDIO, found none");
}

TEST_F(EditErrors, Settings) {
    EXPECT_EQ(refusedEdit(2, {"--set", "Gian=0.5"}),
              "--set Gian=0.5: unknown parameter \"Gian\"; did you mean \"Gain\"?");
    EXPECT_EQ(refusedEdit(2, {"--set", "Gain"}), "--set Gain: expected ID=VALUE, for instance Hot=0.5");
    EXPECT_EQ(refusedEdit(1, {"--state", "no.state"}), "no.state: cannot be read: No such file or directory");
    EXPECT_EQ(refusedEdit(1, {"--preset", "no.txt"}), "no.txt: cannot be read: No such file or directory");
}

TEST_F(EditErrors, Options) {
    EXPECT_EQ(refusedEdit(2, {"--scrnshot", "x.png"}),
              "unknown option \"--scrnshot\" of edit; did you mean \"--screenshot\"?");
    EXPECT_EQ(refusedEdit(2, {"in.wav", "out.wav"}), "unexpected argument \"out.wav\" of edit");
    EXPECT_EQ(refusedEdit(2, {"--scale", "0"}),
              "option --scale: expected a number from 0.5 to 8, found \"0\"");
    EXPECT_EQ(refusedEdit(2, {"--scale", "nan"}),
              "option --scale: expected a number from 0.5 to 8, found \"nan\"");
    EXPECT_EQ(refusedEdit(2, {"--rate", "8000"}),
              "option --rate: expected a number from 16000 to 384000, found \"8000\"");
    EXPECT_EQ(refusedEdit(2, {"--channels", "3"}),
              "option --channels: expected a whole number from 1 to 2, found \"3\"");
    EXPECT_EQ(refusedEdit(2, {"--after", "-1", "--screenshot", "x.png"}),
              "option --after: expected a number from 0 to 3600, found \"-1\"");
    EXPECT_EQ(refusedEdit(2, {"--after", "1"}), "option --after needs --screenshot FILE, found none");
    EXPECT_EQ(refusedEdit(2, {"--rate", "48000", "in.wav"}),
              "option --rate goes without AUDIO, which has a sample rate of its own");
    EXPECT_EQ(refusedEdit(2, {"--channels", "2", "in.wav"}),
              "option --channels goes without AUDIO, which has channels of its own");
    EXPECT_EQ(refusedEdit(2, {"--save-state", "x.state", "--screenshot", "x.png"}),
              "option --save-state goes without --screenshot");
    EXPECT_EQ(mFolder.listing(), "in.wav");
}

// The last --sound counts: these come after the one that every test has.
TEST_F(EditErrors, Sound) {
    EXPECT_EQ(refusedEdit(2, {"--sound", "jack"}), "option --sound needs AUDIO, found none");
    EXPECT_EQ(refusedEdit(2, {"--sound", "loud", "in.wav"}),
              "option --sound: expected auto, jack, rtaudio or off, found \"loud\"");
    EXPECT_EQ(refusedEdit(1, {"--sound", "jack", "in.wav"}),
              "no sound system can be had (JACK: no server \"varno-no-server\" answers)");
}

TEST_F(EditErrors, AFileMayGoUnheard) {
    const auto program = edit({"--sound", "auto", "in.wav"});
    close();
    const auto outcome = program->wait();
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(onlyLine(outcome),
                StartsWith("warning: the file is not played: no sound system can be had (JACK: no "
                           "server \"varno-no-server\" answers; RtAudio: "));
}

TEST_F(EditErrors, OutputsThatMayNotBeReplaced) {
    const auto input = content("in.wav");
    writeFile(path("my.state"), "mine");
    EXPECT_EQ(refusedEdit(1, {"--save-state", "my.state"}),
              "my.state: exists already; expected a new name, or --force to replace it");
    EXPECT_EQ(
        refusedEdit(1, {"--save-state", "no/my.state"}),
        "no/my.state: cannot be written: No such file or directory; expected a folder that exists and can be "
        "written to");
    EXPECT_EQ(
        refusedEdit(1, {"--screenshot", "no/x.png"}),
        "no/x.png: cannot be written: No such file or directory; expected a folder that exists and can be "
        "written to");
    fs::create_symlink("in.wav", path("link"));
    EXPECT_EQ(refusedEdit(2, {"--force", "--save-state", "link", "in.wav"}),
              "link: is the input file in.wav; expected another file");
    EXPECT_EQ(refusedEdit(2, {"--force", "--screenshot", "link", "in.wav"}),
              "link: is the input file in.wav; expected another file");
    ASSERT_EQ(varno({"render", "--save-preset", "p.txt", "--save-state", "s.bin", "in.wav", "o.wav"}).status,
              0);
    EXPECT_EQ(refusedEdit(2, {"--force", "--save-state", "./p.txt", "--preset", "p.txt"}),
              "./p.txt: is the input file p.txt; expected another file");
    EXPECT_EQ(refusedEdit(2, {"--force", "--screenshot", "./s.bin", "--state", "s.bin"}),
              "./s.bin: is the input file s.bin; expected another file");
    EXPECT_EQ(content("in.wav"), input);
    EXPECT_EQ(readFile(path("my.state")), "mine");
}

TEST_F(EditErrors, ModulesThatHaveNothingToShow) {
    EXPECT_EQ(refusedEdit(1, {"--module", "None.aaxplugin"}),
              R"(module "None.aaxplugin": not found, expected a bundle folder (Name.aaxplugin))");
    EXPECT_EQ(refusedEdit(1, {"--module", bundle("Editorless")}),
              R"(the module has no editor for effect "org.example.fixture.gain")");
    EXPECT_EQ(refusedEdit(1, {"--module", bundle("Viewless")}),
              "the module's editor shows no view in an X11 window");
}

TEST_F(EditErrors, ASignalEndsIt) {
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const auto program = edit({"in.wav"});
        kill(program->pid(), signal);
        const auto outcome = program->wait();
        EXPECT_EQ(outcome.status, kSignalStatus + signal);
        EXPECT_EQ(outcome.err, "varno: interrupted\n");
    }
}

TEST_F(EditErrors, ASignalEndsAScreenshotWithoutAPicture) {
    const auto program = edit({"--screenshot", "x.png", "--after", "600"});
    kill(program->pid(), SIGTERM);
    EXPECT_EQ(program->wait().status, kSignalStatus + SIGTERM);
    EXPECT_EQ(mFolder.listing(), "in.wav");
}

TEST_F(EditErrors, TheServerGoes) {
    const auto program = edit({"in.wav"});
    mServer.stop();
    const auto outcome = program->wait();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "varno: the connection to the X server at DISPLAY \"" + mServer.display() + "\" is lost\n");
}

TEST_F(EditErrors, TheWindowIsDestroyed) {
    const auto program = edit({});
    mPerson.destroyWindow(window());
    const auto outcome = program->wait();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "varno: the window was destroyed from outside\n");
}

} // namespace
} // namespace varno::test
