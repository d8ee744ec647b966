#include "Host/HostDescriptionHost.h"

#include "Host/HostFeatureInfo.h"

namespace varno {

HostDescriptionHost::HostDescriptionHost(IACFUnknown& owner, std::shared_ptr<HostContext> context)
    : Facet(owner),
      mContext(std::move(context)) {
}

AAX_Result HostDescriptionHost::AcquireFeatureProperties(const acfUID& featureID,
                                                         IACFUnknown** outFeatureInfo) {
    if (outFeatureInfo == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outFeatureInfo = nullptr;
    for (const HostFeature& feature : mContext->options.features) {
        if (feature.id == featureID) {
            *outFeatureInfo = new HostFeatureInfo(mContext, feature);
            return AAX_SUCCESS;
        }
    }
    return AAX_ERROR_UNKNOWN_ID;
}

} // namespace varno
