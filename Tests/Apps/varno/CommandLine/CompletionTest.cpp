#include "CommandLine/Completion.h"

#include "Program.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>

// What the shells themselves propose with the scripts.

namespace varno {
namespace {

using testing::HasSubstr;
using Words = std::vector<std::string>;

constexpr const char* kProgram = R"sh(#!/bin/sh
case $* in
'params --ids') printf 'Hot\nHP\nMix\n' ;;
'presets --names') printf 'drum-bus\nmix-glue\n' ;;
esac
)sh";

// Prints what a zsh on a terminal of its own proposes for the line $1, one proposal per line.
constexpr const char* kZsh = R"zsh(
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell 'PS1= PROMPT2=; unsetopt zle_bracketed_paste; stty -echo; fpath=($PWD ${(M)fpath:#*/Completion(/Base|/Unix|)})
    autoload -Uz compinit; compinit -u -D
    compadd() {
        if [[ ${@[1,(i)(-|--)]} != *-(O|A|D)\ * ]]; then
            local -a proposed; builtin compadd -A proposed "$@"; (($#proposed)) && printf "<%s>\n" $proposed
        fi
        builtin compadd "$@"
    }
    start_list() { echo "<<<" }; end_list() { echo ">>>"; exit }; compprefuncs=(start_list) comppostfuncs=(end_list)
    bindkey "^I" complete-word; echo is rea""dy'
zpty -r shell output '*is ready*'
zpty -w -n shell "$1"$'\t'
zpty -r shell output '*>>>*'
print -r -- "$output" | tr -d '\r' | sed -n '/<<</,/>>>/{s/^<\(.*\)>$/\1/p}'
zpty -d shell
)zsh";

class Shell {
public:
    virtual ~Shell() = default;
    virtual std::string script() const = 0;
    virtual const char* file() const = 0;
    // The command that prints the proposals for the last of the words, one per line.
    virtual Words command(const Words& words) const = 0;
};

// As a user types them.
std::string joined(const Words& words) {
    std::string line;
    for (const auto& word : words) {
        line += (line.empty() ? "" : " ") + word;
    }
    return line;
}

class Bash : public Shell {
public:
    std::string script() const override { return bashCompletion(program()); }
    const char* file() const override { return "varno.bash"; }
    Words command(const Words& words) const override {
        Words command = {"bash", "-c",
                         "source ./varno.bash; COMP_WORDS=(\"$@\"); COMP_CWORD=$(($# - 1))\n"
                         "_varno varno; ((${#COMPREPLY[@]} == 0)) || printf '%s\\n' \"${COMPREPLY[@]}\"",
                         "bash"};
        command.insert(command.end(), words.begin(), words.end());
        return command;
    }
};

class Zsh : public Shell {
public:
    std::string script() const override { return zshCompletion(program()); }
    const char* file() const override { return "_varno"; }
    Words command(const Words& words) const override {
        return {"zsh", "-f", "-c", kZsh, "zsh", joined(words)};
    }
};

class Fish : public Shell {
public:
    std::string script() const override { return fishCompletion(program()); }
    const char* file() const override { return "varno.fish"; }
    Words command(const Words& words) const override {
        // A description follows after a tabulator.
        return {"fish", "--no-config", "--command",
                "source ./varno.fish; complete --do-complete $argv[1] | string replace --regex '\\t.*' ''; "
                "or true",
                joined(words)};
    }
};

const Bash kBash;
const Zsh kZshShell;
const Fish kFish;
const Shell* const kShells[] = {&kBash, &kZshShell, &kFish};

class Completion : public testing::TestWithParam<const Shell*> {
protected:
    Completion() {
        std::filesystem::create_directories(mFolder.path() / "bin");
        test::writeFile(mFolder / "bin/varno", kProgram);
        std::filesystem::permissions(mFolder / "bin/varno", std::filesystem::perms::owner_all);
        test::writeFile(mFolder / GetParam()->file(), GetParam()->script());
        test::writeFile(mFolder / "song.wav", "");
        test::writeFile(mFolder / "mixed.txt", "");
        std::filesystem::create_directory(mFolder.path() / "songs");
    }

    // What the shell proposes for the last word, sorted; folders without a slash, settings without "=".
    Words proposals(const Words& words) const {
        const std::string bin = mFolder / "bin";
        Words command = {"env", "PATH=" + bin + ":/usr/bin:/bin", "HOME=" + bin};
        const Words shell = GetParam()->command(words);
        command.insert(command.end(), shell.begin(), shell.end());
        const auto outcome = test::run(command, {.folder = mFolder.path()});
        EXPECT_EQ(outcome.status, 0) << joined(words);
        EXPECT_EQ(outcome.err, "") << joined(words);
        Words found;
        std::istringstream lines(outcome.out);
        for (std::string line; std::getline(lines, line);) {
            if (line.ends_with('/') || line.ends_with('=')) {
                line.pop_back();
            }
            found.push_back(line);
        }
        std::ranges::sort(found);
        found.erase(std::unique(found.begin(), found.end()), found.end());
        return found;
    }

    test::TemporaryFolder mFolder;
};

TEST_P(Completion, ProposesCommands) {
    Words expected;
    for (const auto& command : program().commands) {
        expected.emplace_back(command.name);
    }
    const Words found = proposals({"varno", ""});
    for (const auto& command : expected) {
        EXPECT_THAT(found, testing::Contains(command));
    }
    EXPECT_EQ(proposals({"varno", "re"}), Words({"render"}));
    EXPECT_EQ(proposals({"varno", "--v"}), Words({"--version"}));
}

TEST_P(Completion, ProposesEveryOption) {
    for (const auto& command : program().commands) {
        const Words found = proposals({"varno", std::string(command.name), "--"});
        Words expected;
        for (const auto& option : command.options) {
            expected.emplace_back(option.name);
        }
        std::ranges::sort(expected);
        EXPECT_EQ(found, expected);
    }
    EXPECT_EQ(proposals({"varno", "render", "in.wav", "--fo"}), Words({"--force", "--format"}));
}

TEST_P(Completion, ProposesChoices) {
    EXPECT_EQ(proposals({"varno", "render", "--format", "pcm"}), Words({"pcm16", "pcm24", "pcm32"}));
    EXPECT_EQ(proposals({"varno", "completion", ""}), Words({"bash", "fish", "zsh"}));
}

TEST_P(Completion, ProposesFilesAndFolders) {
    EXPECT_EQ(proposals({"varno", "render", "so"}), Words({"song.wav", "songs"}));
    EXPECT_EQ(proposals({"varno", "render", "--preset", "song."}), Words({"song.wav"}));
    EXPECT_EQ(proposals({"varno", "render", "--out-dir", "so"}), Words({"songs"}));
}

TEST_P(Completion, ProposesParameters) {
    EXPECT_EQ(proposals({"varno", "params", "H"}), Words({"HP", "Hot"}));
    EXPECT_EQ(proposals({"varno", "render", "--set", "H"}), Words({"HP", "Hot"}));
    EXPECT_EQ(proposals({"varno", "render", "--set", "Hot=0"}), Words());
}

TEST_P(Completion, ProposesPresetsAndFiles) {
    EXPECT_EQ(proposals({"varno", "render", "--preset", "mi"}), Words({"mix-glue", "mixed.txt"}));
    EXPECT_EQ(proposals({"varno", "presets", "d"}), Words({"drum-bus"}));
}

TEST_P(Completion, ProposesNothingForANumber) {
    EXPECT_EQ(proposals({"varno", "render", "--block", "5"}), Words());
    EXPECT_EQ(proposals({"varno", "render", "-j", ""}), Words());
}

INSTANTIATE_TEST_SUITE_P(Shells, Completion, testing::ValuesIn(kShells), [](const auto& shell) {
    return std::string(
        shell.param->file() == std::string("_varno") ? "zsh" : std::string(shell.param->file()).substr(6));
});

// Bash splits words at "=": its own variables then have three words for "--dither=n".
TEST(BashCompletion, ProposesChoicesAfterAnEqualsSign) {
    const test::TemporaryFolder folder;
    test::writeFile(folder / kBash.file(), kBash.script());
    const auto proposals = [&](const Words& words) {
        return test::run(kBash.command(words), {.folder = folder.path()}).out;
    };
    EXPECT_EQ(proposals({"varno", "render", "--dither", "="}), "tpdf\nnone\n");
    EXPECT_EQ(proposals({"varno", "render", "--dither", "=", "n"}), "none\n");
}

TEST(BashCompletion, IsRegisteredForTheProgram) {
    const test::TemporaryFolder folder;
    test::writeFile(folder / "completion", bashCompletion(program()));
    const auto outcome =
        test::run({"bash", "-euc", "source ./completion; complete -p varno"}, {.folder = folder.path()});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr("-F _varno varno"));
}

TEST(FirstSentence, EndsBeforeItsFullStop) {
    EXPECT_EQ(firstSentence("One thing. Another."), "One thing");
    EXPECT_EQ(firstSentence("From 1.5 to 2."), "From 1.5 to 2");
    EXPECT_EQ(firstSentence("No end"), "No end");
    EXPECT_EQ(firstSentence(""), "");
}

} // namespace
} // namespace varno
