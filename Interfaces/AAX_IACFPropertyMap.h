/// The host's table of properties.
#ifndef VARNO_INTERFACES_AAX_IACFPROPERTYMAP_H
#define VARNO_INTERFACES_AAX_IACFPROPERTYMAP_H

#include "AAX.h"

/// Version 1 (IID_IAAXPropertyMapV1). A property has one value, an integer or a pointer.
class AAX_IACFPropertyMap : public IACFUnknown {
public:
    /// Reads an integer property. Returns AAX_SUCCESS; AAX_ERROR_PROPERTY_UNDEFINED when it was never added,
    /// and then leaves *outValue alone; AAX_ERROR_NULL_ARGUMENT for a null output. [main]
    virtual AAX_Result GetProperty(AAX_EProperty property, int32_t* outValue) const = 0;
    /// Reads a pointer property; the pointer stays its owner's. Returns AAX_SUCCESS;
    /// AAX_ERROR_PROPERTY_UNDEFINED when it was never added, and then leaves *outValue alone;
    /// AAX_ERROR_NULL_ARGUMENT for a null output. [main]
    virtual AAX_Result GetPointerProperty(AAX_EProperty property, const void** outValue) const = 0;
    /// Adds an integer property or replaces its value. Returns AAX_SUCCESS. [main]
    virtual AAX_Result AddProperty(AAX_EProperty property, int32_t value) = 0;
    /// Adds a pointer property or replaces its value; what it points at stays the caller's and must outlive
    /// the map. Returns AAX_SUCCESS. [main]
    virtual AAX_Result AddPointerProperty(AAX_EProperty property, const void* value) = 0;
    /// Removes a property. Returns AAX_SUCCESS, or AAX_ERROR_PROPERTY_UNDEFINED when there is none. [main]
    virtual AAX_Result RemoveProperty(AAX_EProperty property) = 0;
    /// Adds a property with a list of `count` plug-in identifiers beside it; the list is copied.
    /// Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT for a null list with a count above 0. [main]
    virtual AAX_Result AddPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID* ids,
                                              uint32_t count) = 0;
    /// Reads the list of a property added with one; *outIDs is borrowed until the property changes.
    /// Returns AAX_SUCCESS; AAX_ERROR_PROPERTY_UNDEFINED when there is none; AAX_ERROR_NULL_ARGUMENT for a
    /// null output. [main]
    virtual AAX_Result GetPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID** outIDs,
                                              uint32_t* outCount) const = 0;

protected:
    ~AAX_IACFPropertyMap() = default;
};

#endif
