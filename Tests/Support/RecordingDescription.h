/// The host's side of a description; each object records its calls.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGDESCRIPTION_H
#define VARNO_TESTS_SUPPORT_RECORDINGDESCRIPTION_H

#include "AAX_IACFCollection.h"
#include "AAX_IACFComponentDescriptor.h"
#include "AAX_IACFDescriptionHost.h"
#include "AAX_IACFEffectDescriptor.h"
#include "AAX_IACFFeatureInfo.h"
#include "AAX_IACFPropertyMap.h"
#include "Tests/Support/FakeUnknown.h"

namespace varno {

/// Records its calls; returns `made` where an object is asked for.
class RecordingCollection : public Recording<AAX_IACFCollection> {
public:
    AAX_Result NewDescriptor(IACFUnknown** outDescriptor) override {
        return handOut(note("NewDescriptor"), outDescriptor);
    }
    AAX_Result AddEffect(const char* effectID, IACFUnknown* descriptor) override {
        return note("AddEffect", effectID, descriptor);
    }
    AAX_Result SetManufacturerName(const char* name) override { return note("SetManufacturerName", name); }
    AAX_Result AddPackageName(const char* name) override { return note("AddPackageName", name); }
    AAX_Result SetPackageVersion(std::uint32_t version) override {
        return note("SetPackageVersion", version);
    }
    AAX_Result NewPropertyMap(IACFUnknown** outMap) override {
        return handOut(note("NewPropertyMap"), outMap);
    }
    AAX_Result SetProperties(IACFUnknown* map) override { return note("SetProperties", map); }
};

/// Records its calls; returns `made` where an object is asked for.
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

/// Records its calls; returns `made` where an object is asked for.
class RecordingComponentDescriptor : public Recording<AAX_IACFComponentDescriptor> {
public:
    AAX_Result Clear() override { return note("Clear"); }
    AAX_Result AddAudioIn(AAX_CFieldIndex field) override { return note("AddAudioIn", field); }
    AAX_Result AddAudioOut(AAX_CFieldIndex field) override { return note("AddAudioOut", field); }
    AAX_Result AddAudioBufferLength(AAX_CFieldIndex field) override {
        return note("AddAudioBufferLength", field);
    }
    AAX_Result AddSampleRate(AAX_CFieldIndex field) override { return note("AddSampleRate", field); }
    AAX_Result AddClock(AAX_CFieldIndex field) override { return note("AddClock", field); }
    AAX_Result AddSideChainIn(AAX_CFieldIndex field) override { return note("AddSideChainIn", field); }
    AAX_Result AddDataInPort(AAX_CFieldIndex field, std::uint32_t packetSize,
                             AAX_EDataInPortType type) override {
        return note("AddDataInPort", field, packetSize, type);
    }
    AAX_Result AddAuxOutputStem(AAX_CFieldIndex field, std::int32_t stemFormat, const char* name) override {
        return note("AddAuxOutputStem", field, stemFormat, name);
    }
    AAX_Result AddPrivateData(AAX_CFieldIndex field, std::int32_t size, std::uint32_t options) override {
        return note("AddPrivateData", field, size, options);
    }
    AAX_Result AddTemporaryData(AAX_CFieldIndex field, std::uint32_t size) override {
        return note("AddTemporaryData", field, size);
    }
    AAX_Result AddDmaInstance(AAX_CFieldIndex field, AAX_IDma::EMode mode) override {
        return note("AddDmaInstance", field, mode);
    }
    AAX_Result AddMeters(AAX_CFieldIndex field, const AAX_CTypeID* meterIDs, std::uint32_t count) override {
        return note("AddMeters", field, meterIDs, count);
    }
    AAX_Result AddMIDINode(AAX_CFieldIndex field, std::int32_t nodeType, const char* name,
                           std::uint32_t channelMask) override {
        return note("AddMIDINode", field, nodeType, name, channelMask);
    }
    AAX_Result AddReservedField(AAX_CFieldIndex field, std::uint32_t fieldType) override {
        return note("AddReservedField", field, fieldType);
    }
    AAX_Result NewPropertyMap(IACFUnknown** outMap) override {
        return handOut(note("NewPropertyMap"), outMap);
    }
    AAX_Result DuplicatePropertyMap(IACFUnknown* map, IACFUnknown** outMap) override {
        return handOut(note("DuplicatePropertyMap", map), outMap);
    }
    AAX_Result AddProcessProc_Native(AAX_CProcessProc processProc, IACFUnknown* properties,
                                     AAX_CInstanceInitProc initProc, AAX_CBackgroundProc backgroundProc,
                                     std::int32_t* outProcID) override {
        return note("AddProcessProc_Native", processProc, properties, initProc, backgroundProc, outProcID);
    }
    AAX_Result AddProcessProc_TI(const char* dllName, const char* entryName, IACFUnknown* properties,
                                 const char* initName, const char* backgroundName,
                                 std::int32_t* outProcID) override {
        return note("AddProcessProc_TI", dllName, entryName, properties, initName, backgroundName, outProcID);
    }
    AAX_Result AddProcessProc(IACFUnknown* properties, std::int32_t* outProcIDs,
                              std::int32_t capacity) override {
        return note("AddProcessProc", properties, outProcIDs, capacity);
    }
};

/// Records its calls and does nothing else.
class RecordingPropertyMap : public Recording<AAX_IACFPropertyMap> {
public:
    AAX_Result GetProperty(AAX_EProperty property, std::int32_t* outValue) const override {
        return note("GetProperty", property, outValue);
    }
    AAX_Result GetPointerProperty(AAX_EProperty property, const void** outValue) const override {
        return note("GetPointerProperty", property, outValue);
    }
    AAX_Result AddProperty(AAX_EProperty property, std::int32_t value) override {
        return note("AddProperty", property, value);
    }
    AAX_Result AddPointerProperty(AAX_EProperty property, const void* value) override {
        return note("AddPointerProperty", property, value);
    }
    AAX_Result RemoveProperty(AAX_EProperty property) override { return note("RemoveProperty", property); }
    AAX_Result AddPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID* ids,
                                      std::uint32_t count) override {
        return note("AddPropertyWithIDArray", property, ids, count);
    }
    AAX_Result GetPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID** outIDs,
                                      std::uint32_t* outCount) const override {
        return note("GetPropertyWithIDArray", property, outIDs, outCount);
    }
};

/// Records its calls; returns `made` where an object is asked for.
class RecordingDescriptionHost : public Recording<AAX_IACFDescriptionHost> {
public:
    AAX_Result AcquireFeatureProperties(const acfUID& featureID, IACFUnknown** outFeatureInfo) override {
        return handOut(note("AcquireFeatureProperties", &featureID), outFeatureInfo);
    }
};

/// Records its calls; reports `level` and returns `made`.
class RecordingFeatureInfo : public Recording<AAX_IACFFeatureInfo> {
public:
    AAX_Result SupportLevel(AAX_ESupportLevel* outLevel) const override {
        *outLevel = level;
        return note("SupportLevel", outLevel);
    }
    AAX_Result AcquireProperties(IACFUnknown** outMap) override {
        return handOut(note("AcquireProperties"), outMap);
    }

    AAX_ESupportLevel level = AAX_eSupportLevel_Unsupported;
};

} // namespace varno

#endif
