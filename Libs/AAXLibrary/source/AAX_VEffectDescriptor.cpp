#include "AAX_VEffectDescriptor.h"

#include "HostObjects.h"

AAX_VEffectDescriptor::AAX_VEffectDescriptor(IACFUnknown* hostDescriptor, bool supportsExtendedStemFormats)
    : mVersion1(ACFPtr<AAX_IACFEffectDescriptor>::Query(hostDescriptor, IID_IAAXEffectDescriptorV1)),
      mPropertyMaps(supportsExtendedStemFormats) {
}

AAX_IComponentDescriptor* AAX_VEffectDescriptor::NewComponentDescriptor() {
    if (!mVersion1) {
        return nullptr;
    }
    const auto component =
        HandedOut([&](IACFUnknown** out) { return mVersion1->NewComponentDescriptor(out); });
    if (!component) {
        return nullptr;
    }
    mComponents.push_back(std::make_unique<AAX_VComponentDescriptor>(
        component.Get(), mPropertyMaps.SupportsExtendedStemFormats()));
    return mComponents.back().get();
}

AAX_Result AAX_VEffectDescriptor::AddComponent(AAX_IComponentDescriptor* component) {
    return mVersion1 ? mVersion1->AddComponent(HostObjectOf(component)) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VEffectDescriptor::AddName(const char* name) {
    return mVersion1 ? mVersion1->AddName(name) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VEffectDescriptor::AddCategory(uint32_t category) {
    return mVersion1 ? mVersion1->AddCategory(category) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VEffectDescriptor::AddCategoryBypassParameter(uint32_t category, AAX_CParamID paramID) {
    return mVersion1 ? mVersion1->AddCategoryBypassParameter(category, paramID) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VEffectDescriptor::AddProcPtr(void* proc, AAX_CProcPtrID procID) {
    return mVersion1 ? mVersion1->AddProcPtr(proc, procID) : AAX_ERROR_NULL_OBJECT;
}

AAX_IPropertyMap* AAX_VEffectDescriptor::NewPropertyMap() {
    if (!mVersion1) {
        return nullptr;
    }
    return mPropertyMaps.Add(HandedOut([&](IACFUnknown** out) { return mVersion1->NewPropertyMap(out); }));
}

AAX_Result AAX_VEffectDescriptor::SetProperties(AAX_IPropertyMap* map) {
    return mVersion1 ? mVersion1->SetProperties(HostObjectOf(map)) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VEffectDescriptor::AddResourceInfo(AAX_EResourceType type, const char* fileName) {
    return mVersion1 ? mVersion1->AddResourceInfo(type, fileName) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VEffectDescriptor::AddMeterDescription(AAX_CTypeID meterID, const char* name,
                                                      AAX_IPropertyMap* map) {
    return mVersion1 ? mVersion1->AddMeterDescription(meterID, name, HostObjectOf(map))
                     : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VEffectDescriptor::AddControlMIDINode(AAX_CTypeID nodeID, int32_t nodeType, const char* name,
                                                     uint32_t channelMask) {
    return mVersion1 ? mVersion1->AddControlMIDINode(nodeID, nodeType, name, channelMask)
                     : AAX_ERROR_NULL_OBJECT;
}

IACFUnknown* AAX_VEffectDescriptor::HostObject() const {
    return mVersion1.Get();
}
