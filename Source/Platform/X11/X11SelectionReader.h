/// The clipboard's text while another program owns it.
#ifndef VARNO_SOURCE_PLATFORM_X11_X11SELECTIONREADER_H
#define VARNO_SOURCE_PLATFORM_X11_X11SELECTIONREADER_H

#include "Platform/X11/X11Connection.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

namespace varno {

/// Requests it from its owner, which may send it in parts, incorrectly, too late or not at all. [main]
class X11SelectionReader {
public:
    /// Preset texts are much smaller; larger texts are not read.
    static constexpr std::size_t kLargestTextBytes = std::size_t{1024} * 1024;

    /// Both are borrowed.
    X11SelectionReader(X11Connection& connection, const X11Atoms& atoms);

    /// The text as UTF-8; empty where it has not arrived completely, as text, by the deadline.
    std::optional<std::string> read(X11Connection::Deadline deadline);

    /// Deletes the texts of replies that come too late from the module's window.
    void handle(const xcb_generic_event_t& event) const;

private:
    /// Content of a property.
    struct Value {
        xcb_atom_t type;
        uint8_t bitsPerItem;
        std::string bytes;
    };

    std::optional<std::string> readAs(xcb_atom_t target, X11Connection::Deadline deadline);
    bool request(xcb_atom_t target, xcb_atom_t property, X11Connection::Deadline deadline);
    std::optional<Value> takeProperty(xcb_atom_t property, std::size_t mostBytes);
    std::optional<Value> collectParts(xcb_atom_t property, X11Connection::Deadline deadline);
    std::optional<std::string> decode(std::optional<Value> value) const;

    X11Connection& mConnection;
    const X11Atoms& mAtoms;
    std::size_t mTurn = 0;
    xcb_atom_t mAwaited =
        XCB_ATOM_NONE; ///< The property that a text is expected in; none while nothing is read.
};

} // namespace varno

#endif
