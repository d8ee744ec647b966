/// The names by which programs on an X display exchange a selection.
#ifndef VARNO_SOURCE_PLATFORM_X11_X11ATOMS_H
#define VARNO_SOURCE_PLATFORM_X11_X11ATOMS_H

#include <array>
#include <cstddef>
#include <xcb/xcb.h>

namespace varno {

/// As the server numbers them; XCB_ATOM_NONE where the connection is lost.
struct X11Atoms {
    xcb_atom_t clipboard; ///< The selection that copy and paste use.

    xcb_atom_t targets; ///< What a selection can be had as.
    xcb_atom_t timestamp;
    xcb_atom_t multiple;
    xcb_atom_t utf8String;
    xcb_atom_t text;
    xcb_atom_t utf8Plain;

    xcb_atom_t atomPair; ///< Types.
    xcb_atom_t incremental;

    xcb_atom_t ownTime; ///< Properties of our window: for the server's time, and for texts that come in.
    /// In turns, so that a late answer to a request given up is not taken for that to the next.
    static constexpr std::size_t kTransfers = 8;
    std::array<xcb_atom_t, kTransfers> transfers;
};

/// One round trip for all of them. [main]
X11Atoms internAtoms(xcb_connection_t* connection);

} // namespace varno

#endif
