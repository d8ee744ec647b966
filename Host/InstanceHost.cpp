#include "Host/InstanceHost.h"

namespace varno {

InstanceHost::InstanceHost(std::shared_ptr<HostContext> sharedContext, const EffectDescription& effect,
                           const VariantDescription& variant, const InstanceSetup& setup)
    : HostObject(std::move(sharedContext), "instance host"),
      mState(context(), effect, variant, setup),
      mController(*this, mState),
      mTransport(*this, mState),
      mAutomation(*this, mState),
      mPageTables(*this, mState),
      mFactory(*this, context()) {
}

void InstanceHost::end() {
    setDataModel(nullptr);
    mState.notify = nullptr;
    mAutomation.reportOpenTouches();
    mState.gate.close();
}

void* InstanceHost::interfaceFor(const acfIID& iid) {
    if (iid == IID_IAAXControllerV1) {
        return static_cast<AAX_IACFController*>(&mController);
    }
    if (iid == IID_IAAXControllerV2) {
        return static_cast<AAX_IACFController_V2*>(&mController);
    }
    if (iid == IID_IAAXControllerV3) {
        return static_cast<AAX_IACFController_V3*>(&mController);
    }
    if (iid == IID_IAAXTransportV1) {
        return static_cast<AAX_IACFTransport*>(&mTransport);
    }
    if (iid == IID_IAAXTransportV2) {
        return static_cast<AAX_IACFTransport_V2*>(&mTransport);
    }
    if (iid == IID_IAAXTransportV3) {
        return static_cast<AAX_IACFTransport_V3*>(&mTransport);
    }
    if (iid == IID_IAAXAutomationDelegateV1) {
        return static_cast<AAX_IACFAutomationDelegate*>(&mAutomation);
    }
    if (iid == IID_IAAXPageTableController) {
        return static_cast<AAX_IACFPageTableController*>(&mPageTables);
    }
    if (iid == IID_IAAXPageTableControllerV2) {
        return static_cast<AAX_IACFPageTableController_V2*>(&mPageTables);
    }
    return iid == IID_IACFComponentFactory ? static_cast<IACFComponentFactory*>(&mFactory) : nullptr;
}

ACFRESULT InstanceHost::queryOther(const acfIID& iid, void** outObject) {
    const bool isDataModel = iid == IID_IAAXEffectParametersV1 && mDataModel != nullptr;
    return isDataModel ? mDataModel->QueryInterface(iid, outObject) : ACF_E_NOINTERFACE;
}

} // namespace varno
