#include "CommandLine/CommandLine.h"
#include "CommandLine/CommandError.h"
#include "Program.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Words = std::vector<std::string>;

CommandLine lineOf(std::string_view command, const Words& words) {
    return CommandLine(*findCommand(command), words);
}

// The refusal of a command line, empty where it is accepted.
std::string refusal(std::string_view command, const Words& words) {
    try {
        lineOf(command, words).checkArguments();
    } catch (const UsageError& error) {
        EXPECT_EQ(error.exitStatus(), 2);
        return error.what();
    }
    return {};
}

TEST(CommandLine, WithoutWordsHoldsNothing) {
    const auto line = lineOf("render", {});
    EXPECT_THAT(line.arguments(), IsEmpty());
    EXPECT_FALSE(line.has("--json"));
    EXPECT_EQ(line.value("--block"), std::nullopt);
    EXPECT_THAT(line.values("--set"), IsEmpty());
}

TEST(CommandLine, TakesOptionsBeforeBetweenAndBehindArguments) {
    const auto line = lineOf("render", {"--force", "in.wav", "--block=64", "out.wav", "-q"});
    EXPECT_THAT(line.arguments(), ElementsAre("in.wav", "out.wav"));
    EXPECT_TRUE(line.has("--force"));
    EXPECT_TRUE(line.has("--quiet"));
    EXPECT_EQ(line.value("--block"), "64");
}

TEST(CommandLine, TakesShortOptionsInEveryForm) {
    const auto line = lineOf("render", {"-qf", "-j4"});
    EXPECT_TRUE(line.has("--quiet"));
    EXPECT_TRUE(line.has("--force"));
    EXPECT_EQ(line.value("--jobs"), "4");
    EXPECT_EQ(lineOf("render", {"-j", "4"}).value("--jobs"), "4");
}

TEST(CommandLine, CollectsRepeatedOptionsInOrder) {
    const auto line = lineOf("render", {"--set", "Hot=1", "in.wav", "--set=Mix=0.5", "--set", "Hot=0"});
    EXPECT_THAT(line.values("--set"), ElementsAre("Hot=1", "Mix=0.5", "Hot=0"));
    EXPECT_THAT(line.arguments(), ElementsAre("in.wav"));
}

TEST(CommandLine, LastValueOfAnOptionWins) {
    EXPECT_EQ(lineOf("render", {"--block", "1", "--block", "2"}).value("--block"), "2");
}

TEST(CommandLine, DashAloneIsAnArgument) {
    EXPECT_THAT(lineOf("render", {"-", "-"}).arguments(), ElementsAre("-", "-"));
}

TEST(CommandLine, EverythingBehindTwoDashesIsAnArgument) {
    EXPECT_THAT(lineOf("render", {"--", "--force", "-x", "--block=", "--"}).arguments(),
                ElementsAre("--force", "-x", "--block=", "--"));
}

TEST(CommandLine, LeavesOddArgumentsAlone) {
    EXPECT_THAT(lineOf("render", {"[a]", "a,b", "a=b", ""}).arguments(),
                ElementsAre("[a]", "a,b", "a=b", ""));
    EXPECT_EQ(lineOf("render", {"--preset", "[a,b]"}).value("--preset"), "[a,b]");
    EXPECT_EQ(lineOf("render", {"--tail", "-1"}).value("--tail"), "-1");
}

TEST(CommandLine, RefusesUnknownOptions) {
    EXPECT_EQ(refusal("render", {"--blok", "64"}),
              "unknown option \"--blok\" of render; did you mean \"--block\"?");
    EXPECT_EQ(refusal("render", {"--bloc=64"}),
              "unknown option \"--bloc\" of render; did you mean \"--block\"?");
    EXPECT_EQ(refusal("render", {"-x"}), "unknown option \"-x\" of render");
    EXPECT_EQ(refusal("man", {"--frobnicate"}), "unknown option \"--frobnicate\" of man");
}

TEST(CommandLine, RefusesAbbreviatedOptions) {
    EXPECT_EQ(refusal("render", {"--forc"}),
              "unknown option \"--forc\" of render; did you mean \"--force\"?");
    EXPECT_EQ(refusal("render", {"--bloc"}),
              "unknown option \"--bloc\" of render; did you mean \"--block\"?");
    EXPECT_EQ(refusal("render", {"--jso=1"}), "unknown option \"--jso\" of render; did you mean \"--json\"?");
    EXPECT_EQ(refusal("render", {"--s"}), "unknown option \"--s\" of render");
}

TEST(CommandLine, RefusesOptionsThatExcludeEachOther) {
    EXPECT_EQ(refusal("play", {"--stereo", "--mono"}), "options --mono and --stereo exclude each other");
    EXPECT_EQ(refusal("play", {"--stereo", "--edit"}), "");
}

TEST(CommandLine, KeepsAnEmptyValueInAWordOfItsOwn) {
    EXPECT_EQ(lineOf("render", {"--tail", "", "in.wav"}).value("--tail"), "");
}

TEST(CommandLine, ReadsNumbersWithinTheRangeOfTheTable) {
    EXPECT_EQ(lineOf("render", {}).number<int>("--block"), std::nullopt);
    EXPECT_EQ(lineOf("render", {"--block", "16384"}).number<int>("--block"), 16384);
    EXPECT_EQ(lineOf("render", {"--tail", "1.5"}).number<double>("--tail"), 1.5);
    for (const std::string text : {"0", "16385", "1.5", "x", ""}) {
        try {
            lineOf("render", {"--block", text}).number<int>("--block");
            ADD_FAILURE() << text;
        } catch (const UsageError& error) {
            EXPECT_EQ(error.what(),
                      "option --block: expected a whole number from 1 to 16384, found \"" + text + '"');
        }
    }
}

TEST(CommandLine, RefusesAMissingValue) {
    EXPECT_EQ(refusal("render", {"in.wav", "--block"}), "option --block needs a value (FRAMES)");
    EXPECT_EQ(refusal("render", {"-j"}), "option --jobs needs a value (N)");
    EXPECT_EQ(refusal("render", {"--preset=", "in.wav"}), "option --preset needs a value (NAME|FILE)");
}

TEST(CommandLine, RefusesAValueOfASwitch) {
    EXPECT_EQ(refusal("render", {"--force=yes"}), "option --force takes no value, found \"yes\"");
    EXPECT_EQ(refusal("render", {"--json="}), "option --json takes no value, found \"\"");
}

TEST(CommandLine, RefusesOtherChoices) {
    EXPECT_EQ(refusal("render", {"--format", "pcm12"}),
              "option --format: expected pcm16, pcm24, pcm32, float or double, found \"pcm12\"; did you mean "
              "\"pcm16\"?");
    EXPECT_EQ(refusal("render", {"--dither=rectangle"}),
              "option --dither: expected tpdf or none, found \"rectangle\"");
    EXPECT_EQ(refusal("completion", {"tcsh"}), "SHELL: expected bash, zsh or fish, found \"tcsh\"");
}

TEST(CommandLine, RefusesTheWrongNumberOfArguments) {
    EXPECT_EQ(refusal("completion", {}), "completion needs SHELL, found nothing");
    EXPECT_EQ(refusal("man", {"render"}), "unexpected argument \"render\" of man");
    EXPECT_EQ(refusal("params", {"Hot", "Mix"}), "unexpected argument \"Mix\" of params");
    EXPECT_EQ(refusal("completion", {"bash"}), "");
}

TEST(CommandLine, RefusesUnknownCommands) {
    const auto refusalOf = [](const std::string& word) {
        try {
            runProgram({word});
        } catch (const UsageError& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    EXPECT_EQ(refusalOf("rendr"), "unknown command \"rendr\"; did you mean \"render\"? (see varno --help)");
    EXPECT_EQ(refusalOf("song.wav"), "unknown command \"song.wav\" (see varno --help)");
}

} // namespace
} // namespace varno
