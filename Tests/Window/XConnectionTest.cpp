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

TEST(DesktopScale, IsPlainWithoutAnyWord) {
    EXPECT_EQ(desktopScale({}, ""), 1.0);
    EXPECT_EQ(desktopScale({}, "*background:\tgrey\nXft.hinting:\t1\n"), 1.0);
}

TEST(DesktopScale, FollowsTheDotsPerInch) {
    EXPECT_EQ(desktopScale({}, "Xft.dpi:\t192\n"), 2.0);
    EXPECT_EQ(
        desktopScale({}, "*customization:\t-color\nXft.antialias:\t1\nXft.dpi:\t144\nXft.rgba:\tnone\n"),
        1.5);
    EXPECT_EQ(desktopScale({}, "Xft.dpi: 120"), 1.25);
    EXPECT_EQ(desktopScale({}, "  Xft.dpi:96.0 \r\n"), 1.0);
    EXPECT_EQ(desktopScale({}, "Xft.dpi:\t96\nXft.dpi:\t288\n"), 3.0); // the last counts
}

TEST(DesktopScale, GdkScaleGoesBeforeTheDesktop) {
    EXPECT_EQ(desktopScale("3", "Xft.dpi:\t192\n"), 3.0);
    EXPECT_EQ(desktopScale("1", "Xft.dpi:\t192\n"), 1.0);
    EXPECT_EQ(desktopScale("1.25", ""), 1.25);
}

TEST(DesktopScale, WhatMakesNoSenseIsNotSet) {
    for (const char* text : {"", "x", "0", "-2", "nan", "inf", "0.4", "8.1", "2x"}) {
        EXPECT_EQ(desktopScale(text, "Xft.dpi:\t192\n"), 2.0) << text;
    }
    for (const char* text : {"Xft.dpi:", "Xft.dpi:\tmany", "Xft.dpi:\t0", "Xft.dpi:\t-96", "Xft.dpi:\t1e9",
                             "Xft.dpi:\tnan", "Xft.dpi 192", "myXft.dpi:\t192", "\n\n\n"}) {
        EXPECT_EQ(desktopScale({}, text), 1.0) << text;
    }
}

} // namespace
} // namespace varno::test
