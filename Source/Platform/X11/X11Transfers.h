/// Texts on their way to other programs on the display.
#ifndef VARNO_SOURCE_PLATFORM_X11_X11TRANSFERS_H
#define VARNO_SOURCE_PLATFORM_X11_X11TRANSFERS_H

#include "Platform/X11/X11Atoms.h"
#include "Platform/X11/X11Connection.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace varno {

/// A text goes into a property of the receiver's window; a large one in parts, each after the receiver has
/// taken the one before. Any number of receivers at once, each at its own pace; those that go are forgotten.
/// [main]
class X11Transfers {
public:
    /// Larger texts go in parts of this size, where the server takes so much at once.
    static constexpr std::size_t kLargestPartBytes = std::size_t{256} * 1024;

    /// Both are borrowed.
    X11Transfers(X11Connection& connection, const X11Atoms& atoms);

    /// Puts the text, or the announcement of its parts, into the property.
    void start(xcb_window_t receiver, xcb_atom_t property, xcb_atom_t type,
               std::shared_ptr<const std::string> text);

    /// Goes on with what the event is about: a part that was taken, a receiver that is gone.
    void handle(const xcb_generic_event_t& event);

    /// How many are under way.
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

} // namespace varno

#endif
