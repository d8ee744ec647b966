#include "AAX_VFeatureInfo.h"

#include "AAX_VPropertyMap.h"
#include "HostObjects.h"

AAX_VFeatureInfo::AAX_VFeatureInfo(IACFUnknown* hostInfo, const acfUID& featureID)
    : mFeatureID(featureID),
      mVersion1(ACFPtr<AAX_IACFFeatureInfo>::Query(hostInfo, IID_IAAXFeatureInfoV1)) {
}

AAX_Result AAX_VFeatureInfo::SupportLevel(AAX_ESupportLevel& outLevel) const {
    return mVersion1 ? mVersion1->SupportLevel(&outLevel) : AAX_ERROR_NULL_OBJECT;
}

std::unique_ptr<const AAX_IPropertyMap> AAX_VFeatureInfo::AcquireProperties() const {
    if (!mVersion1) {
        return nullptr;
    }
    const auto map = HandedOut([&](IACFUnknown** out) { return mVersion1->AcquireProperties(out); });
    return AAX_VPropertyMap::Acquire(map.Get());
}

const acfUID& AAX_VFeatureInfo::ID() const {
    return mFeatureID;
}
