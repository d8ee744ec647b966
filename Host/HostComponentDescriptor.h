/// The host's record of one algorithm variant.
#ifndef VARNO_HOST_HOSTCOMPONENTDESCRIPTOR_H
#define VARNO_HOST_HOSTCOMPONENTDESCRIPTOR_H

#include "AAX_IACFComponentDescriptor.h"
#include "Host/HostObject.h"
#include "Host/ModuleDescription.h"

namespace varno {

/// Component descriptor version 1. This host has no auxiliary stems, direct memory access or MIDI: declaring
/// one gives AAX_ERROR_UNIMPLEMENTED. [main]
class HostComponentDescriptor : public HostObject<AAX_IACFComponentDescriptor> {
public:
    static constexpr acfIID kOwnID = {
        0x0C1E6B52, 0x5D28, 0x4C0B, {0xA1, 0x7D, 0x3B, 0x42, 0xD9, 0x50, 0xE6, 0x13}};

    explicit HostComponentDescriptor(std::shared_ptr<HostContext> context);

    AAX_Result Clear() override;
    AAX_Result AddAudioIn(AAX_CFieldIndex field) override;
    AAX_Result AddAudioOut(AAX_CFieldIndex field) override;
    AAX_Result AddAudioBufferLength(AAX_CFieldIndex field) override;
    AAX_Result AddSampleRate(AAX_CFieldIndex field) override;
    AAX_Result AddClock(AAX_CFieldIndex field) override;
    AAX_Result AddSideChainIn(AAX_CFieldIndex field) override;
    AAX_Result AddDataInPort(AAX_CFieldIndex field, std::uint32_t packetSize,
                             AAX_EDataInPortType type) override;
    AAX_Result AddAuxOutputStem(AAX_CFieldIndex field, std::int32_t stemFormat, const char* name) override;
    AAX_Result AddPrivateData(AAX_CFieldIndex field, std::int32_t size, std::uint32_t options) override;
    AAX_Result AddTemporaryData(AAX_CFieldIndex field, std::uint32_t size) override;
    AAX_Result AddDmaInstance(AAX_CFieldIndex field, AAX_IDma::EMode mode) override;
    AAX_Result AddMeters(AAX_CFieldIndex field, const AAX_CTypeID* meterIDs, std::uint32_t count) override;
    AAX_Result AddMIDINode(AAX_CFieldIndex field, std::int32_t nodeType, const char* name,
                           std::uint32_t channelMask) override;
    AAX_Result AddReservedField(AAX_CFieldIndex field, std::uint32_t fieldType) override;
    AAX_Result NewPropertyMap(IACFUnknown** outMap) override;
    AAX_Result DuplicatePropertyMap(IACFUnknown* map, IACFUnknown** outMap) override;
    AAX_Result AddProcessProc_Native(AAX_CProcessProc processProc, IACFUnknown* properties,
                                     AAX_CInstanceInitProc initProc, AAX_CBackgroundProc backgroundProc,
                                     std::int32_t* outProcID) override;
    AAX_Result AddProcessProc_TI(const char* dllName, const char* entryName, IACFUnknown* properties,
                                 const char* initName, const char* backgroundName,
                                 std::int32_t* outProcID) override;
    AAX_Result AddProcessProc(IACFUnknown* properties, std::int32_t* outProcIDs,
                              std::int32_t capacity) override;

    /// What has been declared since the last Clear.
    const VariantDescription& description() const { return mDescription; }

protected:
    void* interfaceFor(const acfIID& iid) override;

private:
    AAX_Result declare(FieldDescription field);
    std::int32_t nextProcID(std::int32_t* outProcID);

    VariantDescription mDescription;
    std::int32_t mLastProcID = 0; ///< Survives Clear, so that numbers of one effect's variants differ.
};

} // namespace varno

#endif
