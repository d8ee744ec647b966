#include "Play/Terminal.h"
#include "CommandLine/Console.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>

#include <pty.h>
#include <unistd.h>
#include <vector>

namespace varno {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<LiveAction> actionsOf(TerminalKeys& keys, std::string_view bytes) {
    keys.add(bytes);
    std::vector<LiveAction> actions;
    while (const auto action = keys.next()) {
        actions.push_back(*action);
    }
    return actions;
}

std::vector<LiveAction> actionsOf(std::string_view bytes) {
    TerminalKeys keys;
    return actionsOf(keys, bytes);
}

TEST(TerminalKeys, SingleLetters) {
    EXPECT_THAT(actionsOf("qbds?"), ElementsAre(LiveAction::kQuit, LiveAction::kBypass, LiveAction::kDefault,
                                                LiveAction::kSave, LiveAction::kHelp));
    EXPECT_THAT(actionsOf("kj-+="), ElementsAre(LiveAction::kPrevious, LiveAction::kNext, LiveAction::kDown,
                                                LiveAction::kUp, LiveAction::kUp));
    EXPECT_THAT(actionsOf("\x04"), ElementsAre(LiveAction::kQuit));
}

TEST(TerminalKeys, ArrowsAsEitherKindOfTerminalSendsThem) {
    for (const char* const arrows : {"\x1b[A\x1b[B\x1b[C\x1b[D", "\x1bOA\x1bOB\x1bOC\x1bOD"}) {
        EXPECT_THAT(actionsOf(arrows), ElementsAre(LiveAction::kPrevious, LiveAction::kNext, LiveAction::kUp,
                                                   LiveAction::kDown));
    }
    EXPECT_THAT(actionsOf("\x1b[5~\x1b[6~"), ElementsAre(LiveAction::kFarUp, LiveAction::kFarDown));
}

TEST(TerminalKeys, ASequenceMayComeInParts) {
    TerminalKeys keys;
    EXPECT_THAT(actionsOf(keys, "\x1b"), IsEmpty());
    EXPECT_THAT(actionsOf(keys, "["), IsEmpty());
    EXPECT_THAT(actionsOf(keys, "A"), ElementsAre(LiveAction::kPrevious));
    EXPECT_THAT(actionsOf(keys, "\x1b[6"), IsEmpty());
    EXPECT_THAT(actionsOf(keys, "~q"), ElementsAre(LiveAction::kFarDown, LiveAction::kQuit));
}

TEST(TerminalKeys, OthersDoNothing) {
    EXPECT_THAT(actionsOf("wyz\n\x1b[H\x1b[1;5C\x1b[15~ü"), IsEmpty());
    EXPECT_THAT(actionsOf("\x1bq"), ElementsAre(LiveAction::kQuit)); // Alt-Q, or Escape and then Q
}

TEST(TerminalKeys, TheHelpNamesThem) {
    for (const char* part :
         {"q  ", "b  ", "up, down  ", "left, right  ", "page down, up  ", "d  ", "s  ", "?  "}) {
        EXPECT_THAT(terminalKeysHelp(), HasSubstr(part));
    }
}

class TerminalModeTest : public testing::Test {
protected:
    TerminalModeTest() {
        const winsize size{.ws_row = 24, .ws_col = 100, .ws_xpixel = 0, .ws_ypixel = 0};
        EXPECT_EQ(openpty(&mPerson, &mProgram, nullptr, nullptr, &size), 0);
    }
    ~TerminalModeTest() override {
        close(mPerson);
        close(mProgram);
    }
    tcflag_t localModes() const {
        termios mode{};
        tcgetattr(mProgram, &mode);
        return mode.c_lflag;
    }

    int mPerson = -1;
    int mProgram = -1;
};

TEST_F(TerminalModeTest, IsPutBackAtTheEnd) {
    const tcflag_t before = localModes();
    EXPECT_NE(before & ICANON, 0U);
    EXPECT_NE(before & ECHO, 0U);
    {
        const TerminalMode mode(mProgram);
        EXPECT_EQ(localModes() & (ICANON | ECHO), 0U);
        EXPECT_NE(localModes() & ISIG, 0U);
    }
    EXPECT_EQ(localModes(), before);
}

TEST_F(TerminalModeTest, HandsOverEachKey) {
    const TerminalMode mode(mProgram);
    ASSERT_EQ(write(mPerson, "b\x1a", 2), 2); // without a line end; Ctrl-Z does not stop
    char keys[3] = {};
    ASSERT_EQ(read(mProgram, keys, 1), 1);
    ASSERT_EQ(read(mProgram, keys + 1, 1), 1);
    EXPECT_STREQ(keys, "b\x1a");
}

TEST_F(TerminalModeTest, KnowsItsWidth) {
    EXPECT_EQ(terminalColumns(mProgram), 100U);
    winsize none{};
    ioctl(mProgram, TIOCSWINSZ, &none);
    EXPECT_EQ(terminalColumns(mProgram), 80U);
}

TEST_F(TerminalModeTest, KeysAreForTheForeground) {
    EXPECT_FALSE(takesKeys(mProgram)); // no process controls this terminal
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_FALSE(takesKeys(ends[0]));
    close(ends[0]);
    close(ends[1]);
}

} // namespace
} // namespace varno
