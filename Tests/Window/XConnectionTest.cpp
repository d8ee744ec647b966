#include "Window/XConnection.h"
#include "Tests/Support/Eventually.h"
#include "Tests/Support/XClient.h"
#include "Tests/Support/XServer.h"
#include "Tests/Window/WindowErrorText.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <xcb/randr.h>

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

TEST(XConnectionTest, EndsWhenItsRequestsAreDone) {
    const XServer server;
    const XConnection other(server.display());
    {
        XConnection connection(server.display());
        xcb_change_property(connection.get(), XCB_PROP_MODE_REPLACE, connection.screen().root,
                            XCB_ATOM_RESOURCE_MANAGER, XCB_ATOM_STRING, 8, 4, "done");
    }
    EXPECT_EQ(other.text(other.screen().root, XCB_ATOM_RESOURCE_MANAGER), "done");
}

TEST(XConnectionTest, ReadsNumbersOfWindows) {
    const XServer server;
    const XClient person(server.display());
    XConnection connection(server.display());
    const auto root = connection.screen().root;
    const auto property = connection.atom("VARNO_NUMBERS");
    const std::vector<std::uint32_t> numbers = {1, 0xFFFFFFFF, 3};
    xcb_change_property(person.connection(), XCB_PROP_MODE_REPLACE, root, property, XCB_ATOM_CARDINAL, 32, 3,
                        numbers.data());
    person.synchronise();
    EXPECT_EQ(connection.words(root, property), numbers);
    EXPECT_TRUE(connection.words(root, connection.atom("VARNO_NOTHING")).empty());
    xcb_change_property(person.connection(), XCB_PROP_MODE_REPLACE, root, property, XCB_ATOM_STRING, 8, 12,
                        "twelve bytes");
    person.synchronise();
    EXPECT_TRUE(connection.words(root, property).empty());
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

TEST(XConnectionTest, FindsWhatAWindowIsIn) {
    const XServer server;
    const XClient person(server.display());
    const XConnection connection(server.display());
    const auto root = connection.screen().root;
    const XWindow outer(person, {0, 0, 10, 10});
    const XWindow middle(person, {0, 0, 10, 10});
    const XWindow inner(person, {0, 0, 10, 10});
    xcb_reparent_window(person.connection(), middle.id(), outer.id(), 0, 0);
    xcb_reparent_window(person.connection(), inner.id(), middle.id(), 0, 0);
    person.synchronise();
    EXPECT_EQ(connection.parent(inner.id()), middle.id());
    EXPECT_EQ(connection.parent(outer.id()), root);
    EXPECT_EQ(connection.parent(root), xcb_window_t{XCB_WINDOW_NONE});
    EXPECT_EQ(connection.topLevel(inner.id()), outer.id());
    EXPECT_EQ(connection.topLevel(outer.id()), outer.id());
    EXPECT_EQ(connection.topLevel(XCB_WINDOW_NONE), xcb_window_t{XCB_WINDOW_NONE});
    EXPECT_EQ(connection.topLevel(root), xcb_window_t{XCB_WINDOW_NONE});
    EXPECT_TRUE(connection.isWithin(inner.id(), outer.id()));
    EXPECT_TRUE(connection.isWithin(outer.id(), outer.id()));
    EXPECT_FALSE(connection.isWithin(outer.id(), inner.id()));
    EXPECT_FALSE(connection.isWithin(XCB_WINDOW_NONE, outer.id()));
}

class XConnectionEvents : public testing::Test {
protected:
    // Handles what has been sent, and counts the kinds of events of the window.
    int count(int kind) {
        mConnection.sync();
        mPerson.synchronise();
        mConnection.sync();
        mKinds.clear();
        mConnection.handleEvents();
        return static_cast<int>(std::count(mKinds.begin(), mKinds.end(), kind));
    }
    void changeProperty() const {
        xcb_change_property(mPerson.connection(), XCB_PROP_MODE_REPLACE, mWindow.id(), XCB_ATOM_WM_NAME,
                            XCB_ATOM_STRING, 8, 1, "x");
        mPerson.synchronise();
    }

    XServer mServer;
    XClient mPerson{mServer.display()};
    XConnection mConnection{mServer.display()};
    XWindow mWindow{mPerson, {0, 0, 10, 10}};
    std::vector<int> mKinds;
    WindowEvents::Registration mEvents{mConnection.events().add(
        mWindow.id(), [this](const auto& event) { mKinds.push_back(eventKind(event)); })};
};

TEST_F(XConnectionEvents, AreSelectedBesidesThoseBefore) {
    mConnection.select(mWindow.id(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    mConnection.select(mWindow.id(), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    mConnection.sync();
    changeProperty();
    EXPECT_EQ(count(XCB_PROPERTY_NOTIFY), 1);
    mWindow.destroy();
    EXPECT_EQ(count(XCB_DESTROY_NOTIFY), 1);
    mConnection.select(mWindow.id(), XCB_EVENT_MASK_STRUCTURE_NOTIFY); // of no window
    EXPECT_TRUE(count(XCB_DESTROY_NOTIFY) == 0 && mKinds.empty());
}

TEST_F(XConnectionEvents, ErrorsAboutWindowsAreIgnored) {
    const auto nobody = mConnection.events().add(XCB_WINDOW_NONE, [](const auto&) { FAIL(); });
    mConnection.select(mWindow.id(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    xcb_map_window(mConnection.get(), 0xABCDEF);
    mConnection.sync();
    changeProperty();
    EXPECT_EQ(count(XCB_PROPERTY_NOTIFY), 1);
}

TEST_F(XConnectionEvents, GoOnAfterAHandlerThatFails) {
    mConnection.select(mWindow.id(), XCB_EVENT_MASK_PROPERTY_CHANGE);
    mConnection.sync();
    auto failing = mConnection.events().add(mWindow.id(), [](const auto&) { throw WindowError("this one"); });
    changeProperty();
    changeProperty();
    EXPECT_EQ(windowError([&] { count(0); }), "this one");
    failing.reset();
    EXPECT_EQ(count(XCB_PROPERTY_NOTIFY), 1);
}

TEST_F(XConnectionEvents, RequestsAreSentAfterThem) {
    const auto window = xcb_generate_id(mConnection.get());
    xcb_create_window(mConnection.get(), XCB_COPY_FROM_PARENT, window, mWindow.id(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    mConnection.handleEvents();
    EXPECT_TRUE(eventually([&] { return mPerson.countChildren(mWindow.id()) == 1; }));
}

TEST_F(XConnectionEvents, OfALostServerAreAnError) {
    mServer.stop();
    EXPECT_EQ(windowError([&] {
                  eventually([&] {
                      mConnection.handleEvents();
                      return false;
                  });
              }),
              "the connection to the X server at DISPLAY \"" + mServer.display() + "\" is lost");
}

TEST(XConnectionTest, KnowsTheExtensionsOfItsServer) {
    const XServer with;
    EXPECT_TRUE(XConnection(with.display()).hasExtension(xcb_randr_id));
    const XServer without({}, {"-extension", "RANDR"});
    EXPECT_FALSE(XConnection(without.display()).hasExtension(xcb_randr_id));
    EXPECT_EQ(XConnection(with.display()).screenNumber(), 0);
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
