#include "TerminalMode.h"

#include <gtest/gtest.h>

#include <pty.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace varno {
namespace {

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
    EXPECT_FALSE(takesKeys(mProgram)); // the terminal of nobody
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    EXPECT_FALSE(takesKeys(ends[0]));
    close(ends[0]);
    close(ends[1]);
}

} // namespace
} // namespace varno
