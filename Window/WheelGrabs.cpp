#include "Window/WheelGrabs.h"

#include <utility>

namespace varno {
namespace {

constexpr int kFirstWheelButton = 4;
constexpr int kLastWheelButton = 7;
using Direction = WheelStep::Direction;
constexpr Direction kDirections[] = {Direction::kUp, Direction::kDown, Direction::kLeft, Direction::kRight};

} // namespace

WheelGrabs::WheelGrabs(XConnection& connection, xcb_window_t window, Handler handler)
    : mConnection(connection),
      mWindow(window),
      mHandler(std::move(handler)),
      mEvents(connection.events().add(window, [this](const auto& event) { handle(event); })) {
    for (int button = kFirstWheelButton; button <= kLastWheelButton; ++button) {
        xcb_grab_button(connection.get(), 0, window,
                        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE, XCB_GRAB_MODE_ASYNC,
                        XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE,
                        static_cast<std::uint8_t>(button), XCB_MOD_MASK_ANY);
    }
}

WheelGrabs::~WheelGrabs() {
    for (int button = kFirstWheelButton; button <= kLastWheelButton; ++button) {
        xcb_ungrab_button(mConnection.get(), static_cast<std::uint8_t>(button), mWindow, XCB_MOD_MASK_ANY);
    }
}

void WheelGrabs::handle(const xcb_generic_event_t& event) const {
    if (eventKind(event) != XCB_BUTTON_PRESS) {
        return;
    }
    const auto press = buttonEvent(eventAs<xcb_button_press_event_t>(event));
    if (press.button >= kFirstWheelButton && press.button <= kLastWheelButton) {
        mHandler({kDirections[press.button - kFirstWheelButton], press.modifiers, press.place, press.timeMs});
    }
}

} // namespace varno
