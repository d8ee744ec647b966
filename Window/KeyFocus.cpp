#include "Window/KeyFocus.h"

#include <utility>

namespace varno {
namespace {

// Outside of what its parent shows: a window without a place would take the pointer there.
constexpr std::int16_t kOutside = -1;

} // namespace

KeyFocus::KeyFocus(XConnection& connection, xcb_window_t parent, KeyHandler handler)
    : mConnection(connection),
      mParent(parent),
      mId(xcb_generate_id(connection.get())),
      mKeyHandler(std::move(handler)),
      mEvents(connection.events().add(mId, [this](const auto& event) { handle(event); })) {
    const std::uint32_t events =
        XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE | XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, mId, parent, kOutside, kOutside, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_map_window(connection.get(), mId);
}

KeyFocus::~KeyFocus() {
    if (mQuestion) {
        xcb_discard_reply(mConnection.get(), *mQuestion);
    }
    xcb_destroy_window(mConnection.get(), mId);
}

void KeyFocus::take(xcb_timestamp_t timeMs) const {
    xcb_set_input_focus(mConnection.get(), XCB_INPUT_FOCUS_PARENT, mId, timeMs);
}

void KeyFocus::takeBack() {
    XReply<xcb_get_input_focus_reply_t> answer;
    if (mQuestion && !mConnection.pollReply(*mQuestion, answer)) {
        return;
    }
    // The answer is as old as the last call: another program may have got the focus since.
    if (answer && isStolen(answer->focus) && isStolen(focusNow())) {
        take();
    }
    mQuestion = xcb_get_input_focus(mConnection.get()).sequence;
}

xcb_window_t KeyFocus::focusNow() const {
    const XReply<xcb_get_input_focus_reply_t> focus(
        xcb_get_input_focus_reply(mConnection.get(), xcb_get_input_focus(mConnection.get()), nullptr));
    return focus ? focus->focus : xcb_window_t{XCB_WINDOW_NONE};
}

bool KeyFocus::isStolen(xcb_window_t focus) {
    if (focus == mId || focus == mElsewhere) {
        return false;
    }
    if (!mConnection.isWithin(focus, mParent)) {
        mElsewhere = focus;
        return false;
    }
    return true;
}

void KeyFocus::handle(const xcb_generic_event_t& event) {
    switch (eventKind(event)) {
    case XCB_KEY_PRESS:
    case XCB_KEY_RELEASE:
        mKeyHandler(eventAs<xcb_key_press_event_t>(event));
        break;
    case XCB_FOCUS_IN:
    case XCB_FOCUS_OUT: {
        const auto& change = eventAs<xcb_focus_in_event_t>(event);
        const bool isByGrab = change.mode == XCB_NOTIFY_MODE_GRAB || change.mode == XCB_NOTIFY_MODE_UNGRAB;
        if (!isByGrab) {
            setFocus(eventKind(event) == XCB_FOCUS_IN);
        }
        break;
    }
    default:
        break;
    }
}

void KeyFocus::setFocus(bool hasFocus) {
    if (hasFocus != mHasFocus) {
        mHasFocus = hasFocus;
        if (mFocusHandler) {
            mFocusHandler(hasFocus);
        }
    }
}

} // namespace varno
