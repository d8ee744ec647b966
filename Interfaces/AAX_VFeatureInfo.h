/// What the host reports about one of its features.
#ifndef VARNO_INTERFACES_AAX_VFEATUREINFO_H
#define VARNO_INTERFACES_AAX_VFEATUREINFO_H

#include "AAX_IACFFeatureInfo.h"
#include "AAX_IFeatureInfo.h"
#include "ACF/ACFPtr.h"

/// Acquires the host's interface once, when it is made, and holds it for its life.
class AAX_VFeatureInfo : public AAX_IFeatureInfo {
public:
    /// `hostInfo` (borrowed, may be null) is the host's object about the feature `featureID` (copied).
    AAX_VFeatureInfo(IACFUnknown* hostInfo, const acfUID& featureID);

    AAX_Result SupportLevel(AAX_ESupportLevel& outLevel) const override;
    std::unique_ptr<const AAX_IPropertyMap> AcquireProperties() const override;
    const acfUID& ID() const override;

private:
    acfUID mFeatureID;
    ACFPtr<AAX_IACFFeatureInfo> mVersion1;
};

#endif
