#include "Tests/Apps/varno/Support/ProgramTest.h"

// What the program prints about itself. The texts in golden/ are made by the commands that the test runs, for
// instance: varno render --help > Tests/Apps/varno/golden/render.txt

namespace varno::test {
namespace {

class ProgramHelp : public ProgramTest {
protected:
    void expectGolden(const std::vector<std::string>& arguments, const std::string& name) const {
        EXPECT_EQ(varnoOut(arguments), readFile(std::string(VARNO_GOLDEN_FOLDER) + '/' + name));
    }
};

TEST_F(ProgramHelp, OfTheProgram) {
    expectGolden({"--help"}, "help.txt");
    expectGolden({"-h"}, "help.txt");
}

TEST_F(ProgramHelp, OfEachCommand) {
    for (const std::string command : {"render", "edit", "play", "describe", "params", "presets", "measure",
                                      "plot", "validate", "doctor", "completion", "man"}) {
        expectGolden({command, "--help"}, command + ".txt");
    }
}

TEST_F(ProgramHelp, GoesBeforeTheArguments) {
    expectGolden({"completion", "-h"}, "completion.txt");
    expectGolden({"render", "one", "two", "three", "--help"}, "render.txt");
}

TEST_F(ProgramHelp, Version) {
    EXPECT_EQ(varnoOut({"--version"}), "varno " VARNO_VERSION "\n");
}

TEST_F(ProgramHelp, ManualPageAndCompletionArePrinted) {
    EXPECT_TRUE(varnoOut({"man"}).starts_with(".TH VARNO 1 "));
    EXPECT_TRUE(varnoOut({"completion", "bash"}).starts_with("# Completion of varno for bash.\n"));
}

TEST_F(ProgramHelp, RefusesWhatItDoesNotKnow) {
    EXPECT_EQ(refusal(2, {}), "no command found; expected one of those that varno --help lists");
    EXPECT_EQ(refusal(2, {"rendr"}), R"(unknown command "rendr"; did you mean "render"? (see varno --help))");
    EXPECT_EQ(refusal(2, {"--frobnicate"}), R"(unknown option "--frobnicate" (see varno --help))");
    EXPECT_EQ(refusal(2, {"describe", "--jsn"}),
              R"(unknown option "--jsn" of describe; did you mean "--json"?)");
    EXPECT_EQ(refusal(2, {"man", "page"}), R"(unexpected argument "page" of man)");
    EXPECT_EQ(refusal(2, {"completion", "tcsh"}), R"(SHELL: expected bash, zsh or fish, found "tcsh")");
}

TEST_F(ProgramHelp, FullDiskIsAnError) {
    const auto outcome = run({"bash", "-c", "\"$0\" --help > /dev/full", VARNO_PROGRAM});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "varno: standard output: cannot be written: No space left on device\n");
}

TEST_F(ProgramHelp, ClosedPipeIsAnError) {
    const auto outcome = run({"bash", "-c", "\"$0\" --help | true; exit ${PIPESTATUS[0]}", VARNO_PROGRAM});
    EXPECT_THAT(outcome.status, testing::AnyOf(0, 1)); // 0 where the pipe took all before it was closed
    EXPECT_THAT(outcome.err, testing::AnyOf("", "varno: standard output: cannot be written: Broken pipe\n"));
}

} // namespace
} // namespace varno::test
