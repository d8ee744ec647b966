#include "AAX_VAutomationDelegate.h"

#include "HostObjects.h"

AAX_VAutomationDelegate::AAX_VAutomationDelegate(IACFUnknown* host)
    : mVersion1(ACFPtr<AAX_IACFAutomationDelegate>::Query(host, IID_IAAXAutomationDelegateV1)) {
}

void AAX_VAutomationDelegate::ReleaseHost() {
    ReleaseEach(mVersion1);
}

AAX_Result AAX_VAutomationDelegate::RegisterParameter(AAX_CParamID paramID) {
    return mVersion1 ? mVersion1->RegisterParameter(paramID) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VAutomationDelegate::UnregisterParameter(AAX_CParamID paramID) {
    return mVersion1 ? mVersion1->UnregisterParameter(paramID) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VAutomationDelegate::PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) {
    return mVersion1 ? mVersion1->PostSetValueRequest(paramID, normalizedValue) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VAutomationDelegate::PostCurrentValue(AAX_CParamID paramID, double normalizedValue) {
    return mVersion1 ? mVersion1->PostCurrentValue(paramID, normalizedValue) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VAutomationDelegate::PostTouchRequest(AAX_CParamID paramID) {
    return mVersion1 ? mVersion1->PostTouchRequest(paramID) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VAutomationDelegate::PostReleaseRequest(AAX_CParamID paramID) {
    return mVersion1 ? mVersion1->PostReleaseRequest(paramID) : AAX_ERROR_NULL_OBJECT;
}
