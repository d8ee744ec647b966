/// The clipboard's text while the module owns it.
#ifndef VARNO_SOURCE_PLATFORM_X11_X11SELECTIONOWNER_H
#define VARNO_SOURCE_PLATFORM_X11_X11SELECTIONOWNER_H

#include "Platform/X11/X11Connection.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace varno {

/// Sends texts: each into a property of the receiver's window; a large one in parts, each after the receiver
/// has read the one before. Any number of receivers at the same time; destroyed ones are removed. [main]
class X11Transfers {
public:
    /// Larger texts are sent in parts of this size, or smaller where the server's limit is lower.
    static constexpr std::size_t kLargestPartBytes = std::size_t{256} * 1024;

    /// Both are borrowed.
    X11Transfers(X11Connection& connection, const X11Atoms& atoms);

    /// Puts the text, or the announcement of its parts, into the property.
    void start(xcb_window_t receiver, xcb_atom_t property, xcb_atom_t type,
               std::shared_ptr<const std::string> text);

    /// Handles an event: a part that was read, a receiver that was destroyed.
    void handle(const xcb_generic_event_t& event);

    /// Transfers in progress.
    std::size_t count() const { return mTransfers.size(); }

private:
    struct Transfer {
        xcb_window_t receiver;
        xcb_atom_t property;
        xcb_atom_t type;
        std::shared_ptr<const std::string> text;
        std::size_t sent;
    };

    void put(const Transfer& transfer, std::size_t bytes);
    void partTaken(xcb_window_t receiver, xcb_atom_t property);
    void forget(xcb_window_t receiver);
    void listenTo(xcb_window_t receiver, uint32_t events);

    X11Connection& mConnection;
    const X11Atoms& mAtoms;
    std::size_t mPartBytes;
    std::vector<Transfer> mTransfers;
};

/// Answers the requests of other programs on the display. [main]
class X11SelectionOwner {
public:
    /// Both are borrowed.
    X11SelectionOwner(X11Connection& connection, const X11Atoms& atoms);

    /// Takes ownership of the clipboard for this text; false where the server refuses.
    bool take(const std::string& text, X11Connection::Deadline deadline);

    /// The text while the module owns the clipboard, else null; transfers in progress are completed.
    const std::string* text() const { return mText.get(); }

    /// Has the clipboard manager save the text, by the protocol of freedesktop.org's clipboard managers:
    /// answers its requests until it reports the end or refuses, at most until the deadline. Does nothing
    /// where the module does not own the clipboard or there is no manager.
    void handOver(X11Connection::Deadline deadline);

    /// Answers a request, continues a transfer, or drops the text when another program owns the clipboard.
    void handle(const xcb_generic_event_t& event);

private:
    void answer(const xcb_selection_request_event_t& request);
    bool mayHave(const xcb_selection_request_event_t& request) const;
    bool convert(xcb_window_t receiver, xcb_atom_t target, xcb_atom_t property);
    bool convertEach(xcb_window_t receiver, xcb_atom_t property);
    bool convertText(xcb_window_t receiver, xcb_atom_t target, xcb_atom_t property);
    void put(xcb_window_t receiver, xcb_atom_t property, xcb_atom_t type, const uint32_t* values,
             std::size_t count);

    X11Connection& mConnection;
    const X11Atoms& mAtoms;
    X11Transfers mTransfers;
    std::shared_ptr<const std::string> mText;
    xcb_timestamp_t mSince = XCB_CURRENT_TIME;
    uint32_t mTakenBy = 0; ///< Number of the request that took the clipboard.
};

} // namespace varno

#endif
