/// What the host reports about itself.
#ifndef VARNO_INTERFACES_AAX_VDESCRIPTIONHOST_H
#define VARNO_INTERFACES_AAX_VDESCRIPTIONHOST_H

#include "AAX_IACFDescriptionHost.h"
#include "AAX_IDescriptionHost.h"
#include "ACF/ACFPtr.h"

/// Acquires the host's interface once, when it is made, and holds it for its life.
class AAX_VDescriptionHost : public AAX_IDescriptionHost {
public:
    /// `host` (borrowed, may be null) is the object handed to the registration.
    explicit AAX_VDescriptionHost(IACFUnknown* host);

    std::unique_ptr<const AAX_IFeatureInfo> AcquireFeatureProperties(const acfUID& featureID) const override;

private:
    ACFPtr<AAX_IACFDescriptionHost> mVersion1;
};

#endif
