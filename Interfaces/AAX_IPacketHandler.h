/// What computes a coefficient packet.
#ifndef VARNO_INTERFACES_AAX_IPACKETHANDLER_H
#define VARNO_INTERFACES_AAX_IPACKETHANDLER_H

#include "AAX.h"

#include <memory>

class AAX_CPacket;

/// Writes the payload of a packet when a parameter that feeds it has changed. Called with the dispatcher's
/// lock held; it may call the dispatcher on the same thread.
class AAX_IPacketHandler {
public:
    virtual ~AAX_IPacketHandler() = default;
    /// A new copy, owned by the caller. Never null. [main]
    virtual std::unique_ptr<AAX_IPacketHandler> Clone() const = 0;
    /// Computes the payload of `packet` (borrowed) for the parameter `paramID`. Returns AAX_SUCCESS when it
    /// has written a payload to be posted, or a failure code. [main]
    virtual AAX_Result Call(AAX_CParamID paramID, AAX_CPacket& packet) const = 0;
};

#endif
