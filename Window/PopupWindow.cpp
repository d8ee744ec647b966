#include "Window/PopupWindow.h"

#include "Window/Monitors.h"
#include "Window/WindowPainting.h"

#include <xcb/shape.h>
#include <xcb/xcb_icccm.h>

#include <algorithm>
#include <string>
#include <utility>

namespace varno {
namespace {

constexpr std::uint8_t kAtomBits = 32;
// Instance and class, each with its terminating zero, as of the other windows of the product.
constexpr char kPopupClass[] = "varno\0Varno";

} // namespace

WindowArea placePopup(const WindowArea& anchor, WindowSize size, const WindowArea& monitor) {
    const int width = std::min(size.width, monitor.width);
    const int height = std::min(size.height, monitor.height);
    const int below = monitor.bottom() - anchor.bottom();
    const int above = anchor.y - monitor.y;
    const bool isAbove = below < height && above > below;
    const int y = isAbove ? anchor.y - height : anchor.bottom();
    return {std::clamp(anchor.x, monitor.x, monitor.right() - width),
            std::clamp(y, monitor.y, monitor.bottom() - height), width, height};
}

PopupWindow::PopupWindow(XConnection& connection, xcb_window_t owner, Kind kind, Handlers handlers)
    : mConnection(connection),
      mOwner(owner),
      mKind(kind),
      mHandlers(std::make_shared<const Handlers>(std::move(handlers))),
      mId(xcb_generate_id(connection.get())),
      mGrab(connection, [this](const auto& event) { handle(event); }),
      mEvents(connection.events().add(mId, [this](const auto& event) { handle(event); })) {
    if (!canPaint(connection)) {
        throw WindowError("the screen's form of pixels, " + std::to_string(connection.screen().root_depth) +
                          " bits deep, cannot be drawn; expected red, green and blue of 16, 24 or 30 bits");
    }
    auto* const server = connection.get();
    const bool isTip = kind == Kind::kTip;
    const std::uint32_t values[] = {
        1, 1,
        isTip ? 0U
              : std::uint32_t{XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                              XCB_EVENT_MASK_POINTER_MOTION | XCB_EVENT_MASK_LEAVE_WINDOW}};
    xcb_create_window(server, XCB_COPY_FROM_PARENT, mId, connection.screen().root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_OVERRIDE_REDIRECT | XCB_CW_SAVE_UNDER | XCB_CW_EVENT_MASK, values);
    const xcb_atom_t type =
        connection.atom(isTip ? "_NET_WM_WINDOW_TYPE_TOOLTIP" : "_NET_WM_WINDOW_TYPE_POPUP_MENU");
    xcb_change_property(server, XCB_PROP_MODE_REPLACE, mId, connection.atom("_NET_WM_WINDOW_TYPE"),
                        XCB_ATOM_ATOM, kAtomBits, 1, &type);
    xcb_icccm_set_wm_class(server, mId, sizeof kPopupClass, kPopupClass);
    xcb_icccm_set_wm_transient_for(server, mId, owner);
    if (isTip) {
        xcb_shape_rectangles(server, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED, mId, 0,
                             0, 0, nullptr);
    }
}

PopupWindow::~PopupWindow() {
    xcb_destroy_window(mConnection.get(), mId);
}

WindowArea PopupWindow::open(const WindowArea& anchor, WindowSize size) {
    auto* const server = mConnection.get();
    mArea = placePopup(anchor, size, monitorOf(mConnection, anchor));
    // Before the window takes its size: it shows the new picture from the start.
    paintWindow(mConnection, mId, mArea.size(), [this](cairo_t* context) {
        if (mHandlers->draw) {
            mHandlers->draw(context, mArea.size());
        }
    });
    const std::uint32_t values[] = {static_cast<std::uint32_t>(mArea.x), static_cast<std::uint32_t>(mArea.y),
                                    static_cast<std::uint32_t>(mArea.width),
                                    static_cast<std::uint32_t>(mArea.height), XCB_STACK_MODE_ABOVE};
    xcb_configure_window(server, mId,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT | XCB_CONFIG_WINDOW_STACK_MODE,
                         values);
    if (!mIsOpen) {
        mIsOpen = true;
        const XReply<xcb_get_input_focus_reply_t> focus(
            xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
        mFocus = focus ? focus->focus : xcb_window_t{XCB_WINDOW_NONE};
        xcb_map_window(server, mId);
        if (mKind == Kind::kMenu) {
            mGrab.begin();
        }
    }
    mConnection.flush();
    return mArea;
}

void PopupWindow::redraw() {
    if (mIsOpen) {
        paintWindow(mConnection, mId, mArea.size(), [this](cairo_t* context) {
            if (mHandlers->draw) {
                mHandlers->draw(context, mArea.size());
            }
        });
    }
}

void PopupWindow::close() {
    if (mIsOpen) {
        mIsOpen = false;
        xcb_unmap_window(mConnection.get(), mId);
        mGrab.end();
        mConnection.flush();
    }
}

void PopupWindow::dismiss() {
    const auto handlers = mHandlers;
    close();
    if (handlers->dismissed) {
        handlers->dismissed();
    }
}

void PopupWindow::tick() {
    mGrab.tick();
    if (mIsOpen && isOwnerLeft()) {
        dismiss();
    }
}

// Asked rather than selected as events: the owner, or the window that it is in, may be of another client.
bool PopupWindow::isOwnerLeft() {
    auto* const server = mConnection.get();
    const auto attributesCookie = xcb_get_window_attributes(server, mOwner);
    const auto focusCookie = xcb_get_input_focus(server);
    const XReply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(server, attributesCookie, nullptr));
    const XReply<xcb_get_input_focus_reply_t> focus(xcb_get_input_focus_reply(server, focusCookie, nullptr));
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE) {
        return true;
    }
    if (!focus || focus->focus == mFocus) {
        return false;
    }
    mFocus = focus->focus;
    const auto other = mConnection.topLevel(mFocus); // none for a focus that follows the pointer
    return other != XCB_WINDOW_NONE && other != mConnection.topLevel(mOwner);
}

void PopupWindow::handle(const xcb_generic_event_t& event) {
    if (!mIsOpen) {
        return;
    }
    const auto handlers = mHandlers;
    switch (eventKind(event)) {
    case XCB_BUTTON_PRESS:
    case XCB_BUTTON_RELEASE:
        pressed(buttonEvent(eventAs<xcb_button_press_event_t>(event)));
        break;
    case XCB_MOTION_NOTIFY:
        if (handlers->pointer) {
            const auto& motion = eventAs<xcb_motion_notify_event_t>(event);
            const bool isInside = mArea.contains({motion.root_x, motion.root_y});
            handlers->pointer(
                isInside ? std::optional(WindowPlace{motion.root_x - mArea.x, motion.root_y - mArea.y})
                         : std::nullopt);
        }
        break;
    case XCB_LEAVE_NOTIFY:
        if (handlers->pointer && eventAs<xcb_leave_notify_event_t>(event).mode == XCB_NOTIFY_MODE_NORMAL) {
            handlers->pointer({});
        }
        break;
    default:
        break;
    }
}

void PopupWindow::pressed(ButtonEvent event) {
    if (event.isDown && !mArea.contains(event.rootPlace)) {
        dismiss();
        return;
    }
    event.place = {event.rootPlace.x - mArea.x, event.rootPlace.y - mArea.y};
    if (const auto handlers = mHandlers; handlers->button) {
        handlers->button(event);
    }
}

} // namespace varno
