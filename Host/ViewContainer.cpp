#include "Host/ViewContainer.h"

#include "Host/HostObject.h"

namespace varno {

AAX_Result DesktopFacet::GetScale(double* outScale) {
    return mDesktop == nullptr ? AAX_ERROR_NULL_OBJECT : writeOutput(outScale, mDesktop->scale());
}

AAX_Result DesktopFacet::GetKnobMode(std::int32_t* outMode) {
    return mDesktop == nullptr ? AAX_ERROR_NULL_OBJECT
                               : writeOutput(outMode, std::int32_t{mDesktop->knobMode()});
}

AAX_Result DesktopFacet::WatchDescriptor(std::int32_t descriptor, AAX_CWakeProc proc, void* context) {
    if (mDesktop == nullptr) {
        return AAX_ERROR_NULL_OBJECT;
    }
    if (proc == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDesktop->watch(descriptor, context, [proc, context] { proc(context); });
    return AAX_SUCCESS;
}

AAX_Result DesktopFacet::UnwatchDescriptor(std::int32_t descriptor, void* context) {
    if (mDesktop != nullptr) {
        mDesktop->unwatch(descriptor, context);
    }
    return AAX_SUCCESS;
}

AAX_Result DesktopFacet::StartTimer(std::uint32_t periodMs, AAX_CWakeProc proc, void* context) {
    if (mDesktop == nullptr) {
        return AAX_ERROR_NULL_OBJECT;
    }
    if (proc == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDesktop->startTimer(std::chrono::milliseconds(periodMs), context, [proc, context] { proc(context); });
    return AAX_SUCCESS;
}

AAX_Result DesktopFacet::StopTimer(void* context) {
    if (mDesktop != nullptr) {
        mDesktop->stopTimer(context);
    }
    return AAX_SUCCESS;
}

ViewContainer::ViewContainer(std::shared_ptr<HostContext> context)
    : HostObject(std::move(context), "view container") {
}

void ViewContainer::setView(std::int32_t type, void* view) {
    mType = type;
    mView = view;
}

AAX_Result ViewContainer::GetModifiers(std::uint32_t* outModifiers) {
    return writeOutput(outModifiers, mModifierSource ? mModifierSource() : 0U);
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
    if (!mMouseHandler) {
        return AAX_ERROR_UNIMPLEMENTED;
    }
    MouseOffer offer{kind, {}, modifiers};
    for (std::uint32_t i = 0; i < count; ++i) {
        offer.parameters.emplace_back(paramIDs[i] == nullptr ? "" : paramIDs[i]);
    }
    return mMouseHandler(offer);
}

AAX_Result ViewContainer::HandleParameterMouseDown(AAX_CParamID paramID, std::uint32_t modifiers) {
    return take(MouseOffer::Kind::kDown, &paramID, 1, modifiers);
}

AAX_Result ViewContainer::HandleParameterMouseDrag(AAX_CParamID paramID, std::uint32_t modifiers) {
    return take(MouseOffer::Kind::kDrag, &paramID, 1, modifiers);
}

AAX_Result ViewContainer::HandleParameterMouseUp(AAX_CParamID paramID, std::uint32_t modifiers) {
    return take(MouseOffer::Kind::kUp, &paramID, 1, modifiers);
}

AAX_Result ViewContainer::HandleMultipleParametersMouseDown(const AAX_CParamID* paramIDs, std::uint32_t count,
                                                            std::uint32_t modifiers) {
    return take(MouseOffer::Kind::kDown, paramIDs, count, modifiers);
}

AAX_Result ViewContainer::HandleMultipleParametersMouseDrag(const AAX_CParamID* paramIDs, std::uint32_t count,
                                                            std::uint32_t modifiers) {
    return take(MouseOffer::Kind::kDrag, paramIDs, count, modifiers);
}

AAX_Result ViewContainer::HandleMultipleParametersMouseUp(const AAX_CParamID* paramIDs, std::uint32_t count,
                                                          std::uint32_t modifiers) {
    return take(MouseOffer::Kind::kUp, paramIDs, count, modifiers);
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
