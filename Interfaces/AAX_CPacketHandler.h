/// A packet handler that is a member of some object.
#ifndef VARNO_INTERFACES_AAX_CPACKETHANDLER_H
#define VARNO_INTERFACES_AAX_CPACKETHANDLER_H

#include "AAX_IPacketHandler.h"

#include <memory>

/// Calls a member of a T (borrowed; it outlives the handler) with the packet alone or with the parameter's
/// identifier and the packet.
template<class T>
class AAX_CPacketHandler final : public AAX_IPacketHandler {
public:
    using PacketMember = AAX_Result (T::*)(AAX_CPacket& packet);
    using ParamPacketMember = AAX_Result (T::*)(AAX_CParamID paramID, AAX_CPacket& packet);

    AAX_CPacketHandler(T* object, PacketMember member)
        : mObject(object),
          mPacketMember(member) {}
    AAX_CPacketHandler(T* object, ParamPacketMember member)
        : mObject(object),
          mParamPacketMember(member) {}

    std::unique_ptr<AAX_IPacketHandler> Clone() const override {
        return std::make_unique<AAX_CPacketHandler>(*this);
    }
    /// Returns what the member returns, or AAX_ERROR_NULL_OBJECT without an object or a member. [main]
    AAX_Result Call(AAX_CParamID paramID, AAX_CPacket& packet) const override;

private:
    T* mObject;
    PacketMember mPacketMember = nullptr;
    ParamPacketMember mParamPacketMember = nullptr;
};

template<class T>
AAX_Result AAX_CPacketHandler<T>::Call(AAX_CParamID paramID, AAX_CPacket& packet) const {
    if (mObject != nullptr && mParamPacketMember != nullptr) {
        return (mObject->*mParamPacketMember)(paramID, packet);
    }
    if (mObject != nullptr && mPacketMember != nullptr) {
        return (mObject->*mPacketMember)(packet);
    }
    return AAX_ERROR_NULL_OBJECT;
}

#endif
