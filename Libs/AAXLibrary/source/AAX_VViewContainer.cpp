#include "AAX_VViewContainer.h"

#include "ACF/ACFPtr.h"

namespace {

// The container's interface `iid`, which must be that of T; its reference stays with the host.
template<class T>
T* Borrow(IACFUnknown* container, const acfIID& iid) {
    return ACFPtr<T>::Query(container, iid).Detach();
}

} // namespace

AAX_VViewContainer::AAX_VViewContainer(IACFUnknown* container)
    : mVersion1(Borrow<AAX_IACFViewContainer>(container, IID_IAAXViewContainerV1)),
      mVersion2(Borrow<AAX_IACFViewContainer_V2>(container, IID_IAAXViewContainerV2)) {
}

AAX_VViewContainer::~AAX_VViewContainer() {
    mVersion1 = nullptr;
    mVersion2 = nullptr;
}

int32_t AAX_VViewContainer::GetType() {
    return mVersion1 != nullptr ? mVersion1->GetType() : AAX_eViewContainerType_None;
}

void* AAX_VViewContainer::GetPtr() {
    return mVersion1 != nullptr ? mVersion1->GetPtr() : nullptr;
}

AAX_Result AAX_VViewContainer::GetModifiers(uint32_t* outModifiers) {
    return mVersion1 != nullptr ? mVersion1->GetModifiers(outModifiers) : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VViewContainer::SetViewSize(AAX_Point& size) {
    return mVersion1 != nullptr ? mVersion1->SetViewSize(&size) : AAX_SUCCESS;
}

AAX_Result AAX_VViewContainer::HandleParameterMouseDown(AAX_CParamID paramID, uint32_t modifiers) {
    return mVersion1 != nullptr ? mVersion1->HandleParameterMouseDown(paramID, modifiers)
                                : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VViewContainer::HandleParameterMouseDrag(AAX_CParamID paramID, uint32_t modifiers) {
    return mVersion1 != nullptr ? mVersion1->HandleParameterMouseDrag(paramID, modifiers)
                                : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VViewContainer::HandleParameterMouseUp(AAX_CParamID paramID, uint32_t modifiers) {
    return mVersion1 != nullptr ? mVersion1->HandleParameterMouseUp(paramID, modifiers)
                                : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VViewContainer::HandleMultipleParametersMouseDown(const AAX_CParamID* paramIDs, uint32_t count,
                                                                 uint32_t modifiers) {
    return mVersion2 != nullptr ? mVersion2->HandleMultipleParametersMouseDown(paramIDs, count, modifiers)
                                : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VViewContainer::HandleMultipleParametersMouseDrag(const AAX_CParamID* paramIDs, uint32_t count,
                                                                 uint32_t modifiers) {
    return mVersion2 != nullptr ? mVersion2->HandleMultipleParametersMouseDrag(paramIDs, count, modifiers)
                                : AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result AAX_VViewContainer::HandleMultipleParametersMouseUp(const AAX_CParamID* paramIDs, uint32_t count,
                                                               uint32_t modifiers) {
    return mVersion2 != nullptr ? mVersion2->HandleMultipleParametersMouseUp(paramIDs, count, modifiers)
                                : AAX_ERROR_UNIMPLEMENTED;
}
