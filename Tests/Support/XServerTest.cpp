#include "Tests/Support/XServer.h"

#include "Tests/Support/ChildProcess.h"
#include "Tests/Support/Eventually.h"

#include <csignal>
#include <gtest/gtest.h>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>
#include <xcb/xcb.h>

namespace {

using varno::test::ChildProcess;
using varno::test::eventually;
using varno::test::XServer;

struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};
using Connection = std::unique_ptr<xcb_connection_t, Disconnect>;

Connection connectTo(const std::string& display) {
    return Connection(xcb_connect(display.c_str(), nullptr));
}

// That a server is gone shows in its connections only: another may get its display at once.
bool breaks(const Connection& connection) {
    return eventually([&connection] {
        EXPECT_EQ(xcb_poll_for_event(connection.get()), nullptr);
        return xcb_connection_has_error(connection.get()) != 0;
    });
}

bool answers(const std::string& display) {
    return xcb_connection_has_error(connectTo(display).get()) == 0;
}

TEST(XServer, ShowsOneScreenOfTheSizeAskedFor) {
    const XServer server(XServer::Screen{640, 480});

    const Connection connection = connectTo(server.display());
    ASSERT_EQ(xcb_connection_has_error(connection.get()), 0);
    const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));

    ASSERT_EQ(screens.rem, 1);
    EXPECT_EQ(screens.data->width_in_pixels, 640);
    EXPECT_EQ(screens.data->height_in_pixels, 480);
    EXPECT_EQ(screens.data->root_depth, 24);
}

TEST(XServer, TwoAtOnceHaveDisplaysOfTheirOwn) {
    const XServer one;
    const XServer other;

    EXPECT_NE(one.display(), other.display());
    EXPECT_TRUE(answers(one.display()));
    EXPECT_TRUE(answers(other.display()));
}

TEST(XServer, IsGoneAfterTheObject) {
    Connection connection;
    {
        const XServer server;
        connection = connectTo(server.display());
        ASSERT_EQ(xcb_connection_has_error(connection.get()), 0);
    }

    EXPECT_TRUE(breaks(connection));
}

TEST(XServer, StopLosesEveryConnection) {
    XServer server;
    const Connection connection = connectTo(server.display());
    ASSERT_EQ(xcb_connection_has_error(connection.get()), 0);

    server.stop();

    EXPECT_TRUE(breaks(connection));
}

TEST(XServer, EndsWithTheProcessThatStartedIt) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t process = fork();
    if (process == 0) {
        const XServer server;
        const std::string& display = server.display();
        const ssize_t written = write(ends[1], display.c_str(), display.size() + 1);
        _exit(written > 0 && pause() == -1 ? 0 : 1);
    }
    std::string display;
    char character = 0;
    while (read(ends[0], &character, 1) == 1 && character != '\0') {
        display += character;
    }
    const Connection connection = connectTo(display);
    ASSERT_EQ(xcb_connection_has_error(connection.get()), 0);

    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    close(ends[0]);
    close(ends[1]);

    EXPECT_TRUE(breaks(connection));
}

TEST(ChildProcess, TellsTheProgramsExitStatus) {
    ChildProcess process({"sh", "-c", "exit 7"});

    ASSERT_TRUE(eventually([&] { return process.status().has_value(); }));
    EXPECT_EQ(process.status(), 7);
}

TEST(ChildProcess, TellsTheSignalThatEndedIt) {
    ChildProcess process({"sleep", "1000"});
    EXPECT_EQ(process.status(), std::nullopt);

    process.signal(SIGKILL);

    ASSERT_TRUE(eventually([&] { return process.status().has_value(); }));
    EXPECT_EQ(process.status(), 128 + SIGKILL);
}

TEST(ChildProcess, ThatCannotBeRunSaysSo) {
    ChildProcess process({"a-program-that-nobody-has"});

    ASSERT_TRUE(eventually([&] { return process.status().has_value(); }));
    EXPECT_EQ(process.status(), ChildProcess::kCannotRun);
}

TEST(ChildProcess, ThatWillNotEndIsEnded) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    pid_t pid = 0;
    {
        const ChildProcess process({"sh", "-c", "trap '' TERM; echo; exec sleep 1000"}, {.output = ends[1]});
        pid = process.pid();
        char deafNow = 0;
        ASSERT_EQ(read(ends[0], &deafNow, 1), 1);
    }
    close(ends[0]);
    close(ends[1]);

    EXPECT_EQ(kill(pid, 0), -1);
}

} // namespace
