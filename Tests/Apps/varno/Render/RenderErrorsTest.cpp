#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <filesystem>
#include <sndfile.h>

// Each error of a render: one line that states the reason, and no output.

namespace varno::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

class RenderErrors : public ProgramTest {
protected:
    RenderErrors() { makeMusic("in.wav", kWav16, 2, 4800); }

    // The refusal of a render that must not touch any file.
    std::string refusedRender(int status, const std::vector<std::string>& arguments) const {
        const std::string before = mFolder.listing();
        const Bytes input = content("in.wav");
        std::vector<std::string> words = {"render"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        std::string text = refusal(status, words);
        EXPECT_EQ(mFolder.listing(), before);
        EXPECT_EQ(content("in.wav"), input);
        return text;
    }

    // Expects that Hot refuses this value.
    void expectNoValueOfHot(const std::string& value) const {
        std::string expected = "--set Hot=";
        expected.append(value)
            .append(R"(: Hot takes 0 to 1 or "0.0 %" to "100.0 %", found ")")
            .append(value)
            .append("\"");
        EXPECT_EQ(refusedRender(2, {"--set", "Hot=" + value, "in.wav", "out.wav"}), expected);
    }
};

// Input files.

TEST_F(RenderErrors, MissingInput) {
    EXPECT_EQ(refusedRender(1, {"no.wav", "out.wav"}), "no.wav: cannot be read: No such file or directory");
}

TEST_F(RenderErrors, UnreadableInput) {
    EXPECT_EQ(refusedRender(1, {"in.wav/in.wav", "out.wav"}),
              "in.wav/in.wav: cannot be read: Not a directory");
}

TEST_F(RenderErrors, EmptyInput) {
    writeFile(path("empty.wav"), "");
    EXPECT_EQ(refusedRender(1, {"empty.wav", "out.wav"}), "empty.wav: is empty; expected an audio file");
}

TEST_F(RenderErrors, TruncatedInput) {
    const std::string whole = readFile(path("in.wav"));
    writeFile(path("cut.wav"), whole.substr(0, whole.size() - 400));
    EXPECT_EQ(refusedRender(1, {"cut.wav", "out.wav"}),
              "cut.wav: is truncated: 4700 frames found, expected the 4800 that its header promises; "
              "--truncated reads what is there");
}

// The decoder prints a warning of its own.
TEST_F(RenderErrors, ReportsATruncatedMp3InOneLine) {
    const std::string path = mFolder / "in.mp3";
    writeSound(path, {SF_FORMAT_MPEG | SF_FORMAT_MPEG_LAYER_III, 2, 48'000, {}, testReals(60'000)});
    const std::string bytes = readFile(path);
    writeFile(path, bytes.substr(0, bytes.size() / 2));
    EXPECT_THAT(refusal(1, {"render", "in.mp3", "out.wav"}), StartsWith("in.mp3: is truncated: "));
}

TEST_F(RenderErrors, TruncatedInputThatIsAccepted) {
    const std::string whole = readFile(path("in.wav"));
    writeFile(path("cut.wav"), whole.substr(0, whole.size() - 400));
    const auto outcome = varno({"render", "--truncated", "cut.wav", "out.wav"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "varno: warning: cut.wav: is truncated: 4700 frames found, expected the 4800 that "
                           "its header promises\n");
    EXPECT_EQ(readReals(path("out.wav")).reals.size(), 2 * 4700U);
    EXPECT_EQ(varno({"render", "--truncated", "in.wav", "whole.wav"}).err, "");
}

TEST_F(RenderErrors, InputThatIsNoAudio) {
    writeFile(path("text.wav"), "This is a text and no audio at all.\n");
    EXPECT_THAT(refusedRender(1, {"text.wav", "out.wav"}),
                HasSubstr("text.wav: is no audio that can be read (Format not recognised); expected WAV"));
}

TEST_F(RenderErrors, FolderAsInput) {
    EXPECT_EQ(refusedRender(1, {".", "out.wav"}), ".: is a folder; expected an audio file");
}

TEST_F(RenderErrors, OtherChannelCounts) {
    makeMusic("three.wav", kWav16, 3, 480);
    makeMusic("six.wav", kWav16, 6, 480);
    EXPECT_EQ(refusedRender(1, {"three.wav", "out.wav"}),
              "three.wav: has 3 channels; expected 1 (mono) or 2 (stereo); option --channels processes "
              "groups of them");
    EXPECT_EQ(refusedRender(1, {"six.wav", "out.wav"}),
              "six.wav: has 6 channels; expected 1 (mono) or 2 (stereo); option --channels processes groups "
              "of them");
}

TEST_F(RenderErrors, OtherSampleRates) {
    makeMusic("slow.wav", kWav16, 1, 480, 15'999);
    makeMusic("fast.wav", kWav16, 1, 480, 384'001);
    EXPECT_EQ(refusedRender(1, {"slow.wav", "out.wav"}),
              "slow.wav: sample rate 15999 Hz is not supported: expected 16000 to 384000 Hz");
    EXPECT_EQ(refusedRender(1, {"fast.wav", "out.wav"}),
              "fast.wav: sample rate 384001 Hz is not supported: expected 16000 to 384000 Hz");
}

// Output files.

TEST_F(RenderErrors, ExistingOutput) {
    writeFile(path("out.wav"), "precious");
    EXPECT_EQ(refusedRender(1, {"in.wav", "out.wav"}),
              "out.wav: exists already; expected a new name, or --force to replace it");
    EXPECT_EQ(content("out.wav"), Bytes{"precious"});
}

TEST_F(RenderErrors, OutputThatIsTheInput) {
    fs::create_symlink("in.wav", mFolder.path() / "link.wav");
    fs::create_hard_link(mFolder.path() / "in.wav", mFolder.path() / "hard.wav");
    for (const std::string output : {"in.wav", "./in.wav", "link.wav", "hard.wav"}) {
        EXPECT_EQ(refusedRender(2, {"--force", "in.wav", output}),
                  output + ": is the input file in.wav; expected another file");
    }
}

TEST_F(RenderErrors, OtherOutputsThatAreTheInput) {
    for (const std::string option : {"--meters", "--save-preset", "--save-state"}) {
        EXPECT_EQ(refusedRender(2, {"--force", option, "in.wav", "in.wav", "out.wav"}),
                  "in.wav: is the input file in.wav; expected another file");
        EXPECT_EQ(refusedRender(2, {"--dry-run", option, "in.wav", "in.wav", "out.wav"}),
                  "in.wav: is the input file in.wav; expected another file");
    }
}

TEST_F(RenderErrors, OutputsThatAreOtherInputs) {
    varnoOut({"render", "--save-state", "s.bin", "--save-preset", "p.txt", "in.wav", "first.wav"});
    writeFile(path("m.csv"), "0,Hot,1\n");
    fs::create_directory_symlink(".", mFolder.path() / "here");
    const std::vector<std::pair<std::string, std::string>> inputs = {
        {"--state", "s.bin"}, {"--preset", "p.txt"}, {"--automate", "m.csv"}};
    for (const auto& [read, file] : inputs) {
        const Bytes before = content(file);
        for (const std::string write : {"--meters", "--save-state", "--save-preset"}) {
            const std::string again = std::string("here/").append(file);
            EXPECT_EQ(refusedRender(2, {"--force", read, file, write, again, "in.wav", "out.wav"}),
                      std::string(again).append(": is the input file ").append(file) +
                          "; expected another file");
            EXPECT_EQ(content(file), before);
        }
    }
}

TEST_F(RenderErrors, SettingsThatExistFailADryRun) {
    writeFile(path("p.txt"), "mine");
    for (const std::string option : {"--save-state", "--save-preset"}) {
        EXPECT_EQ(refusedRender(1, {"--dry-run", option, "p.txt", "in.wav", "out.wav"}),
                  "p.txt: exists already; expected a new name, or --force to replace it");
    }
}

TEST_F(RenderErrors, UnwritableFolder) {
    EXPECT_EQ(
        refusedRender(1, {"in.wav", "none/out.wav"}),
        "none/out.wav: cannot be written: No such file or directory; expected a folder that exists and can "
        "be written to");
    EXPECT_EQ(refusedRender(1, {"in.wav", "in.wav/out.wav"}),
              "in.wav/out.wav: cannot be written: Not a directory; expected a folder that exists and can be "
              "written to");
}

TEST_F(RenderErrors, FolderAsOutput) {
    fs::create_directory(mFolder.path() / "out.wav");
    EXPECT_THAT(refusedRender(1, {"--force", "in.wav", "out.wav"}), HasSubstr("out.wav: is a folder"));
}

TEST_F(RenderErrors, FullDisk) {
    EXPECT_EQ(refusedRender(1, {"in.wav", "/dev/full"}),
              "/dev/full: cannot be written: No space left on device");
}

TEST_F(RenderErrors, OutputBeyondTheLimitOfFileSizes) {
    makeMusic("long.wav", kWav16, 2, 100'000);
    const auto outcome = run({"bash", "-c", "ulimit -f 100; \"$0\" render long.wav out.wav", VARNO_PROGRAM},
                             {.folder = mFolder.path()});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "varno: out.wav: cannot be written: File too large\n");
    EXPECT_EQ(mFolder.listing(), "in.wav long.wav");
}

TEST_F(RenderErrors, ContainerThatIsNotKnown) {
    EXPECT_THAT(refusedRender(2, {"in.wav", "out.mp5"}),
                HasSubstr("out.mp5: has the extension .mp5; expected .wav"));
    EXPECT_THAT(refusedRender(2, {"in.wav", "out"}), HasSubstr("out: has no extension; expected .wav"));
}

// Parameters.

TEST_F(RenderErrors, UnknownParameter) {
    EXPECT_EQ(refusedRender(2, {"--set", "Hott=1", "in.wav", "out.wav"}),
              R"(--set Hott=1: unknown parameter "Hott"; did you mean "Hot"?)");
    EXPECT_EQ(refusedRender(2, {"--set", "Treble=1", "in.wav", "out.wav"}),
              R"(--set Treble=1: unknown parameter "Treble"; expected one that varno params lists)");
}

TEST_F(RenderErrors, ValueOutOfRange) {
    for (const std::string value : {"1.5", "-0.001", "1e300", "inf", "-inf", "nan"}) {
        expectNoValueOfHot(value);
    }
}

TEST_F(RenderErrors, ValueThatIsNeitherNumberNorText) {
    for (const std::string value : {"loud", "0,5", "0.5dB", " 0.5", "0x1", "on"}) {
        expectNoValueOfHot(value);
    }
    EXPECT_EQ(
        refusedRender(2, {"--set", "MasterBypassID=yes", "in.wav", "out.wav"}),
        R"(--set MasterBypassID=yes: MasterBypassID takes 0 to 1, "bypass", "on" or "off", found "yes")");
}

TEST_F(RenderErrors, TrueValueOutOfRange) {
    const auto refusalOf = [&](const std::string& setting) {
        const std::string text = refusedRender(2, {"--set", setting, "in.wav", "out.wav"});
        return text.substr(text.find(": ") + 2);
    };
    EXPECT_EQ(refusalOf("Gain=-3"), R"(Gain takes 0 to 1 or "-20.0 dB" to "+20.0 dB", found "-3")")
        << "a number alone is a normalized value";
    EXPECT_EQ(refusalOf("Gain=+3"), R"(Gain takes 0 to 1 or "-20.0 dB" to "+20.0 dB", found "+3")");
    EXPECT_EQ(refusalOf("Gain=-20.1 dB"),
              R"(Gain takes 0 to 1 or "-20.0 dB" to "+20.0 dB", found "-20.1 dB")");
    EXPECT_EQ(refusalOf("Gain=3 ms"), R"(Gain takes 0 to 1 or "-20.0 dB" to "+20.0 dB", found "3 ms")");
    EXPECT_EQ(refusalOf("Gain=#5"), R"(Gain takes 0 to 1 or "-20.0 dB" to "+20.0 dB", found "#5")");
    EXPECT_EQ(refusalOf("Ratio=5"), R"(Ratio takes 0 to 1 or "#1" to "#8", found "5")");
    EXPECT_EQ(refusalOf("Ratio=#0"), R"(Ratio takes 0 to 1 or "#1" to "#8", found "#0")");
    EXPECT_EQ(refusalOf("Ratio=#9"), R"(Ratio takes 0 to 1 or "#1" to "#8", found "#9")");
    EXPECT_EQ(refusalOf("HP=bypass"), R"(HP takes 0 to 1, "off" or "on", found "bypass")");
    EXPECT_EQ(refusalOf("Atk=0.40 ms"), R"(Atk takes 0 to 1 or "0.41 ms" to "41.7 ms", found "0.40 ms")");
}

TEST_F(RenderErrors, SettingWithoutAValue) {
    for (const std::string setting : {"Hot", "Hot=", "=0.5"}) {
        EXPECT_EQ(refusedRender(2, {"--set", setting, "in.wav", "out.wav"}),
                  "--set " + setting + ": expected ID=VALUE, for instance Hot=0.5");
    }
}

// Presets and states.

TEST_F(RenderErrors, DamagedPreset) {
    const std::string values = " 0.1 a 0.2 a 0.3 a 0.4 a 0.5 a 0.6 a 0.7 a 0.8 a 0.9 a 0.1 a 0.2 a 0.3";
    for (const std::string& text : {std::string("Varno-S"), "Varno-S 030000 a" + values + " a 0.4",
                                    "Varno-S 030001 a" + values, "Varno-S 030001 a" + values + " a loud"}) {
        writeFile(path("p.txt"), text);
        EXPECT_EQ(
            refusedRender(1, {"--preset", "p.txt", "in.wav", "out.wav"}),
            "p.txt: is no preset; expected a word, a version from 030001 on and 13 values, each behind a "
            "label");
    }
}

TEST_F(RenderErrors, PresetThatCannotBeRead) {
    writeFile(path("empty.txt"), "");
    writeFile(path("large.txt"), std::string(64 * 1024 + 1, 'a'));
    EXPECT_EQ(refusedRender(1, {"--preset", "no.txt", "in.wav", "out.wav"}),
              "no.txt: cannot be read: No such file or directory");
    EXPECT_EQ(refusedRender(1, {"--preset", ".", "in.wav", "out.wav"}), ".: cannot be read: Is a directory");
    EXPECT_EQ(refusedRender(1, {"--preset", "empty.txt", "in.wav", "out.wav"}),
              "empty.txt: is empty; expected a preset");
    EXPECT_EQ(refusedRender(1, {"--preset", "large.txt", "in.wav", "out.wav"}),
              "large.txt: has more than 65536 bytes; expected a preset");
}

TEST_F(RenderErrors, DamagedState) {
    varnoOut({"render", "--save-state", "good.bin", "in.wav", "saved.wav"});
    const std::string good = readFile(path("good.bin"));
    const auto refusalOf = [&](std::size_t offset, const std::string& bytes) {
        std::string damaged = good;
        damaged.replace(offset, bytes.size(), bytes);
        writeFile(path("bad.bin"), damaged);
        return refusedRender(1, {"--state", "bad.bin", "in.wav", "out.wav"});
    };
    writeFile(path("bad.bin"), "");
    EXPECT_EQ(refusedRender(1, {"--state", "bad.bin", "in.wav", "out.wav"}),
              "bad.bin: is empty; expected a saved state");
    writeFile(path("bad.bin"), good.substr(0, 55));
    EXPECT_EQ(refusedRender(1, {"--state", "bad.bin", "in.wav", "out.wav"}),
              "bad.bin: saved state: found 55 bytes, expected a header of 56");
    writeFile(path("bad.bin"), good + "x");
    EXPECT_EQ(refusedRender(1, {"--state", "bad.bin", "in.wav", "out.wav"}),
              "bad.bin: saved state: found 221 bytes of data, expected 220 by its header");
    EXPECT_EQ(refusalOf(0, "x"), "bad.bin: saved state: found 220 bytes of data, expected 120 by its header");
    EXPECT_EQ(refusalOf(8, "x"), "bad.bin: saved state: found manufacturer Mrvx, expected Mrvk");
    EXPECT_EQ(refusalOf(20, "x"), "bad.bin: saved state: found chunk identifier elcx, expected elck");
    EXPECT_EQ(refusalOf(56, "x"),
              R"(bad.bin: saved state: found marker "78 01 01 01", expected "01 01 01 01")");
    EXPECT_EQ(refusalOf(good.find("Gain"), "Pain"),
              "bad.bin: saved state: not every value arrived, expected a valid value for each parameter");
}

// Automation.

TEST_F(RenderErrors, MalformedAutomation) {
    const auto refusalOf = [&](const std::string& lines) {
        writeFile(path("moves.csv"), lines);
        return refusedRender(1, {"--automate", "moves.csv", "in.wav", "out.wav"});
    };
    EXPECT_EQ(refusalOf("0,Hot,1\n0.1,Hot\n"),
              R"(moves.csv, line 2: found "0.1,Hot"; expected three fields time_s,parameter,value)");
    EXPECT_EQ(refusalOf("time_s,parameter,value\nsoon,Hot,1\n"),
              R"(moves.csv, line 2: time "soon" found; expected seconds from the start, 0 or more)");
    EXPECT_EQ(refusalOf("0,Hott,1\n"), R"(moves.csv, line 1: unknown parameter "Hott"; did you mean "Hot"?)");
    EXPECT_EQ(refusalOf("# up\n\n0,Hot,2\n"),
              R"(moves.csv, line 3: Hot takes 0 to 1 or "0.0 %" to "100.0 %", found "2")");
    EXPECT_EQ(refusalOf("0,MasterBypassID,no\n"),
              R"(moves.csv, line 1: MasterBypassID takes 0 to 1, "bypass", "on" or "off", found "no")");
    EXPECT_EQ(refusedRender(1, {"--automate", "no.csv", "in.wav", "out.wav"}),
              "no.csv: cannot be read: No such file or directory");
}

// Options.

TEST_F(RenderErrors, NumbersOutOfRange) {
    const auto refusalOf = [&](const std::string& option, const std::string& value) {
        return refusedRender(2, {option, value, "in.wav", "out.wav"});
    };
    for (const std::string value : {"0", "16385", "-1", "1.5", "many", ""}) {
        EXPECT_EQ(refusalOf("--block", value),
                  "option --block: expected a whole number from 1 to 16384, found \"" + value + '"');
    }
    EXPECT_EQ(refusalOf("--jobs", "0"), R"(option --jobs: expected a whole number from 1 to 256, found "0")");
    EXPECT_EQ(refusalOf("-j", "257"), R"(option --jobs: expected a whole number from 1 to 256, found "257")");
    for (const std::string value : {"-0.1", "3600.1", "inf", "nan", "long"}) {
        EXPECT_EQ(refusalOf("--tail", value),
                  "option --tail: expected a number from 0 to 3600, found \"" + value + '"');
    }
}

TEST_F(RenderErrors, WrongArguments) {
    EXPECT_EQ(refusedRender(2, {"in.wav"}), R"(render needs OUTPUT beside INPUT "in.wav", or --out-dir DIR)");
    EXPECT_EQ(
        refusedRender(2, {"in.wav", "a.wav", "b.wav"}),
        R"(unexpected argument "b.wav" of render; expected INPUT OUTPUT, or --out-dir DIR for several inputs)");
    EXPECT_EQ(refusedRender(2, {"--out-dir", "."}), "option --out-dir needs INPUT, found none");
    EXPECT_EQ(refusedRender(2, {"--out-dir", ".", "-"}),
              R"(option --out-dir needs inputs with a file name, found "-")");
    EXPECT_EQ(refusedRender(2, {"--dry-run"}), "option --dry-run needs INPUT and OUTPUT, found none");
}

TEST_F(RenderErrors, OutputsThatAreOneFile) {
    EXPECT_EQ(refusedRender(2, {"--out-dir", "wet", "a/x.wav", "b/x.wav"}),
              R"(outputs "wet/x.wav" and "wet/x.wav" are one file; expected one each)");
    fs::create_directory_symlink(".", mFolder.path() / "here");
    for (const std::string& again :
         {std::string("./out.wav"), path("out.wav"), std::string("here/out.wav")}) {
        for (const std::string option : {"--meters", "--save-state", "--save-preset"}) {
            EXPECT_EQ(refusedRender(2, {option, again, "in.wav", "out.wav"}),
                      "outputs \"out.wav\" and \"" + again + "\" are one file; expected one each");
        }
    }
    writeFile(path("old.wav"), "old");
    fs::create_symlink("old.wav", mFolder.path() / "link.csv");
    fs::create_hard_link(mFolder.path() / "old.wav", mFolder.path() / "hard.csv");
    for (const std::string again : {"link.csv", "hard.csv"}) {
        EXPECT_EQ(refusedRender(2, {"--force", "--dry-run", "--meters", again, "in.wav", "old.wav"}),
                  "outputs \"old.wav\" and \"" + again + "\" are one file; expected one each");
    }
    EXPECT_EQ(refusedRender(2, {"--meters", "-", "in.wav", "-"}),
              R"(outputs "-" and "-" are one file; expected one each)");
    EXPECT_EQ(refusedRender(2, {"--save-state", "s.bin", "--save-preset", "./s.bin", "in.wav", "out.wav"}),
              R"(outputs "./s.bin" and "s.bin" are one file; expected one each)");
    EXPECT_EQ(refusedRender(2, {"--meters", "m.csv", "--out-dir", "wet", "a.wav", "b.wav"}),
              "option --meters takes one INPUT, found 2");
}

TEST_F(RenderErrors, FilesOfTheDemoThatAreOneFile) {
    writeFile(path("varno-demo.wav"), "old");
    fs::create_symlink("varno-demo.wav", mFolder.path() / "varno-demo-dry.wav");
    EXPECT_EQ(refusedRender(2, {}),
              R"(outputs "varno-demo-dry.wav" and "varno-demo.wav" are one file; expected one each)");
}

// What is printed.

TEST_F(RenderErrors, NamesCannotControlTheTerminal) {
    EXPECT_EQ(refusedRender(1, {"no\033[2J\n\xff.wav", "out.wav"}),
              "no\\u001b[2J\\n\\xff.wav: cannot be read: No such file or directory");
    const auto outcome = varno({"render", "in.wav", "o\033[2J\r.wav"});
    EXPECT_TRUE(outcome.out.starts_with("o\\u001b[2J\\u000d.wav\n")) << outcome.out;
}

TEST_F(RenderErrors, LongLinesOfFilesAreCut) {
    writeFile(path("moves.csv"), "0,Hot\033," + std::string(1'000'000, '1') + "\n");
    const std::string text = refusedRender(1, {"--automate", "moves.csv", "in.wav", "out.wav"});
    EXPECT_TRUE(text.starts_with("moves.csv, line 1: unknown parameter")) << text;
    writeFile(path("moves.csv"), std::string(1'000'000, '1') + "\n");
    const std::string cut = refusedRender(1, {"--automate", "moves.csv", "in.wav", "out.wav"});
    EXPECT_LT(cut.size(), 1100U);
    EXPECT_THAT(cut, testing::EndsWith("expected three fields time_s,parameter,value"));
}

// A file of the program must not get the number of a standard stream.
TEST_F(RenderErrors, ClosedStandardStreams) {
    varnoOut({"render", "--save-state", "s.bin", "in.wav", "out.wav"});
    const Bytes audio = content("out.wav");
    const Bytes state = content("s.bin");
    const auto inShell = [&](const std::string& words) {
        return run({"bash", "-c", "\"$0\" render --force --save-state s.bin " + words, VARNO_PROGRAM},
                   {.folder = mFolder.path()});
    };
    const std::string noOutput = "varno: standard output: cannot be written: Bad file descriptor\n";
    for (const std::string output : {"out.wav", "-"}) {
        const auto outcome = inShell("in.wav " + output + " >&-");
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.err, testing::EndsWith(noOutput));
    }
    EXPECT_EQ(inShell("- out.wav <&-").err,
              "varno: standard input: is a device; expected an audio file or a pipe\n");
    EXPECT_EQ(inShell("in.wav out.wav 2>&-").status, 0);
    EXPECT_EQ(inShell("no.wav out.wav 2>&-").status, 1);
    EXPECT_EQ(inShell("in.wav out.wav <&- >&- 2>&-").status, 1);
    EXPECT_EQ(content("out.wav"), audio);
    EXPECT_EQ(content("s.bin"), state);
    EXPECT_EQ(mFolder.listing(), "in.wav out.wav s.bin");
}

} // namespace
} // namespace varno::test
