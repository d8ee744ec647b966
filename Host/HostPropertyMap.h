/// The host's table of properties.
#ifndef VARNO_HOST_HOSTPROPERTYMAP_H
#define VARNO_HOST_HOSTPROPERTYMAP_H

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

} // namespace varno

#endif
