/// The host's record of everything that the module offers.
#ifndef VARNO_INTERFACES_AAX_VCOLLECTION_H
#define VARNO_INTERFACES_AAX_VCOLLECTION_H

#include "AAX_IACFCollection.h"
#include "AAX_ICollection.h"
#include "AAX_VDescriptionHost.h"
#include "AAX_VEffectDescriptor.h"
#include "AAX_VPropertyMaps.h"
#include "ACF/ACFPtr.h"

#include <memory>
#include <vector>

/// Acquires the host's interfaces once, when it is made, and holds them for its life.
class AAX_VCollection : public AAX_ICollection {
public:
    /// `host` (borrowed, may be null) is the object handed to the registration.
    explicit AAX_VCollection(IACFUnknown* host);

    AAX_IEffectDescriptor* NewDescriptor() override;
    AAX_Result AddEffect(const char* effectID, AAX_IEffectDescriptor* descriptor) override;
    AAX_Result SetManufacturerName(const char* name) override;
    AAX_Result AddPackageName(const char* name) override;
    AAX_Result SetPackageVersion(uint32_t version) override;
    AAX_IPropertyMap* NewPropertyMap() override;
    AAX_Result SetProperties(AAX_IPropertyMap* map) override;
    const AAX_IDescriptionHost* DescriptionHost() const override;
    IACFUnknown* HostDefinition() const override;

private:
    ACFPtr<AAX_IACFCollection> mVersion1;
    AAX_VDescriptionHost mDescriptionHost;
    AAX_VPropertyMaps mPropertyMaps;
    std::vector<std::unique_ptr<AAX_VEffectDescriptor>> mDescriptors;
};

#endif
