#include "Tests/Apps/varno/Support/ProgramTest.h"

// Each error of `varno play` on a machine without a sound system: one line that states the reason.

namespace varno::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

class PlayErrors : public ProgramTest {
protected:
    std::string refused(int status, std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "play");
        const auto outcome =
            runVarno(arguments, {.folder = mFolder.path(),
                                 .environment = {"DISPLAY=", "JACK_DEFAULT_SERVER=varno-no-server",
                                                 "PULSE_SERVER=unix:/nowhere", "ALSA_CONFIG_PATH=/nowhere"}});
        EXPECT_EQ(outcome.status, status);
        return onlyLine(outcome);
    }
};

TEST_F(PlayErrors, NoSoundSystem) {
    EXPECT_THAT(refused(1, {}),
                AllOf(StartsWith("no sound system can be had (JACK: no server \"varno-no-server\" "
                                 "answers; RtAudio: PulseAudio: "),
                      HasSubstr(", ALSA: ")));
    EXPECT_EQ(refused(1, {"--backend", "jack"}),
              "no sound system can be had (JACK: no server \"varno-no-server\" answers)");
    EXPECT_THAT(refused(1, {"--backend", "rtaudio"}),
                StartsWith("no sound system can be had (RtAudio: PulseAudio: "));
}

TEST_F(PlayErrors, Options) {
    EXPECT_EQ(refused(2, {"--backend", "oss"}),
              "option --backend: expected auto, jack or rtaudio, found \"oss\"");
    EXPECT_EQ(refused(2, {"--mono", "--stereo"}), "options --mono and --stereo exclude each other");
    EXPECT_EQ(refused(2, {"--connect", "--no-connect"}),
              "options --connect and --no-connect exclude each other");
    EXPECT_EQ(refused(2, {"--edit", "--no-edit"}), "options --edit and --no-edit exclude each other");
    EXPECT_EQ(refused(2, {"--name", ""}),
              "option --name: expected 1 to 63 bytes without a colon, found \"\"");
    EXPECT_EQ(refused(2, {"--name", "a:b"}),
              "option --name: expected 1 to 63 bytes without a colon, found \"a:b\"");
    EXPECT_EQ(refused(2, {"--rate", "8000"}),
              "option --rate: expected a number from 16000 to 384000, found \"8000\"");
    EXPECT_EQ(refused(2, {"--period", "8"}),
              "option --period: expected a whole number from 16 to 8192, found \"8\"");
    EXPECT_EQ(refused(2, {"in.wav"}), "unexpected argument \"in.wav\" of play");
}

TEST_F(PlayErrors, SettingsComeBeforeTheSound) {
    EXPECT_EQ(refused(2, {"--set", "Gain"}), "--set Gain: expected ID=VALUE, for instance Hot=0.5");
    EXPECT_EQ(refused(1, {"--state", "no.state"}), "no.state: cannot be read: No such file or directory");
    EXPECT_EQ(refused(1, {"--edit"}),
              "cannot open a display: DISPLAY is not set; expected the name of an X server, such as \":0\"");
}

} // namespace
} // namespace varno::test
