/// A table of properties, as the plug-in uses it.
#ifndef VARNO_INTERFACES_AAX_IPROPERTYMAP_H
#define VARNO_INTERFACES_AAX_IPROPERTYMAP_H

#include "AAX.h"

/// Each operation forwards to the host's of the same name (AAX_IACFPropertyMap).
class AAX_IPropertyMap {
public:
    virtual ~AAX_IPropertyMap() = default;
    /// Reads an integer property. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's map.
    /// [main]
    virtual AAX_Result GetProperty(AAX_EProperty property, int32_t* outValue) const = 0;
    /// Reads a pointer property, which stays its owner's. Returns the host's result, or AAX_ERROR_NULL_OBJECT
    /// without a host's map. [main]
    virtual AAX_Result GetPointerProperty(AAX_EProperty property, const void** outValue) const = 0;
    /// Adds an integer property or replaces its value. Returns the host's result; AAX_ERROR_NULL_OBJECT
    /// without a host's map; AAX_ERROR_PROPERTY_UNDEFINED for a stem format that the host does not support,
    /// without a call of the host. [main]
    virtual AAX_Result AddProperty(AAX_EProperty property, int32_t value) = 0;
    /// Adds a pointer property; what it points at must outlive the map. Returns the host's result, or
    /// AAX_ERROR_NULL_OBJECT without a host's map. [main]
    virtual AAX_Result AddPointerProperty(AAX_EProperty property, const void* value) = 0;
    /// Adds a text property; the text must outlive the map. Returns the host's result, or
    /// AAX_ERROR_NULL_OBJECT without a host's map. [main]
    virtual AAX_Result AddPointerProperty(AAX_EProperty property, const char* value) = 0;
    /// Removes a property. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's map. [main]
    virtual AAX_Result RemoveProperty(AAX_EProperty property) = 0;
    /// Adds a property with a list of `count` plug-in identifiers (copied). Returns the host's result, or
    /// AAX_ERROR_NULL_OBJECT without a host's map. [main]
    virtual AAX_Result AddPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID* ids,
                                              uint32_t count) = 0;
    /// Reads a property's list, borrowed until the property changes. Returns the host's result, or
    /// AAX_ERROR_NULL_OBJECT without a host's map. [main]
    virtual AAX_Result GetPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID** outIDs,
                                              uint32_t* outCount) const = 0;
    /// The host's map, borrowed; null when there is none. [main]
    virtual IACFUnknown* HostObject() const = 0;
};

#endif
