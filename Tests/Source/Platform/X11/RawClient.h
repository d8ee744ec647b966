/// Another program on the display, which uses the X protocol directly, correctly or not.
#ifndef VARNO_TESTS_SOURCE_PLATFORM_X11_RAWCLIENT_H
#define VARNO_TESTS_SOURCE_PLATFORM_X11_RAWCLIENT_H

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>
#include <xcb/xcb.h>

namespace varno::test {

struct FreeAnswer {
    void operator()(void* answer) const { std::free(answer); }
};
using RawEvent = std::unique_ptr<xcb_generic_event_t, FreeAnswer>;

/// What a property of a window holds.
struct RawProperty {
    xcb_atom_t type = XCB_ATOM_NONE; ///< None where there is no such property.
    std::string bytes;

    /// The bytes as numbers of 32 bits.
    std::vector<std::uint32_t> numbers() const;
};

class RawClient {
public:
    /// Throws std::runtime_error where there is no such display.
    explicit RawClient(const std::string& display);

    xcb_connection_t* xcb() const { return mConnection.get(); }
    xcb_window_t window() const { return mWindow; }
    xcb_atom_t atom(const std::string& name) const;

    /// Closes the connection, with requests unanswered.
    void disconnect() { mConnection.reset(); }
    bool connected() const { return mConnection != nullptr; }

    /// The next event that has arrived; null where there is none.
    RawEvent nextEvent() const { return RawEvent(xcb_poll_for_event(xcb())); }

    void ownClipboard() const;
    xcb_window_t clipboardOwner() const;
    /// Windows directly below the root, whoever made them.
    std::size_t windowCount() const;

    void request(const std::string& target, const std::string& property,
                 xcb_timestamp_t time = XCB_CURRENT_TIME) const;
    RawProperty takeProperty(const std::string& property) const;

    /// The name may be of a type that has no numbers or of one that has.
    void setText(xcb_window_t window, xcb_atom_t property, const std::string& type,
                 const std::string& text) const;
    void setNumbers(xcb_window_t window, xcb_atom_t property, const std::string& type,
                    const std::vector<std::uint32_t>& numbers) const;

    /// Notifies the requestor that the content is in the property; XCB_ATOM_NONE is a refusal.
    void answer(const xcb_selection_request_event_t& request, xcb_atom_t property) const;
    /// Receives changes of the window's properties from now on.
    void listenTo(xcb_window_t window) const;
    void flush() const { xcb_flush(xcb()); }

private:
    struct Disconnect {
        void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
    };

    std::unique_ptr<xcb_connection_t, Disconnect> mConnection;
    xcb_window_t mWindow;
};

/// The event's type, whoever sent it.
inline int typeOfRaw(const xcb_generic_event_t& event) {
    return event.response_type & 0x7f;
}

} // namespace varno::test

#endif
