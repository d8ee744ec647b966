/// What this host tells about itself while a module is described.
#ifndef VARNO_HOST_HOSTDESCRIPTIONHOST_H
#define VARNO_HOST_HOSTDESCRIPTIONHOST_H

#include "AAX_IACFDescriptionHost.h"
#include "Host/HostObject.h"

namespace varno {

/// Description host version 1: knows the features of the options. [main]
class HostDescriptionHost final : public Facet<AAX_IACFDescriptionHost> {
public:
    HostDescriptionHost(IACFUnknown& owner, std::shared_ptr<HostContext> context);

    AAX_Result AcquireFeatureProperties(const acfUID& featureID, IACFUnknown** outFeatureInfo) override;

private:
    std::shared_ptr<HostContext> mContext;
};

} // namespace varno

#endif
