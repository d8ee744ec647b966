/// The host's record of one algorithm variant.
#ifndef VARNO_INTERFACES_AAX_VCOMPONENTDESCRIPTOR_H
#define VARNO_INTERFACES_AAX_VCOMPONENTDESCRIPTOR_H

#include "AAX_IACFComponentDescriptor.h"
#include "AAX_IComponentDescriptor.h"
#include "AAX_VPropertyMaps.h"
#include "ACF/ACFPtr.h"

/// Acquires the host's interface once, when it is made, and holds it for its life.
class AAX_VComponentDescriptor : public AAX_IComponentDescriptor {
public:
    /// `hostDescriptor` (borrowed, may be null) is the host's record. Whether the host supports extended stem
    /// formats is handed on to the maps made here.
    AAX_VComponentDescriptor(IACFUnknown* hostDescriptor, bool supportsExtendedStemFormats);

    AAX_Result Clear() override;
    AAX_Result AddAudioIn(AAX_CFieldIndex field) override;
    AAX_Result AddAudioOut(AAX_CFieldIndex field) override;
    AAX_Result AddAudioBufferLength(AAX_CFieldIndex field) override;
    AAX_Result AddSampleRate(AAX_CFieldIndex field) override;
    AAX_Result AddClock(AAX_CFieldIndex field) override;
    AAX_Result AddSideChainIn(AAX_CFieldIndex field) override;
    AAX_Result AddDataInPort(AAX_CFieldIndex field, uint32_t packetSize, AAX_EDataInPortType type) override;
    AAX_Result AddAuxOutputStem(AAX_CFieldIndex field, int32_t stemFormat, const char* name) override;
    AAX_Result AddPrivateData(AAX_CFieldIndex field, int32_t size, uint32_t options) override;
    AAX_Result AddTemporaryData(AAX_CFieldIndex field, uint32_t size) override;
    AAX_Result AddDmaInstance(AAX_CFieldIndex field, AAX_IDma::EMode mode) override;
    AAX_Result AddMeters(AAX_CFieldIndex field, const AAX_CTypeID* meterIDs, uint32_t count) override;
    AAX_Result AddMIDINode(AAX_CFieldIndex field, int32_t nodeType, const char* name,
                           uint32_t channelMask) override;
    AAX_Result AddReservedField(AAX_CFieldIndex field, uint32_t fieldType) override;
    AAX_IPropertyMap* NewPropertyMap() override;
    AAX_IPropertyMap* DuplicatePropertyMap(AAX_IPropertyMap* map) override;
    AAX_Result AddProcessProc_Native(AAX_CProcessProc processProc, AAX_IPropertyMap* map,
                                     AAX_CInstanceInitProc initProc, AAX_CBackgroundProc backgroundProc,
                                     int32_t* outProcID) override;
    AAX_Result AddProcessProc_TI(const char* dllName, const char* entryName, AAX_IPropertyMap* map,
                                 const char* initName, const char* backgroundName,
                                 int32_t* outProcID) override;
    AAX_Result AddProcessProc(AAX_IPropertyMap* map, int32_t* outProcIDs, int32_t capacity) override;
    IACFUnknown* HostObject() const override;

private:
    ACFPtr<AAX_IACFComponentDescriptor> mVersion1;
    AAX_VPropertyMaps mPropertyMaps;
};

#endif
