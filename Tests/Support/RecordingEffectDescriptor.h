/// The host's record of an effect, for tests.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGEFFECTDESCRIPTOR_H
#define VARNO_TESTS_SUPPORT_RECORDINGEFFECTDESCRIPTOR_H

#include "AAX_IACFEffectDescriptor.h"
#include "Tests/Support/Recording.h"

namespace varno {

/// Notes its calls; hands out `made` where an object is asked for.
class RecordingEffectDescriptor : public Recording<AAX_IACFEffectDescriptor> {
public:
    AAX_Result NewComponentDescriptor(IACFUnknown** outComponent) override {
        return handOut(note("NewComponentDescriptor"), outComponent);
    }
    AAX_Result AddComponent(IACFUnknown* component) override { return note("AddComponent", component); }
    AAX_Result AddName(const char* name) override { return note("AddName", name); }
    AAX_Result AddCategory(std::uint32_t category) override { return note("AddCategory", category); }
    AAX_Result AddCategoryBypassParameter(std::uint32_t category, AAX_CParamID paramID) override {
        return note("AddCategoryBypassParameter", category, paramID);
    }
    AAX_Result AddProcPtr(void* proc, AAX_CProcPtrID procID) override {
        return note("AddProcPtr", proc, procID);
    }
    AAX_Result NewPropertyMap(IACFUnknown** outMap) override {
        return handOut(note("NewPropertyMap"), outMap);
    }
    AAX_Result SetProperties(IACFUnknown* map) override { return note("SetProperties", map); }
    AAX_Result AddResourceInfo(AAX_EResourceType type, const char* fileName) override {
        return note("AddResourceInfo", type, fileName);
    }
    AAX_Result AddMeterDescription(AAX_CTypeID meterID, const char* name, IACFUnknown* properties) override {
        return note("AddMeterDescription", meterID, name, properties);
    }
    AAX_Result AddControlMIDINode(AAX_CTypeID nodeID, std::int32_t nodeType, const char* name,
                                  std::uint32_t channelMask) override {
        return note("AddControlMIDINode", nodeID, nodeType, name, channelMask);
    }
};

} // namespace varno

#endif
