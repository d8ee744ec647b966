/// Turns parameter changes into coefficient packets.
#ifndef VARNO_INTERFACES_AAX_CPACKETDISPATCHER_H
#define VARNO_INTERFACES_AAX_CPACKETDISPATCHER_H

#include "AAX_CMutex.h"
#include "AAX_CPacket.h"
#include "AAX_CPacketHandler.h"
#include "AAX_IPacketHandler.h"
#include "AAX_IdentifierOrder.h"

#include <map>
#include <memory>
#include <string>

class AAX_IController;
class AAX_IEffectParameters;

/// Ties parameters to fields of the algorithm's context. Each registration names a parameter, a field and the
/// handler that computes the field's packet; parameters may share a field and then share its packet, which is
/// posted once per dispatch. Registering, marking and dispatching exclude each other by a lock; a handler may
/// call back on its own thread.
class AAX_CPacketDispatcher {
public:
    AAX_CPacketDispatcher() = default;
    AAX_CPacketDispatcher(const AAX_CPacketDispatcher&) = delete;
    AAX_CPacketDispatcher& operator=(const AAX_CPacketDispatcher&) = delete;
    /// Waits for a call that is under way.
    ~AAX_CPacketDispatcher();

    /// Says where packets are posted and where parameters are looked up; both are borrowed until replaced
    /// (null for none). Returns AAX_SUCCESS. [main]
    AAX_Result Initialize(AAX_IController* controller, AAX_IEffectParameters* effectParameters);

    /// Registers a clone of `handler` for a parameter and a field; a registration with a negative field is
    /// kept but never posted, and one with a null identifier or handler is ignored. The packet starts dirty.
    /// Registrations of one parameter add up. Returns AAX_SUCCESS. [main]
    AAX_Result RegisterPacket(AAX_CParamID paramID, AAX_CFieldIndex fieldIndex,
                              const AAX_IPacketHandler* handler);
    /// Registers a member of `object` (borrowed for the dispatcher's life) as the handler. Returns
    /// AAX_SUCCESS. [main]
    template<class T>
    AAX_Result RegisterPacket(AAX_CParamID paramID, AAX_CFieldIndex fieldIndex, T* object,
                              AAX_Result (T::*member)(AAX_CPacket& packet));
    /// Registers GenerateSingleValuePacket as the handler. Returns AAX_SUCCESS. [main]
    AAX_Result RegisterPacket(AAX_CParamID paramID, AAX_CFieldIndex fieldIndex);

    /// Destroys all registrations, their handlers and packets; not from within a handler or a post. [main]
    void RemoveAllPackets();

    /// Sets whether the packets of a parameter must be computed and posted at the next dispatch. Returns
    /// AAX_SUCCESS, also for an identifier that was never registered. [any]
    AAX_Result SetDirty(AAX_CParamID paramID, bool dirty);

    /// Runs the handler of every dirty packet, in byte-wise order of identifiers, and posts what succeeds;
    /// each packet is clean afterwards, whether it was posted or not. Returns the result of the last post,
    /// AAX_SUCCESS when nothing was posted, or AAX_ERROR_NULL_OBJECT, with the packets left dirty, when there
    /// is something to post and no controller. Exceptions of a handler reach the caller, as does
    /// std::out_of_range for a handler that succeeds without a payload. [main]
    AAX_Result Dispatch();

    /// The handler that posts the real value of a parameter: 4 bytes for a float, an int32_t and a bool (as
    /// the int32_t 0 or 1), 8 for a double. Returns AAX_SUCCESS, or AAX_ERROR_NULL_OBJECT without such a
    /// parameter or value. [main]
    AAX_Result GenerateSingleValuePacket(AAX_CParamID paramID, AAX_CPacket& packet);

private:
    /// One registration.
    struct Registration {
        AAX_CPacket* mPacket; ///< Borrowed from mPackets; null for a negative field.
        std::unique_ptr<AAX_IPacketHandler> mHandler;
    };

    AAX_CPacket* GetPacketOfField(AAX_CFieldIndex fieldIndex);
    AAX_Result PostPacket(AAX_CPacket& packet);

    std::map<AAX_CFieldIndex, std::unique_ptr<AAX_CPacket>> mPackets;
    /// By parameter identifier.
    std::multimap<std::string, Registration, AAX_SIdentifierOrder> mRegistrations;
    AAX_IController* mController = nullptr;             ///< Borrowed.
    AAX_IEffectParameters* mEffectParameters = nullptr; ///< Borrowed.
    AAX_CMutex mLock;                                   ///< Guards everything above.
};

template<class T>
AAX_Result AAX_CPacketDispatcher::RegisterPacket(AAX_CParamID paramID, AAX_CFieldIndex fieldIndex, T* object,
                                                 AAX_Result (T::*member)(AAX_CPacket& packet)) {
    const AAX_CPacketHandler<T> handler(object, member);
    return RegisterPacket(paramID, fieldIndex, &handler);
}

#endif
