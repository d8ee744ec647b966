/// Makes a window accessible to screen readers.
#ifndef VARNO_SURROUND_ACCESS_ACCESSBRIDGE_H
#define VARNO_SURROUND_ACCESS_ACCESSBRIDGE_H

#include "Surround/Access/AccessAddresses.h"
#include "Surround/Access/AccessModel.h"

#include <memory>
#include <string>

namespace varno {

/// An application object of our own on the accessibility bus (AT-SPI over D-Bus), beside that of a host's
/// tool kit. While there is no bus, or accessibility is switched off, it does nothing; it starts and ends as
/// the switch does. Never waits for another program. Its maker calls tick() about 30 times a second or, where
/// it has an event loop, also dispatch() whenever the descriptor can be read: a reader's question is then
/// answered at once. [main]
class AccessBridge {
public:
    /// @param applicationName for people @param window outlives this object
    AccessBridge(std::string applicationName, AccessWindow& window,
                 AccessAddresses addresses = accessAddresses());
    /// Ends everything; GLib calls none of this binary's functions afterwards.
    ~AccessBridge();

    /// Whether there is an accessibility bus, so that somebody may ask.
    bool isActive() const;
    /// Describes the window anew while the bridge is active, reports what has changed, and dispatches.
    void tick();
    /// Answers what has arrived.
    void dispatch();
    /// Readable when something has arrived; the same for the object's life, which owns it.
    int descriptor() const;

private:
    class Parts;
    std::unique_ptr<Parts> mParts;
};

} // namespace varno

#endif
