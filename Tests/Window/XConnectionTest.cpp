#include "Window/XConnection.h"
#include "Tests/Support/XClient.h"
#include "Tests/Support/XServer.h"
#include "Tests/Window/WindowErrorText.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

TEST(XConnectionErrors, WithoutADisplay) {
    EXPECT_EQ(windowError([] { XConnection(""); }),
              "cannot open a display: DISPLAY is not set; expected the name of an X server, such as \":0\"");
}

TEST(XConnectionErrors, WhereNothingAnswers) {
    for (const std::string name : {":4711", "nonsense", ":0.77", "nobody.invalid:1"}) {
        EXPECT_EQ(windowError([&] { const XConnection connection(name); }),
                  "cannot open a display: no X server answers at DISPLAY \"" + name + '"');
    }
}

TEST(XConnectionErrors, WhereTheServerLacksTheScreen) {
    const XServer server;
    const std::string name = server.display() + ".7";
    EXPECT_EQ(windowError([&] { const XConnection connection(name); }),
              "cannot open a display: no X server answers at DISPLAY \"" + name + '"');
}

TEST(XConnectionTest, ReadsTextsOfWindows) {
    const XServer server;
    const XClient person(server.display());
    const std::string resources = "Xft.dpi:\t144\n" + std::string(9000, 'x');
    xcb_change_property(person.connection(), XCB_PROP_MODE_REPLACE, person.screen().root,
                        XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 8,
                        static_cast<std::uint32_t>(resources.size()), resources.data());
    person.synchronise();

    XConnection connection(server.display());
    EXPECT_EQ(connection.text(connection.screen().root, XCB_ATOM_RESOURCE_MANAGER), resources);
    EXPECT_EQ(connection.text(connection.screen().root, connection.atom("VARNO_NOTHING")), "");
    EXPECT_EQ(connection.atom("VARNO_NOTHING"), connection.atom("VARNO_NOTHING"));
    EXPECT_NE(connection.atom("VARNO_NOTHING"), connection.atom("VARNO_OTHER"));
    EXPECT_EQ(connection.poll(), nullptr);
}

TEST(XConnectionTest, FindsWindowsInAWindow) {
    const XServer server;
    const XClient person(server.display());
    const XConnection connection(server.display());
    EXPECT_TRUE(connection.children(connection.screen().root).empty());
    const XWindow outer(person, {0, 0, 10, 10});
    EXPECT_EQ(connection.children(connection.screen().root), std::vector{outer.id()});
    EXPECT_TRUE(connection.children(outer.id()).empty());
    EXPECT_TRUE(connection.children(XCB_WINDOW_NONE).empty());
    EXPECT_TRUE(connection.has(outer.id()));
    EXPECT_FALSE(connection.has(XCB_WINDOW_NONE));
}

TEST(XConnectionTest, NoticesThatTheServerHasGone) {
    XServer server;
    XConnection connection(server.display());
    connection.sync();
    connection.throwIfLost();
    server.stop();
    EXPECT_EQ(windowError([&] { connection.sync(); }),
              "the connection to the X server at DISPLAY \"" + server.display() + "\" is lost");
    EXPECT_EQ(connection.text(connection.screen().root, XCB_ATOM_RESOURCE_MANAGER), "");
    EXPECT_EQ(windowError([&] { connection.atom("VARNO_NEVER"); }),
              "the connection to the X server at DISPLAY \"" + server.display() + "\" is lost");
}

} // namespace
} // namespace varno::test
