#include "AAX_VComponentDescriptor.h"

#include "HostObjects.h"

AAX_VComponentDescriptor::AAX_VComponentDescriptor(IACFUnknown* hostDescriptor,
                                                   bool supportsExtendedStemFormats)
    : mVersion1(ACFPtr<AAX_IACFComponentDescriptor>::Query(hostDescriptor, IID_IAAXComponentDescriptorV1)),
      mPropertyMaps(supportsExtendedStemFormats) {
}

AAX_Result AAX_VComponentDescriptor::Clear() {
    return mVersion1 ? mVersion1->Clear() : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddAudioIn(AAX_CFieldIndex field) {
    return mVersion1 ? mVersion1->AddAudioIn(field) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddAudioOut(AAX_CFieldIndex field) {
    return mVersion1 ? mVersion1->AddAudioOut(field) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddAudioBufferLength(AAX_CFieldIndex field) {
    return mVersion1 ? mVersion1->AddAudioBufferLength(field) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddSampleRate(AAX_CFieldIndex field) {
    return mVersion1 ? mVersion1->AddSampleRate(field) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddClock(AAX_CFieldIndex field) {
    return mVersion1 ? mVersion1->AddClock(field) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddSideChainIn(AAX_CFieldIndex field) {
    return mVersion1 ? mVersion1->AddSideChainIn(field) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddDataInPort(AAX_CFieldIndex field, uint32_t packetSize,
                                                   AAX_EDataInPortType type) {
    return mVersion1 ? mVersion1->AddDataInPort(field, packetSize, type) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddAuxOutputStem(AAX_CFieldIndex field, int32_t stemFormat,
                                                      const char* name) {
    return mVersion1 ? mVersion1->AddAuxOutputStem(field, stemFormat, name) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddPrivateData(AAX_CFieldIndex field, int32_t size, uint32_t options) {
    return mVersion1 ? mVersion1->AddPrivateData(field, size, options) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddTemporaryData(AAX_CFieldIndex field, uint32_t size) {
    return mVersion1 ? mVersion1->AddTemporaryData(field, size) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddDmaInstance(AAX_CFieldIndex field, AAX_IDma::EMode mode) {
    return mVersion1 ? mVersion1->AddDmaInstance(field, mode) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddMeters(AAX_CFieldIndex field, const AAX_CTypeID* meterIDs,
                                               uint32_t count) {
    return mVersion1 ? mVersion1->AddMeters(field, meterIDs, count) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddMIDINode(AAX_CFieldIndex field, int32_t nodeType, const char* name,
                                                 uint32_t channelMask) {
    return mVersion1 ? mVersion1->AddMIDINode(field, nodeType, name, channelMask) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddReservedField(AAX_CFieldIndex field, uint32_t fieldType) {
    return mVersion1 ? mVersion1->AddReservedField(field, fieldType) : AAX_ERROR_NULL_OBJECT;
}

AAX_IPropertyMap* AAX_VComponentDescriptor::NewPropertyMap() {
    if (!mVersion1) {
        return nullptr;
    }
    return mPropertyMaps.Add(HandedOut([&](IACFUnknown** out) { return mVersion1->NewPropertyMap(out); }));
}

AAX_IPropertyMap* AAX_VComponentDescriptor::DuplicatePropertyMap(AAX_IPropertyMap* map) {
    if (!mVersion1) {
        return nullptr;
    }
    return mPropertyMaps.Add(HandedOut(
        [&](IACFUnknown** out) { return mVersion1->DuplicatePropertyMap(HostObjectOf(map), out); }));
}

AAX_Result AAX_VComponentDescriptor::AddProcessProc_Native(AAX_CProcessProc processProc,
                                                           AAX_IPropertyMap* map,
                                                           AAX_CInstanceInitProc initProc,
                                                           AAX_CBackgroundProc backgroundProc,
                                                           int32_t* outProcID) {
    return mVersion1 ? mVersion1->AddProcessProc_Native(processProc, HostObjectOf(map), initProc,
                                                        backgroundProc, outProcID)
                     : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddProcessProc_TI(const char* dllName, const char* entryName,
                                                       AAX_IPropertyMap* map, const char* initName,
                                                       const char* backgroundName, int32_t* outProcID) {
    return mVersion1 ? mVersion1->AddProcessProc_TI(dllName, entryName, HostObjectOf(map), initName,
                                                    backgroundName, outProcID)
                     : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VComponentDescriptor::AddProcessProc(AAX_IPropertyMap* map, int32_t* outProcIDs,
                                                    int32_t capacity) {
    return mVersion1 ? mVersion1->AddProcessProc(HostObjectOf(map), outProcIDs, capacity)
                     : AAX_ERROR_NULL_OBJECT;
}

IACFUnknown* AAX_VComponentDescriptor::HostObject() const {
    return mVersion1.Get();
}
