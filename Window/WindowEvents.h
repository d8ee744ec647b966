#ifndef VARNO_WINDOW_WINDOWEVENTS_H
#define VARNO_WINDOW_WINDOWEVENTS_H

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <xcb/xcb.h>

namespace varno {

/// The number of an event's kind, also where another client has sent it. 0 is no event but an error. [any]
constexpr int eventKind(const xcb_generic_event_t& event) {
    constexpr int kSentByClient = 0x80;
    return event.response_type & ~kSentByClient;
}

/// The event as the structure of its kind. [any]
template<class Event>
const Event& eventAs(const xcb_generic_event_t& event) {
    return reinterpret_cast<const Event&>(event);
}

/// The window that an event is reported for: of several that it names, the one whose events were selected.
/// XCB_WINDOW_NONE for events of the keyboard's layout and of extensions. [any]
xcb_window_t windowOf(const xcb_generic_event_t& event);

/// Calls those that registered for the events of a window. [main]
class WindowEvents {
public:
    using Handler = std::function<void(const xcb_generic_event_t&)>;
    /// The handler is called until this and its copies are released; one that is running then still ends.
    using Registration = std::shared_ptr<const Handler>;

    /// Registers a handler for the events of a window; a window may have several. Which kinds arrive is
    /// selected at the server.
    /// @param window XCB_WINDOW_NONE: for events of no window
    [[nodiscard]] Registration add(xcb_window_t window, Handler handler);

    /// Calls the handlers of the event's window. They may add and release registrations, also their own;
    /// what they add receives later events only, and what they release is not called any more.
    void dispatch(const xcb_generic_event_t& event) const;

private:
    std::multimap<xcb_window_t, std::weak_ptr<const Handler>> mHandlers;
};

} // namespace varno

#endif
