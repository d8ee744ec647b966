/// What a module fills in while it is described: effects, algorithm variants and property maps.
#ifndef VARNO_HOST_HOSTDESCRIPTORS_H
#define VARNO_HOST_HOSTDESCRIPTORS_H

#include "AAX_IACFComponentDescriptor.h"
#include "AAX_IACFEffectDescriptor.h"
#include "AAX_IACFPropertyMap.h"
#include "Host/HostObject.h"
#include "Host/ModuleDescription.h"

namespace varno {

/// Property map version 1. [main]
class HostPropertyMap : public HostObject<AAX_IACFPropertyMap> {
public:
    static constexpr acfIID kOwnID = {
        0x8C7F2C7C, 0x1B5C, 0x4E55, {0x9D, 0x0E, 0x6E, 0x2A, 0xC5, 0x3B, 0x90, 0x4F}};

    explicit HostPropertyMap(std::shared_ptr<HostContext> context, Properties properties = {});

    AAX_Result GetProperty(AAX_EProperty property, std::int32_t* outValue) const override;
    AAX_Result GetPointerProperty(AAX_EProperty property, const void** outValue) const override;
    AAX_Result AddProperty(AAX_EProperty property, std::int32_t value) override;
    AAX_Result AddPointerProperty(AAX_EProperty property, const void* value) override;
    AAX_Result RemoveProperty(AAX_EProperty property) override;
    AAX_Result AddPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID* ids,
                                      std::uint32_t count) override;
    AAX_Result GetPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID** outIDs,
                                      std::uint32_t* outCount) const override;

    /// Everything that the map holds.
    const Properties& properties() const { return mProperties; }

protected:
    void* interfaceFor(const acfIID& iid) override;

private:
    template<class T>
    const T* find(AAX_EProperty property) const;

    Properties mProperties;
};

/// Hands out a new map through an output of an interface; the caller owns one reference. Returns AAX_SUCCESS,
/// or AAX_ERROR_NULL_ARGUMENT.
AAX_Result handOutPropertyMap(const std::shared_ptr<HostContext>& context, Properties properties,
                              IACFUnknown** outMap);

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

/// Effect descriptor version 1. This host has no MIDI: AddControlMIDINode gives AAX_ERROR_UNIMPLEMENTED.
/// [main]
class HostEffectDescriptor : public HostObject<AAX_IACFEffectDescriptor> {
public:
    static constexpr acfIID kOwnID = {
        0x51B0E7A8, 0x96C4, 0x4D3E, {0xB2, 0x0A, 0x7E, 0x18, 0xF4, 0x2C, 0x0D, 0x65}};

    explicit HostEffectDescriptor(std::shared_ptr<HostContext> context);

    AAX_Result NewComponentDescriptor(IACFUnknown** outComponent) override;
    AAX_Result AddComponent(IACFUnknown* component) override;
    AAX_Result AddName(const char* name) override;
    AAX_Result AddCategory(std::uint32_t category) override;
    AAX_Result AddCategoryBypassParameter(std::uint32_t category, AAX_CParamID paramID) override;
    AAX_Result AddProcPtr(void* proc, AAX_CProcPtrID procID) override;
    AAX_Result NewPropertyMap(IACFUnknown** outMap) override;
    AAX_Result SetProperties(IACFUnknown* map) override;
    AAX_Result AddResourceInfo(AAX_EResourceType type, const char* fileName) override;
    AAX_Result AddMeterDescription(AAX_CTypeID meterID, const char* name, IACFUnknown* properties) override;
    AAX_Result AddControlMIDINode(AAX_CTypeID nodeID, std::int32_t nodeType, const char* name,
                                  std::uint32_t channelMask) override;

    /// What has been described so far; without an identifier.
    const EffectDescription& description() const { return mDescription; }

protected:
    void* interfaceFor(const acfIID& iid) override;

private:
    EffectDescription mDescription;
};

} // namespace varno

#endif
