/// What a host reports about one of its features.
#ifndef VARNO_INTERFACES_AAX_IACFFEATUREINFO_H
#define VARNO_INTERFACES_AAX_IACFFEATUREINFO_H

#include "AAX.h"

/// Version 1 (IID_IAAXFeatureInfoV1).
class AAX_IACFFeatureInfo : public IACFUnknown {
public:
    /// Tells whether the feature is supported. Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result SupportLevel(AAX_ESupportLevel* outLevel) const = 0;
    /// Hands out the feature's properties; on success the caller owns one reference to *outMap, otherwise it
    /// is null. Returns AAX_SUCCESS, or a failure code when there are none. [main]
    virtual AAX_Result AcquireProperties(IACFUnknown** outMap) = 0;

protected:
    ~AAX_IACFFeatureInfo() = default;
};

#endif
