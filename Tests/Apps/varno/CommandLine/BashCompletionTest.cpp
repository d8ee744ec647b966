#include "CommandLine/CommandTable.h"
#include "CommandLine/Help.h"
#include "Program.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

using testing::HasSubstr;

// What bash proposes for the last of the words, one proposal per line. The parameters come from a stand-in
// for the program.
std::string proposals(const std::vector<std::string>& words) {
    const test::TemporaryFolder folder;
    test::writeFile(folder / "completion", bashCompletion(program()));
    test::writeFile(folder / "song.wav", "");
    test::writeFile(folder / "mixed.txt", "");
    std::filesystem::create_directory(folder.path() / "songs");
    std::vector<std::string> command = {
        "bash", "-c",
        "varno() {\n"
        "    [[ $* != 'params --ids' ]] || printf 'Hot\\nHP\\nMix\\n'\n"
        "    [[ $* != 'presets --names' ]] || printf 'drum-bus\\nmix-glue\\n'\n"
        "}\n"
        "source ./completion; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1))\n"
        "_varno varno; ((${#COMPREPLY[@]} == 0)) || printf '%s\\n' \"${COMPREPLY[@]}\"",
        "bash"};
    command.insert(command.end(), words.begin(), words.end());
    const auto outcome = test::run(command, {.folder = folder.path()});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
}

TEST(BashCompletion, ProposesCommands) {
    EXPECT_EQ(proposals({"varno", ""}),
              "render\nedit\nplay\ndescribe\nparams\npresets\nmeasure\ncompletion\nman\n--help\n--version\n");
    EXPECT_EQ(proposals({"varno", "re"}), "render\n");
    EXPECT_EQ(proposals({"varno", "--v"}), "--version\n");
}

TEST(BashCompletion, ProposesEveryOption) {
    for (const auto& command : program().commands) {
        std::string expected;
        for (const auto& option : command.options) {
            expected += std::string(option.name) + '\n';
        }
        EXPECT_EQ(proposals({"varno", std::string(command.name), "-"}), expected);
    }
    EXPECT_EQ(proposals({"varno", "render", "in.wav", "--fo"}), "--format\n--force\n");
}

TEST(BashCompletion, ProposesChoices) {
    EXPECT_EQ(proposals({"varno", "render", "--format", "pcm"}), "pcm16\npcm24\npcm32\n");
    EXPECT_EQ(proposals({"varno", "render", "--dither", "="}), "tpdf\nnone\n");
    EXPECT_EQ(proposals({"varno", "render", "--dither", "=", "n"}), "none\n");
    EXPECT_EQ(proposals({"varno", "completion", ""}), "bash\n");
}

TEST(BashCompletion, ProposesFilesAndFolders) {
    EXPECT_THAT(proposals({"varno", "render", "so"}),
                testing::AnyOf("song.wav\nsongs\n", "songs\nsong.wav\n"));
    EXPECT_EQ(proposals({"varno", "render", "--preset", "song."}), "song.wav\n");
    EXPECT_EQ(proposals({"varno", "render", "--out-dir", "so"}), "songs\n");
}

TEST(BashCompletion, ProposesParameters) {
    EXPECT_EQ(proposals({"varno", "params", "H"}), "Hot\nHP\n");
    EXPECT_EQ(proposals({"varno", "render", "--set", "H"}), "Hot=\nHP=\n");
    EXPECT_EQ(proposals({"varno", "render", "--set", "Hot", "=", "0"}), "");
}

TEST(BashCompletion, ProposesPresetsAndFiles) {
    EXPECT_EQ(proposals({"varno", "render", "--preset", "mi"}), "mix-glue\nmixed.txt\n");
    EXPECT_EQ(proposals({"varno", "presets", "d"}), "drum-bus\n");
}

TEST(BashCompletion, ProposesNothingForANumber) {
    EXPECT_EQ(proposals({"varno", "render", "--block", "5"}), "");
    EXPECT_EQ(proposals({"varno", "render", "-j", ""}), "");
}

TEST(BashCompletion, IsRegisteredForTheProgram) {
    const test::TemporaryFolder folder;
    test::writeFile(folder / "completion", bashCompletion(program()));
    const auto outcome =
        test::run({"bash", "-euc", "source ./completion; complete -p varno"}, {.folder = folder.path()});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("-F _varno varno"));
}

} // namespace
} // namespace varno
