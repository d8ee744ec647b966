/// The host's record of one effect while it is described.
#ifndef VARNO_HOST_HOSTEFFECTDESCRIPTOR_H
#define VARNO_HOST_HOSTEFFECTDESCRIPTOR_H

#include "AAX_IACFEffectDescriptor.h"
#include "Host/HostObject.h"
#include "Host/ModuleDescription.h"

namespace varno {

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
    std::int32_t mPropertyMapsMade = 0;
};

} // namespace varno

#endif
