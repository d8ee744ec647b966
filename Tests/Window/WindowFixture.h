/// A window of the program under test with a view of another client in it, and a person in front of it.
#ifndef VARNO_TESTS_WINDOW_WINDOWFIXTURE_H
#define VARNO_TESTS_WINDOW_WINDOWFIXTURE_H

#include "Tests/Support/Eventually.h"
#include "Tests/Support/FakeInput.h"
#include "Tests/Support/Picture.h"
#include "Tests/Support/XServer.h"
#include "Window/XConnection.h"

#include <gmock/gmock.h>

#include <utility>
#include <vector>

namespace varno::test {

inline constexpr Area kShellArea{100, 100, 300, 200}; ///< On the screen.
inline constexpr std::uint32_t kViewColour = 0x204060;

class WindowFixture : public testing::Test {
protected:
    explicit WindowFixture(const std::vector<std::string>& serverWords = {})
        : mServer({}, serverWords) {
        const std::uint32_t isUnmanaged = 1;
        xcb_create_window(mConnection.get(), XCB_COPY_FROM_PARENT, mShell, mConnection.screen().root,
                          kShellArea.x, kShellArea.y, kShellArea.width, kShellArea.height, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                          &isUnmanaged);
        xcb_map_window(mConnection.get(), mShell);
        mConnection.sync();
        mChild = makeChild();
        mPointer.move({0, 0});
    }

    /// A view over the whole window, above its other children, that takes keys and buttons.
    xcb_window_t makeChild() const {
        auto* const view = mView.connection();
        const xcb_window_t child = xcb_generate_id(view);
        const std::uint32_t values[] = {kViewColour, XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE |
                                                         XCB_EVENT_MASK_BUTTON_PRESS |
                                                         XCB_EVENT_MASK_BUTTON_RELEASE};
        xcb_create_window(view, XCB_COPY_FROM_PARENT, child, mShell, 0, 0, kShellArea.width,
                          kShellArea.height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                          XCB_CW_BACK_PIXEL | XCB_CW_EVENT_MASK, values);
        xcb_map_window(view, child);
        mView.synchronise();
        return child;
    }

    /// Has every request carried out, and every event that comes of it handled.
    void settle() {
        mConnection.sync();
        mPerson.synchronise();
        mConnection.sync();
        mConnection.handleEvents();
        mConnection.sync();
        mConnection.handleEvents();
    }

    /// Has events handled until the condition holds.
    template<class Condition>
    bool comes(Condition condition) {
        return eventually([&] {
            mConnection.handleEvents();
            return condition();
        });
    }

    /// Kind and detail (button, key) of the events that the view has received since the last call.
    std::vector<std::pair<int, int>> viewEvents() const {
        mView.synchronise();
        std::vector<std::pair<int, int>> events;
        while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(mView.connection())}) {
            if (const int kind = eventKind(*event); kind >= XCB_KEY_PRESS && kind <= XCB_BUTTON_RELEASE) {
                events.emplace_back(kind, eventAs<xcb_key_press_event_t>(*event).detail);
            }
        }
        return events;
    }

    Picture picture() const {
        return Picture::ofWindow(mPerson, mShell, {0, 0, kShellArea.width, kShellArea.height});
    }
    /// A place in the window, on the screen.
    static Place onScreen(Place place) { return Place{kShellArea.x, kShellArea.y} + place; }

    xcb_window_t focus() const { return mPerson.focus(); }
    void giveFocus(xcb_window_t window) const { mPerson.giveFocus(window); }

    XServer mServer;
    XConnection mConnection{mServer.display()};
    XClient mPerson{mServer.display()};
    XClient mView{mServer.display()};
    Keyboard mKeyboard{mPerson};
    Pointer mPointer{mPerson};
    const xcb_window_t mShell = xcb_generate_id(mConnection.get());
    xcb_window_t mChild = XCB_WINDOW_NONE;
};

} // namespace varno::test

#endif
