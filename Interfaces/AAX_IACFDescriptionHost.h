/// What a host reports about itself while a module is described.
#ifndef VARNO_INTERFACES_AAX_IACFDESCRIPTIONHOST_H
#define VARNO_INTERFACES_AAX_IACFDESCRIPTIONHOST_H

#include "AAX.h"

/// Version 1 (IID_IAAXDescriptionHostV1).
class AAX_IACFDescriptionHost : public IACFUnknown {
public:
    /// Tells about the feature `featureID`; on success the caller owns one reference to *outFeatureInfo
    /// (which answers to IID_IAAXFeatureInfoV1), otherwise it is null. Returns AAX_SUCCESS, or
    /// AAX_ERROR_UNKNOWN_ID for a feature that the host does not know. [main]
    virtual AAX_Result AcquireFeatureProperties(const acfUID& featureID, IACFUnknown** outFeatureInfo) = 0;

protected:
    ~AAX_IACFDescriptionHost() = default;
};

#endif
