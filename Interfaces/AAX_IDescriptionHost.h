/// What the host reports about itself while the module is described.
#ifndef VARNO_INTERFACES_AAX_IDESCRIPTIONHOST_H
#define VARNO_INTERFACES_AAX_IDESCRIPTIONHOST_H

#include "AAX.h"
#include "AAX_IFeatureInfo.h"

#include <memory>

class AAX_IDescriptionHost {
public:
    virtual ~AAX_IDescriptionHost() = default;
    /// What the host reports about the feature `featureID`, owned by the caller; null when the host does not
    /// know the feature or has no such interface. [main]
    virtual std::unique_ptr<const AAX_IFeatureInfo>
    AcquireFeatureProperties(const acfUID& featureID) const = 0;
};

#endif
