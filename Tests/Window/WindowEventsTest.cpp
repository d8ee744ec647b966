#include "Window/WindowEvents.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>

namespace varno::test {
namespace {

constexpr xcb_window_t kOne = 11;
constexpr xcb_window_t kOther = 22;
constexpr xcb_window_t kNamed = 33; // in an event, without being the one that it is reported for

xcb_generic_event_t exposed(xcb_window_t window) {
    xcb_generic_event_t event{};
    auto& expose = reinterpret_cast<xcb_expose_event_t&>(event);
    expose.response_type = XCB_EXPOSE;
    expose.window = window;
    return event;
}

class WindowEventsTest : public testing::Test {
protected:
    WindowEvents::Handler noting(const std::string& name) {
        return [this, name](const auto&) { mCalled += name; };
    }

    WindowEvents mEvents;
    std::string mCalled;
};

TEST_F(WindowEventsTest, EachGoesToTheHandlersOfItsWindow) {
    const auto a = mEvents.add(kOne, noting("a"));
    const auto b = mEvents.add(kOther, noting("b"));
    const auto c = mEvents.add(kOne, noting("c"));
    mEvents.dispatch(exposed(kOne));
    EXPECT_EQ(mCalled, "ac");
    mEvents.dispatch(exposed(kOther));
    EXPECT_EQ(mCalled, "acb");
    mEvents.dispatch(exposed(kNamed)); // of which nobody knows
    EXPECT_EQ(mCalled, "acb");
}

TEST_F(WindowEventsTest, WhatIsReleasedIsNotCalledAnyMore) {
    auto a = mEvents.add(kOne, noting("a"));
    const auto copy = a;
    a.reset();
    mEvents.dispatch(exposed(kOne));
    EXPECT_EQ(mCalled, "a");
    auto b = mEvents.add(kOther, noting("b"));
    b.reset();
    mEvents.dispatch(exposed(kOther));
    EXPECT_EQ(mCalled, "a");
}

TEST_F(WindowEventsTest, AHandlerMayReleaseItselfAndOthers) {
    WindowEvents::Registration a;
    WindowEvents::Registration b;
    const std::string text = "kept to the end of the call";
    a = mEvents.add(kOne, [&, text](const auto&) {
        a.reset();
        b.reset();
        mCalled += text;
    });
    b = mEvents.add(kOne, noting("b"));
    const auto c = mEvents.add(kOne, noting("c"));
    mEvents.dispatch(exposed(kOne));
    EXPECT_EQ(mCalled, text + "c");
}

TEST_F(WindowEventsTest, AHandlerMayAddOthersForLaterEvents) {
    std::vector<WindowEvents::Registration> added;
    const auto a = mEvents.add(kOne, [&](const auto&) {
        mCalled += "a";
        added.push_back(mEvents.add(kOne, noting("b")));
        added.push_back(mEvents.add(kOther, noting("c")));
    });
    mEvents.dispatch(exposed(kOne));
    EXPECT_EQ(mCalled, "a");
    mEvents.dispatch(exposed(kOther));
    EXPECT_EQ(mCalled, "ac");
    mEvents.dispatch(exposed(kOne));
    EXPECT_EQ(mCalled, "acab");
}

TEST_F(WindowEventsTest, EventsOfNoWindowHaveHandlersToo) {
    const auto a = mEvents.add(XCB_WINDOW_NONE, noting("a"));
    xcb_generic_event_t event{};
    event.response_type = XCB_MAPPING_NOTIFY;
    mEvents.dispatch(event);
    event.response_type = 0x70; // of an extension
    mEvents.dispatch(event);
    EXPECT_EQ(mCalled, "aa");
}

template<class Event>
xcb_window_t windowOfEvent(int kind, xcb_window_t Event::*member, xcb_window_t Event::*named) {
    xcb_generic_event_t event{};
    event.response_type = static_cast<std::uint8_t>(kind | 0x80); // as if sent by a client
    auto& typed = reinterpret_cast<Event&>(event);
    if (named != nullptr) {
        typed.*named = kNamed;
    }
    typed.*member = kOne;
    return windowOf(event);
}

TEST(WindowOfEvent, IsTheOneWhoseEventsWereSelected) {
    using Key = xcb_key_press_event_t;
    for (const int kind : {XCB_KEY_PRESS, XCB_KEY_RELEASE, XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE,
                           XCB_MOTION_NOTIFY, XCB_ENTER_NOTIFY, XCB_LEAVE_NOTIFY}) {
        EXPECT_EQ(windowOfEvent(kind, &Key::event, &Key::child), kOne) << kind;
    }
    using Enter = xcb_enter_notify_event_t;
    EXPECT_EQ(windowOfEvent(XCB_ENTER_NOTIFY, &Enter::event, &Enter::child), kOne);
    for (const int kind : {XCB_FOCUS_IN, XCB_FOCUS_OUT}) {
        EXPECT_EQ(windowOfEvent<xcb_focus_in_event_t>(kind, &xcb_focus_in_event_t::event, nullptr), kOne);
    }
    using Create = xcb_create_notify_event_t;
    EXPECT_EQ(windowOfEvent(XCB_CREATE_NOTIFY, &Create::parent, &Create::window), kOne);
    using Destroy = xcb_destroy_notify_event_t;
    EXPECT_EQ(windowOfEvent(XCB_DESTROY_NOTIFY, &Destroy::event, &Destroy::window), kOne);
    using Unmap = xcb_unmap_notify_event_t;
    EXPECT_EQ(windowOfEvent(XCB_UNMAP_NOTIFY, &Unmap::event, &Unmap::window), kOne);
    using Map = xcb_map_notify_event_t;
    EXPECT_EQ(windowOfEvent(XCB_MAP_NOTIFY, &Map::event, &Map::window), kOne);
    using Reparent = xcb_reparent_notify_event_t;
    EXPECT_EQ(windowOfEvent(XCB_REPARENT_NOTIFY, &Reparent::event, &Reparent::window), kOne);
    using Configure = xcb_configure_notify_event_t;
    EXPECT_EQ(windowOfEvent(XCB_CONFIGURE_NOTIFY, &Configure::event, &Configure::window), kOne);
    using Gravity = xcb_gravity_notify_event_t;
    EXPECT_EQ(windowOfEvent(XCB_GRAVITY_NOTIFY, &Gravity::event, &Gravity::window), kOne);
    using Circulate = xcb_circulate_notify_event_t;
    EXPECT_EQ(windowOfEvent(XCB_CIRCULATE_NOTIFY, &Circulate::event, &Circulate::window), kOne);
    using MapRequest = xcb_map_request_event_t;
    EXPECT_EQ(windowOfEvent(XCB_MAP_REQUEST, &MapRequest::parent, &MapRequest::window), kOne);
    using ConfigureRequest = xcb_configure_request_event_t;
    EXPECT_EQ(windowOfEvent(XCB_CONFIGURE_REQUEST, &ConfigureRequest::parent, &ConfigureRequest::window),
              kOne);
    using Selection = xcb_selection_request_event_t;
    EXPECT_EQ(windowOfEvent(XCB_SELECTION_REQUEST, &Selection::owner, &Selection::requestor), kOne);
    using Expose = xcb_expose_event_t;
    EXPECT_EQ(windowOfEvent<Expose>(XCB_EXPOSE, &Expose::window, nullptr), kOne);
    using Visibility = xcb_visibility_notify_event_t;
    EXPECT_EQ(windowOfEvent<Visibility>(XCB_VISIBILITY_NOTIFY, &Visibility::window, nullptr), kOne);
    using Property = xcb_property_notify_event_t;
    EXPECT_EQ(windowOfEvent<Property>(XCB_PROPERTY_NOTIFY, &Property::window, nullptr), kOne);
    using Clear = xcb_selection_clear_event_t;
    EXPECT_EQ(windowOfEvent<Clear>(XCB_SELECTION_CLEAR, &Clear::owner, nullptr), kOne);
    using Notify = xcb_selection_notify_event_t;
    EXPECT_EQ(windowOfEvent<Notify>(XCB_SELECTION_NOTIFY, &Notify::requestor, nullptr), kOne);
    using Message = xcb_client_message_event_t;
    EXPECT_EQ(windowOfEvent<Message>(XCB_CLIENT_MESSAGE, &Message::window, nullptr), kOne);
}

} // namespace
} // namespace varno::test
