/// Changes of the keyboard's layout.
#ifndef VARNO_WINDOW_KEYBOARDCHANGES_H
#define VARNO_WINDOW_KEYBOARDCHANGES_H

#include "Window/XConnection.h"

namespace varno {

/// Has the server report changes to a connection for which the keyboard extension is set up: such a
/// connection does not receive the core protocol's events of them. [main]
void selectKeyboardChanges(const XConnection& connection);

/// Whether an event (of no window) reports that the keyboard, its layout or its modifiers are others now.
/// [main]
bool isKeyboardChange(const XConnection& connection, const xcb_generic_event_t& event);

} // namespace varno

#endif
