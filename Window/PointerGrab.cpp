#include "Window/PointerGrab.h"

#include <utility>

namespace varno {
namespace {

constexpr std::int16_t kBesideScreen = -1; // of the screen
constexpr unsigned kAllButtons =
    XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3 | XCB_BUTTON_MASK_4 | XCB_BUTTON_MASK_5;
constexpr int kLastButton = 5; // of those that a state tells of

// The buttons that are down after a release, whose state is that before.
unsigned buttonsAfter(const xcb_button_release_event_t& event) {
    constexpr int kBitBeforeFirst = 7;
    const unsigned released = event.detail <= kLastButton ? 1U << (event.detail + kBitBeforeFirst) : 0;
    return event.state & kAllButtons & ~released;
}

} // namespace

PointerGrab::PointerGrab(XConnection& connection, Handler handler)
    : mConnection(connection),
      mId(xcb_generate_id(connection.get())),
      mHandler(std::move(handler)),
      mEvents(connection.events().add(mId, [this](const auto& event) { handle(event); })) {
    const std::uint32_t isUnmanaged = 1;
    xcb_create_window(connection.get(), XCB_COPY_FROM_PARENT, mId, connection.screen().root, kBesideScreen,
                      kBesideScreen, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT, &isUnmanaged);
}

PointerGrab::~PointerGrab() {
    xcb_destroy_window(mConnection.get(), mId);
    mConnection.flush();
}

void PointerGrab::begin() {
    mIsWanted = true;
    xcb_map_window(mConnection.get(), mId);
    tryToTake();
}

void PointerGrab::end() {
    mIsWanted = false;
    tick();
}

void PointerGrab::tick() {
    if (mIsWanted && !mIsHeld) {
        tryToTake();
    } else if (!mIsWanted && mIsHeld && !isAButtonDown()) {
        release();
    }
}

bool PointerGrab::isAButtonDown() const {
    const XReply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
        mConnection.get(), xcb_query_pointer(mConnection.get(), mConnection.screen().root), nullptr));
    return reply && (reply->mask & kAllButtons) != 0;
}

// All events go to the window of the grab, also those over other windows of this program.
void PointerGrab::tryToTake() {
    const auto cookie = xcb_grab_pointer(
        mConnection.get(), 0, mId,
        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE | XCB_EVENT_MASK_POINTER_MOTION,
        XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
    const XReply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(mConnection.get(), cookie, nullptr));
    mIsHeld = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void PointerGrab::release() {
    xcb_ungrab_pointer(mConnection.get(), XCB_CURRENT_TIME);
    xcb_unmap_window(mConnection.get(), mId);
    mConnection.flush();
    mIsHeld = false;
}

void PointerGrab::handle(const xcb_generic_event_t& event) {
    const int kind = eventKind(event);
    if (kind != XCB_BUTTON_PRESS && kind != XCB_BUTTON_RELEASE && kind != XCB_MOTION_NOTIFY) {
        return;
    }
    if (mIsWanted) {
        mHandler(event);
    } else if (kind == XCB_BUTTON_RELEASE && mIsHeld &&
               buttonsAfter(eventAs<xcb_button_release_event_t>(event)) == 0) {
        release();
    }
}

} // namespace varno
