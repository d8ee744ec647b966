/// The host's record of one effect.
#ifndef VARNO_INTERFACES_AAX_VEFFECTDESCRIPTOR_H
#define VARNO_INTERFACES_AAX_VEFFECTDESCRIPTOR_H

#include "AAX_IACFEffectDescriptor.h"
#include "AAX_IEffectDescriptor.h"
#include "AAX_VComponentDescriptor.h"
#include "AAX_VPropertyMaps.h"
#include "ACF/ACFPtr.h"

#include <memory>
#include <vector>

/// Acquires the host's interface once, when it is made, and holds it for its life.
class AAX_VEffectDescriptor : public AAX_IEffectDescriptor {
public:
    /// `hostDescriptor` (borrowed, may be null) is the host's record. Whether the host supports extended stem
    /// formats is handed on to the maps made here.
    AAX_VEffectDescriptor(IACFUnknown* hostDescriptor, bool supportsExtendedStemFormats);

    AAX_IComponentDescriptor* NewComponentDescriptor() override;
    AAX_Result AddComponent(AAX_IComponentDescriptor* component) override;
    AAX_Result AddName(const char* name) override;
    AAX_Result AddCategory(uint32_t category) override;
    AAX_Result AddCategoryBypassParameter(uint32_t category, AAX_CParamID paramID) override;
    AAX_Result AddProcPtr(void* proc, AAX_CProcPtrID procID) override;
    AAX_IPropertyMap* NewPropertyMap() override;
    AAX_Result SetProperties(AAX_IPropertyMap* map) override;
    AAX_Result AddResourceInfo(AAX_EResourceType type, const char* fileName) override;
    AAX_Result AddMeterDescription(AAX_CTypeID meterID, const char* name, AAX_IPropertyMap* map) override;
    AAX_Result AddControlMIDINode(AAX_CTypeID nodeID, int32_t nodeType, const char* name,
                                  uint32_t channelMask) override;
    IACFUnknown* HostObject() const override;

private:
    ACFPtr<AAX_IACFEffectDescriptor> mVersion1;
    AAX_VPropertyMaps mPropertyMaps;
    std::vector<std::unique_ptr<AAX_VComponentDescriptor>> mComponents;
};

#endif
