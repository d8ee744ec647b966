/// A property map of the host's.
#ifndef VARNO_INTERFACES_AAX_VPROPERTYMAP_H
#define VARNO_INTERFACES_AAX_VPROPERTYMAP_H

#include "AAX_IACFPropertyMap.h"
#include "AAX_IPropertyMap.h"
#include "ACF/ACFPtr.h"

#include <memory>

/// Acquires the host's interface once, when it is made, and holds it for its life.
class AAX_VPropertyMap : public AAX_IPropertyMap {
public:
    /// `hostMap` (borrowed, may be null) is the host's map. Without the host's support for extended stem
    /// formats AddProperty refuses them.
    AAX_VPropertyMap(IACFUnknown* hostMap, bool supportsExtendedStemFormats);

    /// Wraps a map that the host has filled itself (borrowed), without support for extended stem formats. The
    /// result is owned by the caller, null for a null map. [main]
    static std::unique_ptr<const AAX_IPropertyMap> Acquire(IACFUnknown* hostMap);

    AAX_Result GetProperty(AAX_EProperty property, int32_t* outValue) const override;
    AAX_Result GetPointerProperty(AAX_EProperty property, const void** outValue) const override;
    AAX_Result AddProperty(AAX_EProperty property, int32_t value) override;
    AAX_Result AddPointerProperty(AAX_EProperty property, const void* value) override;
    AAX_Result AddPointerProperty(AAX_EProperty property, const char* value) override;
    AAX_Result RemoveProperty(AAX_EProperty property) override;
    AAX_Result AddPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID* ids,
                                      uint32_t count) override;
    AAX_Result GetPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID** outIDs,
                                      uint32_t* outCount) const override;
    IACFUnknown* HostObject() const override;

private:
    ACFPtr<AAX_IACFPropertyMap> mVersion1;
    bool mSupportsExtendedStemFormats;
};

#endif
