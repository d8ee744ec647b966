#include "Host/ViewContainer.h"

#include "Host/TellOutput.h"

namespace varno {

ViewContainer::ViewContainer(std::shared_ptr<HostContext> context)
    : HostObject(std::move(context), "view container") {
}

void ViewContainer::setView(std::int32_t type, void* view) {
    mType = type;
    mView = view;
}

AAX_Result ViewContainer::GetModifiers(std::uint32_t* outModifiers) {
    return tell(outModifiers, mModifiers);
}

AAX_Result ViewContainer::SetViewSize(AAX_Point* size) {
    if (size == nullptr) {
        return AAX_ERROR_INVALID_VIEW_SIZE;
    }
    const AAX_Result result = mSizeHandler ? mSizeHandler(*size) : AAX_SUCCESS;
    if (result == AAX_SUCCESS) {
        mSize = *size;
    }
    return result;
}

AAX_Result ViewContainer::take(MouseOffer::Kind kind, const AAX_CParamID* paramIDs, std::uint32_t count,
                               std::uint32_t modifiers) {
    MouseOffer offer{kind, {}, modifiers};
    for (std::uint32_t i = 0; i < count; ++i) {
        offer.parameters.emplace_back(paramIDs[i] == nullptr ? "" : paramIDs[i]);
    }
    mOffers.push_back(offer);
    return mMouseHandler ? mMouseHandler(offer) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result ViewContainer::HandleParameterMouseDown(AAX_CParamID paramID, std::uint32_t modifiers) {
    return take(MouseOffer::Kind::Down, &paramID, 1, modifiers);
}

AAX_Result ViewContainer::HandleParameterMouseDrag(AAX_CParamID paramID, std::uint32_t modifiers) {
    return take(MouseOffer::Kind::Drag, &paramID, 1, modifiers);
}

AAX_Result ViewContainer::HandleParameterMouseUp(AAX_CParamID paramID, std::uint32_t modifiers) {
    return take(MouseOffer::Kind::Up, &paramID, 1, modifiers);
}

AAX_Result ViewContainer::HandleMultipleParametersMouseDown(const AAX_CParamID* paramIDs, std::uint32_t count,
                                                            std::uint32_t modifiers) {
    return take(MouseOffer::Kind::Down, paramIDs, count, modifiers);
}

AAX_Result ViewContainer::HandleMultipleParametersMouseDrag(const AAX_CParamID* paramIDs, std::uint32_t count,
                                                            std::uint32_t modifiers) {
    return take(MouseOffer::Kind::Drag, paramIDs, count, modifiers);
}

AAX_Result ViewContainer::HandleMultipleParametersMouseUp(const AAX_CParamID* paramIDs, std::uint32_t count,
                                                          std::uint32_t modifiers) {
    return take(MouseOffer::Kind::Up, paramIDs, count, modifiers);
}

void* ViewContainer::interfaceFor(const acfIID& iid) {
    if (iid == IID_IAAXViewContainerV1) {
        return static_cast<AAX_IACFViewContainer*>(this);
    }
    if (iid == IID_IAAXViewContainerV2) {
        return static_cast<AAX_IACFViewContainer_V2*>(this);
    }
    return iid == IID_IVarnoDesktopV1 && mDesktop.hasDesktop() ? static_cast<AAX_IACFDesktop*>(&mDesktop)
                                                               : nullptr;
}

} // namespace varno
