/// The host's record of an algorithm variant, for tests.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGCOMPONENTDESCRIPTOR_H
#define VARNO_TESTS_SUPPORT_RECORDINGCOMPONENTDESCRIPTOR_H

#include "AAX_IACFComponentDescriptor.h"
#include "Tests/Support/Recording.h"

namespace varno {

/// Notes its calls; hands out `made` where an object is asked for.
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

} // namespace varno

#endif
