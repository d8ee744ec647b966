#include "Tests/Apps/varno/Support/ProgramTest.h"
#include "Tests/Support/Eventually.h"

#include <filesystem>

// varno without what comes with it, and how it starts other programs.

namespace varno::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::Not;

class LoneProgram : public ProgramTest {
protected:
    LoneProgram() { fs::copy(VARNO_PROGRAM, mProgram); }

    Outcome lone(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), mProgram.string());
        return run(arguments, {.folder = mFolder.path(), .environment = {"VARNO_MODULE="}});
    }
    // A shell script in the place of varno-window.
    void makeWindowProgram(const std::string& script) const {
        const auto path = mFolder.write("varno-window", "#!/bin/sh\n" + script);
        fs::permissions(path, fs::perms::owner_all);
    }

    const fs::path mProgram = mFolder.path() / "varno";
};

TEST_F(LoneProgram, RendersAndShowsParametersWithoutAnythingBesideIt) {
    makeMusic("in.wav", kWavFloat, 2, 4800);
    EXPECT_EQ(lone({"render", "-q", "in.wav", "lone.wav"}).status, 0);
    EXPECT_EQ(varnoOut({"render", "-q", "in.wav", "whole.wav"}), "");
    EXPECT_EQ(content("lone.wav"), content("whole.wav"));
    EXPECT_EQ(lone({"params"}).out, varnoOut({"params"}));
}

TEST_F(LoneProgram, NamesWhatIsMissing) {
    const std::string place = "not found beside the program in " + mFolder.path().string() + "; expected ";
    for (const std::string command : {"edit", "play"}) {
        const auto outcome = lone({command});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(onlyLine(outcome),
                  "varno-window: " + place + "it where the program was built or installed");
    }
    EXPECT_EQ(onlyLine(lone({"validate"})),
              "varno-validate: " + place + "it where the program was built or installed");
    EXPECT_EQ(onlyLine(lone({"describe"})),
              "Varno-S.aaxplugin: " + place + "its path in --module or VARNO_MODULE");
}

TEST_F(LoneProgram, StartsTheWindowProgramWithTheSameWords) {
    makeWindowProgram("printf '<%s>' \"$@\"; cat; exit 7");
    const auto outcome =
        run({mProgram.string(), "edit", "--set", "Gain=-3 dB", "-f", "--scale=2", "--", "-a\nb"},
            {.input = "standard input"});
    EXPECT_EQ(outcome.status, 7);
    EXPECT_EQ(outcome.out, "<edit><--set><Gain=-3 dB><-f><--scale=2><--><-a\nb>standard input");
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(lone({"play", "--mono"}).out, "<play><--mono>");
}

TEST_F(LoneProgram, RemainsTheSameProcess) {
    makeWindowProgram("echo $$; exec sleep 100");
    Subprocess program({mProgram.string(), "play"});
    ASSERT_TRUE(eventually([&] { return program.out().ends_with('\n'); }));
    EXPECT_EQ(program.out(), std::to_string(program.pid()) + '\n');
    program.signal(SIGTERM);
    EXPECT_EQ(program.wait().status, 128 + SIGTERM);
}

TEST_F(LoneProgram, AnswersForTheWindowProgramWhereNoWindowOpens) {
    makeWindowProgram("echo started");
    EXPECT_EQ(lone({"edit", "--help"}).out, varnoOut({"edit", "--help"}));
    const auto refused = lone({"edit", "--no-such"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(onlyLine(refused), HasSubstr("unknown option"));
    EXPECT_EQ(lone({"play", "one"}).status, 2);
}

TEST_F(LoneProgram, ReportsAWindowProgramThatCannotBeStarted) {
    makeWindowProgram("");
    fs::permissions(mFolder.path() / "varno-window", fs::perms::owner_read);
    const auto outcome = lone({"edit"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(onlyLine(outcome), mFolder / "varno-window" + ": cannot be started: Permission denied");
}

TEST(WindowProgram, RunsTheCommandsWithAWindowAlone) {
    const std::string expected =
        "varno: varno edit, play and doctor start this program; expected one of these commands\n";
    for (const std::vector<std::string>& words : {std::vector<std::string>{}, {"render"}, {"--help"}}) {
        std::vector<std::string> all = {VARNO_WINDOW_PROGRAM};
        all.insert(all.end(), words.begin(), words.end());
        const auto outcome = run(all);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.err, expected);
    }
}

TEST(ValidateProgram, RunsItsCommandAlone) {
    for (const std::vector<std::string>& words : {std::vector<std::string>{}, {"render"}, {"--help"}}) {
        std::vector<std::string> all = {VARNO_VALIDATE_PROGRAM};
        all.insert(all.end(), words.begin(), words.end());
        const auto outcome = run(all);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_EQ(outcome.err, "varno: varno validate starts this program; expected that command\n");
    }
}

// The libraries that the loader reports while a command runs.
std::string librariesOf(const std::vector<std::string>& arguments) {
    const auto outcome = runVarno(arguments, {.environment = {"LD_DEBUG=files"}});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.err, HasSubstr("libsndfile"));
    return outcome.err;
}

TEST_F(ProgramTest, NoLibraryOfXIsLoadedWithoutTheEditor) {
    makeMusic("in.wav", kWavFloat, 1, 480);
    const auto isOfX = testing::AnyOf(HasSubstr("libX11"), HasSubstr("libxcb"), HasSubstr("libcairo"));
    EXPECT_THAT(librariesOf({"render", "--force", "--preset", "drum-bus", path("in.wav"), path("out.wav")}),
                Not(isOfX));
    EXPECT_THAT(librariesOf({"params"}), Not(isOfX));
    EXPECT_THAT(librariesOf({"presets", "drum-bus"}), Not(isOfX));
    EXPECT_THAT(librariesOf({"describe"}), isOfX); // loads the module with its editor
}

} // namespace
} // namespace varno::test
