#include "Window/EditorWindow.h"

#include "Tests/Support/Eventually.h"
#include "Tests/Support/FakeInput.h"
#include "Tests/Support/XServer.h"
#include "Tests/Window/WindowErrorText.h"
#include "Window/KeyFocus.h"

#include <gmock/gmock.h>

#include <X11/keysym.h>

#include <unistd.h>
#include <xcb/xcb_icccm.h>

namespace varno::test {
namespace {

using namespace std::string_literals;
using testing::Each;
using testing::ElementsAre;

class EditorWindowTest : public testing::Test {
protected:
    EditorWindowTest() {
        mWindow.resize({400, 300});
        mWindow.show();
        mConnection.sync(); // only what is on the screen can have the focus
    }

    // Has the window handle its events until the condition holds.
    template<class Condition>
    bool comes(Condition condition) {
        return eventually([&] {
            mWindow.handleEvents();
            return condition();
        });
    }

    // As a view in the window: a child window of another connection, which receives keys.
    xcb_window_t makeChild() const {
        const xcb_window_t child = xcb_generate_id(mView.connection());
        const std::uint32_t events = XCB_EVENT_MASK_KEY_PRESS;
        xcb_create_window(mView.connection(), XCB_COPY_FROM_PARENT, child, mWindow.id(), 0, 0, 400, 300, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
        xcb_map_window(mView.connection(), child);
        mView.synchronise();
        return child;
    }

    // The keys that the view has received since the last call.
    std::vector<xcb_keycode_t> keysOfView() const {
        mView.synchronise();
        std::vector<xcb_keycode_t> keys;
        while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(mView.connection())}) {
            if ((event->response_type & 0x7F) == XCB_KEY_PRESS) {
                keys.push_back(reinterpret_cast<const xcb_key_press_event_t&>(*event).detail);
            }
        }
        return keys;
    }

    xcb_window_t focus() const { return mPerson.focus(); }
    void giveFocus(xcb_window_t window) const { mPerson.giveFocus(window); }

    std::vector<std::uint32_t> words(std::string_view property) {
        const auto cookie =
            xcb_get_property(mPerson.connection(), 0, mWindow.id(), mConnection.atom(property),
                             XCB_GET_PROPERTY_TYPE_ANY, 0, 1U << 20);
        const XReply<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(mPerson.connection(), cookie, nullptr));
        const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
        return {first, first + xcb_get_property_value_length(reply.get()) / 4};
    }

    // A message of the window manager's protocols.
    void send(std::string_view protocol) {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = mWindow.id();
        message.type = mConnection.atom("WM_PROTOCOLS");
        message.data.data32[0] = mConnection.atom(protocol);
        message.data.data32[2] = mWindow.id();
        xcb_send_event(mPerson.connection(), 0, mWindow.id(), XCB_EVENT_MASK_NO_EVENT,
                       reinterpret_cast<const char*>(&message));
        mPerson.synchronise();
    }

    XServer mServer;
    XConnection mConnection{mServer.display()};
    XClient mPerson{mServer.display()};
    XClient mView{mServer.display()};
    Keyboard mKeyboard{mPerson};
    Pointer mPointer{mPerson};
    EditorWindow mWindow{
        mConnection, EditorWindow::Kind::kManaged, {"Varno-S \u2013 drums.wav", {1, 1, 0xFF123456}}};
};

TEST_F(EditorWindowTest, DescribesItselfToTheDesktop) {
    EXPECT_EQ(mConnection.text(mWindow.id(), mConnection.atom("_NET_WM_NAME")), "Varno-S \u2013 drums.wav");
    EXPECT_EQ(mConnection.text(mWindow.id(), XCB_ATOM_WM_NAME), "Varno-S \u2013 drums.wav");
    EXPECT_EQ(mConnection.text(mWindow.id(), XCB_ATOM_WM_CLASS), "varno\0Varno\0"s);
    EXPECT_THAT(words("_NET_WM_PID"), ElementsAre(static_cast<std::uint32_t>(::getpid())));
    EXPECT_NE(mConnection.text(mWindow.id(), XCB_ATOM_WM_CLIENT_MACHINE), "");
    EXPECT_THAT(words("_NET_WM_ICON"), ElementsAre(1, 1, 0xFF123456));
    EXPECT_THAT(words("WM_PROTOCOLS"),
                ElementsAre(mConnection.atom("WM_DELETE_WINDOW"), mConnection.atom("_NET_WM_PING")));
}

TEST_F(EditorWindowTest, HasOneSizeOnly) {
    for (const WindowSize size : {WindowSize{400, 300}, WindowSize{1380, 780}, WindowSize{1, 1}}) {
        mWindow.resize(size);
        mConnection.sync();
        xcb_size_hints_t hints{};
        ASSERT_TRUE(xcb_icccm_get_wm_normal_hints_reply(
            mPerson.connection(), xcb_icccm_get_wm_normal_hints(mPerson.connection(), mWindow.id()), &hints,
            nullptr));
        EXPECT_EQ(hints.flags & (XCB_ICCCM_SIZE_HINT_P_MIN_SIZE | XCB_ICCCM_SIZE_HINT_P_MAX_SIZE),
                  unsigned{XCB_ICCCM_SIZE_HINT_P_MIN_SIZE | XCB_ICCCM_SIZE_HINT_P_MAX_SIZE});
        const std::vector<int> widths = {hints.min_width, hints.max_width};
        const std::vector<int> heights = {hints.min_height, hints.max_height};
        EXPECT_THAT(widths, Each(size.width));
        EXPECT_THAT(heights, Each(size.height));
        const XReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
            mPerson.connection(), xcb_get_geometry(mPerson.connection(), mWindow.id()), nullptr));
        EXPECT_EQ(geometry->width, size.width);
        EXPECT_EQ(geometry->height, size.height);
    }
}

TEST_F(EditorWindowTest, OnlyAnUnmanagedOneIsKeptFromWindowManagers) {
    const EditorWindow other(mConnection, EditorWindow::Kind::kUnmanaged, {"Picture", {}});
    const auto isUnmanaged = [&](xcb_window_t window) {
        const XReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
            mPerson.connection(), xcb_get_window_attributes(mPerson.connection(), window), nullptr));
        return reply->override_redirect != 0;
    };
    EXPECT_FALSE(isUnmanaged(mWindow.id()));
    EXPECT_TRUE(isUnmanaged(other.id()));
}

TEST_F(EditorWindowTest, AsksBeforeItIsClosed) {
    send("WM_DELETE_WINDOW"); // no handler is set yet
    mWindow.handleEvents();
    bool isAsked = false;
    mWindow.setCloseHandler([&] { isAsked = true; });
    send("WM_STATE"); // of no protocol
    mWindow.handleEvents();
    EXPECT_FALSE(isAsked);
    send("WM_DELETE_WINDOW");
    EXPECT_TRUE(comes([&] { return isAsked; }));
}

TEST_F(EditorWindowTest, AnswersThatItIsAlive) {
    const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(mPerson.connection(), mPerson.screen().root, XCB_CW_EVENT_MASK, &events);
    send("_NET_WM_PING");
    EXPECT_TRUE(comes([&] {
        const XReply<xcb_generic_event_t> event(xcb_poll_for_event(mPerson.connection()));
        if (!event || (event->response_type & 0x7F) != XCB_CLIENT_MESSAGE) {
            return false;
        }
        const auto& answer = reinterpret_cast<const xcb_client_message_event_t&>(*event);
        return answer.window == mPerson.screen().root &&
               answer.data.data32[0] == mConnection.atom("_NET_WM_PING") &&
               answer.data.data32[2] == mWindow.id();
    }));
}

TEST_F(EditorWindowTest, ItsKeysWorkWhereverTheFocusIsAndWhateverIsLocked) {
    const xcb_window_t child = makeChild();
    int saves = 0;
    mWindow.setBindings({{XK_s, XCB_MOD_MASK_CONTROL, [&] { ++saves; }}});
    mConnection.sync();
    int expected = 0;
    for (const xcb_window_t focused : {mWindow.id(), child}) {
        giveFocus(focused);
        for (const std::vector<xcb_keysym_t>& locks :
             {std::vector<xcb_keysym_t>{}, {XK_Caps_Lock}, {XK_Num_Lock}, {XK_Caps_Lock, XK_Num_Lock}}) {
            for (const auto lock : locks) {
                mKeyboard.tap(lock);
            }
            mKeyboard.tap(XK_s, {XK_Control_L});
            ++expected;
            EXPECT_TRUE(comes([&] { return saves == expected; })) << locks.size();
            for (const auto lock : locks) {
                mKeyboard.tap(lock);
            }
        }
    }
    EXPECT_THAT(keysOfView(), testing::Not(testing::Contains(keycodeOf(mPerson, XK_s))));
}

TEST_F(EditorWindowTest, OtherKeysReachTheView) {
    const xcb_window_t child = makeChild();
    mWindow.setBindings({{XK_s, XCB_MOD_MASK_CONTROL, [] { FAIL(); }}});
    mConnection.sync();
    mPointer.move({10, 10}); // in the window; no window has received the focus
    mKeyboard.tap(XK_s);
    mKeyboard.tap(XK_s, {XK_Control_L, XK_Shift_L});
    EXPECT_THAT(keysOfView(), ElementsAre(keycodeOf(mPerson, XK_s), keycodeOf(mPerson, XK_Control_L),
                                          keycodeOf(mPerson, XK_Shift_L), keycodeOf(mPerson, XK_s)));
    mPointer.move({600, 600});
    giveFocus(mWindow.id());
    EXPECT_TRUE(comes([&] { return focus() == child; }));
    mKeyboard.tap(XK_c);
    EXPECT_THAT(keysOfView(), ElementsAre(keycodeOf(mPerson, XK_c)));
}

TEST_F(EditorWindowTest, KeysThatComeBeforeTheViewHasTheFocusReachItToo) {
    makeChild();
    mPointer.move({600, 600});
    giveFocus(mWindow.id());
    mKeyboard.tap(XK_v);
    std::vector<xcb_keycode_t> keys;
    EXPECT_TRUE(comes([&] {
        keys = keysOfView();
        return !keys.empty();
    }));
    EXPECT_THAT(keys, ElementsAre(keycodeOf(mPerson, XK_v)));
}

// A front end that takes all keys itself.
TEST_F(EditorWindowTest, AnotherWindowMayTakeTheKeysOfTheView) {
    makeChild();
    std::vector<xcb_keycode_t> keys;
    KeyFocus taking(mConnection, mWindow.id(), [&](const auto& event) {
        if (eventKind(reinterpret_cast<const xcb_generic_event_t&>(event)) == XCB_KEY_PRESS) {
            keys.push_back(event.detail);
        }
    });
    mWindow.setFocusWindow(taking.id());
    mConnection.sync();
    giveFocus(mWindow.id());
    mKeyboard.tap(XK_v); // before it has the focus
    EXPECT_TRUE(comes([&] { return focus() == taking.id() && !keys.empty(); }));
    mKeyboard.tap(XK_c);
    EXPECT_TRUE(comes([&] { return keys.size() == 2; }));
    EXPECT_THAT(keys, ElementsAre(keycodeOf(mPerson, XK_v), keycodeOf(mPerson, XK_c)));
    mPointer.move({10, 10}); // over the view
    mKeyboard.tap(XK_s);
    EXPECT_TRUE(comes([&] { return keys.size() == 3; }));
    EXPECT_TRUE(keysOfView().empty());
}

TEST_F(EditorWindowTest, KeepsTheFocusWhereThatIsSet) {
    makeChild();
    int keys = 0;
    mWindow.setFocusWindow(mWindow.id());
    const auto events = mConnection.events().add(
        mWindow.id(), [&](const auto& event) { keys += eventKind(event) == XCB_KEY_PRESS ? 1 : 0; });
    giveFocus(mWindow.id());
    mKeyboard.tap(XK_v);
    EXPECT_TRUE(comes([&] { return keys == 1; }));
    mConnection.sync();
    mWindow.handleEvents();
    EXPECT_EQ(keys, 1); // not sent to itself once more
    EXPECT_EQ(focus(), mWindow.id());
    EXPECT_TRUE(keysOfView().empty());
}

// Windows in it that go are not the window.
TEST_F(EditorWindowTest, StaysWhereAWindowInItGoes) {
    mConnection.select(mWindow.id(), XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    const auto child = makeChild();
    mConnection.sync();
    mPerson.destroyWindow(child);
    bool isSeen = false;
    const auto events = mConnection.events().add(
        mWindow.id(), [&](const auto& event) { isSeen = isSeen || eventKind(event) == XCB_DESTROY_NOTIFY; });
    EXPECT_TRUE(comes([&] { return isSeen; }));
    EXPECT_TRUE(mConnection.has(mWindow.id()));
}

TEST_F(EditorWindowTest, WithoutAViewKeysGoNowhere) {
    giveFocus(mWindow.id());
    mKeyboard.tap(XK_v);
    mWindow.handleEvents();
    EXPECT_EQ(focus(), mWindow.id());
}

TEST_F(EditorWindowTest, KeysAreFoundAgainOnAnotherLayout) {
    int saves = 0;
    mWindow.setBindings({{XK_s, XCB_MOD_MASK_CONTROL, [&] { ++saves; }}});
    giveFocus(mWindow.id());
    const auto before = keycodeOf(mPerson, XK_s);
    const auto after = keycodeOf(mPerson, XK_d);
    const xcb_keysym_t s[] = {XK_s, XK_S};
    const xcb_keysym_t d[] = {XK_d, XK_D};
    xcb_change_keyboard_mapping(mPerson.connection(), 1, after, 2, s);
    xcb_change_keyboard_mapping(mPerson.connection(), 1, before, 2, d);
    mPerson.synchronise();
    ASSERT_EQ(keycodeOf(mPerson, XK_s), after);
    mWindow.handleEvents();
    mConnection.sync();
    mKeyboard.tap(XK_s, {XK_Control_L});
    EXPECT_TRUE(comes([&] { return saves == 1; }));
    mKeyboard.tap(XK_d, {XK_Control_L});
    mWindow.handleEvents();
    EXPECT_EQ(saves, 1);
}

// A keyboard whose first layout has no Latin letters, with a Latin one beside it.
TEST_F(EditorWindowTest, KeysOfASecondLayoutAreFound) {
    int saves = 0;
    mWindow.setBindings({{XK_s, XCB_MOD_MASK_CONTROL, [&] { ++saves; }}});
    giveFocus(mWindow.id());
    const auto code = keycodeOf(mPerson, XK_s);
    const xcb_keysym_t symbols[] = {XK_Cyrillic_yeru, XK_Cyrillic_YERU, XK_s, XK_S};
    xcb_change_keyboard_mapping(mPerson.connection(), 1, code, 4, symbols);
    mPerson.synchronise();
    mWindow.handleEvents();
    mConnection.sync();
    mKeyboard.tap(XK_Cyrillic_yeru, {XK_Control_L});
    EXPECT_TRUE(comes([&] { return saves == 1; }));
}

TEST_F(EditorWindowTest, IsHiddenAndShownAgain) {
    EXPECT_TRUE(mPerson.isShown(mWindow.id()));
    mWindow.hide();
    mConnection.sync();
    EXPECT_FALSE(mPerson.isShown(mWindow.id()));
    mWindow.show();
    mConnection.sync();
    EXPECT_TRUE(mPerson.isShown(mWindow.id()));
}

TEST_F(EditorWindowTest, IsGoneAfterTheObject) {
    xcb_window_t id = XCB_WINDOW_NONE;
    {
        const EditorWindow other(mConnection, EditorWindow::Kind::kManaged, {"Short", {}});
        id = other.id();
    }
    mConnection.sync();
    const XReply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(mPerson.connection(), xcb_get_geometry(mPerson.connection(), id), nullptr));
    EXPECT_EQ(geometry, nullptr);
}

TEST_F(EditorWindowTest, NoticesThatItWasDestroyed) {
    mPerson.destroyWindow(mWindow.id());
    EXPECT_EQ(windowError([&] { comes([] { return false; }); }), "the window was destroyed from outside");
}

TEST_F(EditorWindowTest, NoticesThatTheServerHasGone) {
    mServer.stop();
    EXPECT_EQ(windowError([&] { comes([] { return false; }); }),
              "the connection to the X server at DISPLAY \"" + mServer.display() + "\" is lost");
}

} // namespace
} // namespace varno::test
