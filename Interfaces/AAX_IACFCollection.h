/// The host's record of everything that a module offers.
#ifndef VARNO_INTERFACES_AAX_IACFCOLLECTION_H
#define VARNO_INTERFACES_AAX_IACFCOLLECTION_H

#include "AAX.h"

/// Version 1 (IID_IAAXCollectionV1), offered by the object handed to the registration entry point, which
/// answers to IID_IACFPluginDefinition too and, where the host has one, to IID_IAAXDescriptionHostV1.
class AAX_IACFCollection : public IACFUnknown {
public:
    /// Makes an empty effect descriptor; on success the caller owns one reference to *outDescriptor,
    /// otherwise it is null. Returns AAX_SUCCESS, or a failure code. [main]
    virtual AAX_Result NewDescriptor(IACFUnknown** outDescriptor) = 0;
    /// Adds the effect that `descriptor` (borrowed, copied) describes now, under the identifier `effectID`
    /// (copied). Returns AAX_SUCCESS; AAX_ERROR_NULL_ARGUMENT; AAX_ERROR_DUPLICATE_EFFECT_ID;
    /// AAX_ERROR_NO_COMPONENTS for an effect without a variant; AAX_ERROR_EMPTY_EFFECT_NAME for one without a
    /// name. [main]
    virtual AAX_Result AddEffect(const char* effectID, IACFUnknown* descriptor) = 0;
    /// Names the maker; copied. Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result SetManufacturerName(const char* name) = 0;
    /// Adds a name of the whole module; copied. Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result AddPackageName(const char* name) = 0;
    /// Sets the module's version number. Returns AAX_SUCCESS. [main]
    virtual AAX_Result SetPackageVersion(uint32_t version) = 0;
    /// Makes an empty property map; on success the caller owns one reference to *outMap, otherwise it is
    /// null. Returns AAX_SUCCESS, or a failure code. [main]
    virtual AAX_Result NewPropertyMap(IACFUnknown** outMap) = 0;
    /// Gives the module the properties that `map` (borrowed, copied) holds now. Returns AAX_SUCCESS, or
    /// AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result SetProperties(IACFUnknown* map) = 0;

protected:
    ~AAX_IACFCollection() = default;
};

#endif
