/// What this host tells about one of its features.
#ifndef VARNO_HOST_HOSTFEATUREINFO_H
#define VARNO_HOST_HOSTFEATUREINFO_H

#include "AAX_IACFFeatureInfo.h"
#include "Host/HostObject.h"

namespace varno {

/// Feature info version 1. [main]
class HostFeatureInfo : public HostObject<AAX_IACFFeatureInfo> {
public:
    HostFeatureInfo(std::shared_ptr<HostContext> context, HostFeature feature);

    AAX_Result SupportLevel(AAX_ESupportLevel* outLevel) const override;
    AAX_Result AcquireProperties(IACFUnknown** outMap) override;

protected:
    void* interfaceFor(const acfIID& iid) override;

private:
    HostFeature mFeature;
};

} // namespace varno

#endif
