#include "AAX_CPacketDispatcher.h"

#include "AAX_IController.h"
#include "AAX_IEffectParameters.h"
#include "AAX_IParameter.h"
#include "AAX_StLock_Guard.h"

#include <string_view>
#include <utility>

AAX_CPacketDispatcher::~AAX_CPacketDispatcher() {
    RemoveAllPackets();
}

void AAX_CPacketDispatcher::RemoveAllPackets() {
    const AAX_StLock_Guard guard(mLock);
    mRegistrations.clear();
    mPackets.clear();
}

AAX_Result AAX_CPacketDispatcher::Initialize(AAX_IController* controller,
                                             AAX_IEffectParameters* effectParameters) {
    const AAX_StLock_Guard guard(mLock);
    mController = controller;
    mEffectParameters = effectParameters;
    return AAX_SUCCESS;
}

AAX_Result AAX_CPacketDispatcher::RegisterPacket(AAX_CParamID paramID, AAX_CFieldIndex fieldIndex,
                                                 const AAX_IPacketHandler* handler) {
    if (paramID == nullptr || handler == nullptr) {
        return AAX_SUCCESS;
    }
    const AAX_StLock_Guard guard(mLock);
    AAX_CPacket* packet = fieldIndex >= 0 ? GetPacketOfField(fieldIndex) : nullptr;
    std::unique_ptr<AAX_IPacketHandler> clone = handler->Clone();
    mRegistrations.emplace(paramID, Registration{packet, std::move(clone)});
    return AAX_SUCCESS;
}

AAX_Result AAX_CPacketDispatcher::RegisterPacket(AAX_CParamID paramID, AAX_CFieldIndex fieldIndex) {
    const AAX_CPacketHandler<AAX_CPacketDispatcher> handler(
        this, &AAX_CPacketDispatcher::GenerateSingleValuePacket);
    return RegisterPacket(paramID, fieldIndex, &handler);
}

AAX_Result AAX_CPacketDispatcher::SetDirty(AAX_CParamID paramID, bool dirty) {
    if (paramID == nullptr) {
        return AAX_SUCCESS;
    }
    const AAX_StLock_Guard guard(mLock);
    const auto [first, last] = mRegistrations.equal_range(std::string_view(paramID));
    for (auto entry = first; entry != last; ++entry) {
        if (entry->second.mPacket != nullptr) {
            entry->second.mPacket->SetDirty(dirty);
        }
    }
    return AAX_SUCCESS;
}

AAX_Result AAX_CPacketDispatcher::Dispatch() {
    const AAX_StLock_Guard guard(mLock);
    AAX_Result result = AAX_SUCCESS;
    for (const auto& [paramID, registration] : mRegistrations) {
        if (registration.mPacket == nullptr || !registration.mPacket->IsDirty()) {
            continue;
        }
        if (mController == nullptr) {
            return AAX_ERROR_NULL_OBJECT;
        }
        AAX_CPacket& packet = *registration.mPacket;
        // Clean in every case, also after an exception: a handler that fails must not prevent the packets
        // after it from being posted by the next dispatch.
        const struct CleanAtTheEnd {
            AAX_CPacket& mPacket;
            ~CleanAtTheEnd() { mPacket.SetDirty(false); }
        } cleanAtTheEnd{packet};
        if (registration.mHandler->Call(paramID.c_str(), packet) == AAX_SUCCESS) {
            result = PostPacket(packet);
        }
    }
    return result;
}

AAX_Result AAX_CPacketDispatcher::GenerateSingleValuePacket(AAX_CParamID paramID, AAX_CPacket& packet) {
    AAX_IParameter* parameter = nullptr;
    if (mEffectParameters == nullptr || mEffectParameters->GetParameter(paramID, &parameter) != AAX_SUCCESS ||
        parameter == nullptr) {
        return AAX_ERROR_NULL_OBJECT;
    }
    // The bool first: it is posted as an integer, and parameters of other types have no bool.
    if (bool value = false; parameter->GetValueAsBool(&value)) {
        *packet.GetPtr<int32_t>() = value ? 1 : 0;
    } else if (float single = 0.0F; parameter->GetValueAsFloat(&single)) {
        *packet.GetPtr<float>() = single;
    } else if (int32_t integer = 0; parameter->GetValueAsInt32(&integer)) {
        *packet.GetPtr<int32_t>() = integer;
    } else if (double number = 0.0; parameter->GetValueAsDouble(&number)) {
        *packet.GetPtr<double>() = number;
    } else {
        return AAX_ERROR_NULL_OBJECT;
    }
    return AAX_SUCCESS;
}

AAX_CPacket* AAX_CPacketDispatcher::GetPacketOfField(AAX_CFieldIndex fieldIndex) {
    std::unique_ptr<AAX_CPacket>& packet = mPackets[fieldIndex];
    if (packet == nullptr) {
        packet = std::make_unique<AAX_CPacket>(fieldIndex);
    }
    return packet.get();
}

AAX_Result AAX_CPacketDispatcher::PostPacket(AAX_CPacket& packet) {
    const void* payload = packet.GetPayload();
    return mController->PostPacket(packet.GetFieldIndex(), payload, static_cast<uint32_t>(packet.GetSize()));
}
