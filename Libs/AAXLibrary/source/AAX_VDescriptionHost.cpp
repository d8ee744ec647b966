#include "AAX_VDescriptionHost.h"

#include "AAX_VFeatureInfo.h"
#include "HostObjects.h"

AAX_VDescriptionHost::AAX_VDescriptionHost(IACFUnknown* host)
    : mVersion1(ACFPtr<AAX_IACFDescriptionHost>::Query(host, IID_IAAXDescriptionHostV1)) {
}

std::unique_ptr<const AAX_IFeatureInfo>
AAX_VDescriptionHost::AcquireFeatureProperties(const acfUID& featureID) const {
    if (!mVersion1) {
        return nullptr;
    }
    const auto info =
        HandedOut([&](IACFUnknown** out) { return mVersion1->AcquireFeatureProperties(featureID, out); });
    return info ? std::make_unique<AAX_VFeatureInfo>(info.Get(), featureID) : nullptr;
}
