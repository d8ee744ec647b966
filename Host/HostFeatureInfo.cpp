#include "Host/HostFeatureInfo.h"

#include "Host/HostPropertyMap.h"

namespace varno {

HostFeatureInfo::HostFeatureInfo(std::shared_ptr<HostContext> context, HostFeature feature)
    : HostObject(std::move(context), "feature info"),
      mFeature(std::move(feature)) {
}

AAX_Result HostFeatureInfo::SupportLevel(AAX_ESupportLevel* outLevel) const {
    if (outLevel == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outLevel = mFeature.level;
    return AAX_SUCCESS;
}

AAX_Result HostFeatureInfo::AcquireProperties(IACFUnknown** outMap) {
    if (!mFeature.properties) {
        if (outMap != nullptr) {
            *outMap = nullptr;
        }
        return AAX_ERROR_NULL_OBJECT;
    }
    return handOutPropertyMap(context(), *mFeature.properties, outMap);
}

void* HostFeatureInfo::interfaceFor(const acfIID& iid) {
    return iid == IID_IAAXFeatureInfoV1 ? static_cast<AAX_IACFFeatureInfo*>(this) : nullptr;
}

} // namespace varno
