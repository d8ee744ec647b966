#include "AAX_VCollection.h"

#include "HostObjects.h"

namespace {

bool SupportsExtendedStemFormats(const AAX_IDescriptionHost& host) {
    const auto feature = host.AcquireFeatureProperties(AAX_FeatureUID_ExtendedStemFormats);
    AAX_ESupportLevel level = AAX_eSupportLevel_Unsupported;
    return feature && feature->SupportLevel(level) == AAX_SUCCESS && level == AAX_eSupportLevel_Supported;
}

} // namespace

AAX_VCollection::AAX_VCollection(IACFUnknown* host)
    : mVersion1(ACFPtr<AAX_IACFCollection>::Query(host, IID_IAAXCollectionV1)),
      mDescriptionHost(host),
      mPropertyMaps(SupportsExtendedStemFormats(mDescriptionHost)) {
}

AAX_IEffectDescriptor* AAX_VCollection::NewDescriptor() {
    if (!mVersion1) {
        return nullptr;
    }
    const auto descriptor = HandedOut([&](IACFUnknown** out) { return mVersion1->NewDescriptor(out); });
    if (!descriptor) {
        return nullptr;
    }
    mDescriptors.push_back(std::make_unique<AAX_VEffectDescriptor>(
        descriptor.Get(), mPropertyMaps.SupportsExtendedStemFormats()));
    return mDescriptors.back().get();
}

AAX_Result AAX_VCollection::AddEffect(const char* effectID, AAX_IEffectDescriptor* descriptor) {
    return mVersion1 ? mVersion1->AddEffect(effectID, HostObjectOf(descriptor)) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VCollection::SetManufacturerName(const char* name) {
    return mVersion1 ? mVersion1->SetManufacturerName(name) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VCollection::AddPackageName(const char* name) {
    return mVersion1 ? mVersion1->AddPackageName(name) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VCollection::SetPackageVersion(uint32_t version) {
    return mVersion1 ? mVersion1->SetPackageVersion(version) : AAX_ERROR_NULL_OBJECT;
}

AAX_IPropertyMap* AAX_VCollection::NewPropertyMap() {
    if (!mVersion1) {
        return nullptr;
    }
    return mPropertyMaps.Add(HandedOut([&](IACFUnknown** out) { return mVersion1->NewPropertyMap(out); }));
}

AAX_Result AAX_VCollection::SetProperties(AAX_IPropertyMap* map) {
    return mVersion1 ? mVersion1->SetProperties(HostObjectOf(map)) : AAX_ERROR_NULL_OBJECT;
}

const AAX_IDescriptionHost* AAX_VCollection::DescriptionHost() const {
    return &mDescriptionHost;
}

IACFUnknown* AAX_VCollection::HostDefinition() const {
    return mVersion1.Get();
}
