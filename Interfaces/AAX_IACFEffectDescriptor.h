/// The host's record of one effect.
#ifndef VARNO_INTERFACES_AAX_IACFEFFECTDESCRIPTOR_H
#define VARNO_INTERFACES_AAX_IACFEFFECTDESCRIPTOR_H

#include "AAX.h"

/// Version 1 (IID_IAAXEffectDescriptorV1).
class AAX_IACFEffectDescriptor : public IACFUnknown {
public:
    /// Makes an empty component descriptor; on success the caller owns one reference to *outComponent,
    /// otherwise it is null. Returns AAX_SUCCESS, or a failure code. [main]
    virtual AAX_Result NewComponentDescriptor(IACFUnknown** outComponent) = 0;
    /// Adds the variant that `component` (borrowed, copied) describes now. Returns AAX_SUCCESS, or
    /// AAX_ERROR_NULL_COMPONENT for a null one. [main]
    virtual AAX_Result AddComponent(IACFUnknown* component) = 0;
    /// Adds a name; the host shows the longest that fits. `name` is copied. Returns AAX_SUCCESS, or
    /// AAX_ERROR_EMPTY_EFFECT_NAME for a null or empty one. [main]
    virtual AAX_Result AddName(const char* name) = 0;
    /// Adds categories, AAX_EPlugInCategory bits. Returns AAX_SUCCESS. [main]
    virtual AAX_Result AddCategory(uint32_t category) = 0;
    /// Adds categories and the parameter that bypasses them; the identifier is copied. Returns AAX_SUCCESS,
    /// or AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result AddCategoryBypassParameter(uint32_t category, AAX_CParamID paramID) = 0;
    /// Registers a creation procedure, an AAX_CCreateObjectProc handed over as an untyped pointer.
    /// Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result AddProcPtr(void* proc, AAX_CProcPtrID procID) = 0;
    /// Makes an empty property map; on success the caller owns one reference to *outMap, otherwise it is
    /// null. Returns AAX_SUCCESS, or a failure code. [main]
    virtual AAX_Result NewPropertyMap(IACFUnknown** outMap) = 0;
    /// Gives the effect the properties that `map` (borrowed, copied) holds now. Returns AAX_SUCCESS, or
    /// AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result SetProperties(IACFUnknown* map) = 0;
    /// Names a file in the bundle's resources; the name is copied. Returns AAX_SUCCESS, or
    /// AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result AddResourceInfo(AAX_EResourceType type, const char* fileName) = 0;
    /// Describes a meter: four-character identifier, name (copied) and properties (borrowed, copied).
    /// Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result AddMeterDescription(AAX_CTypeID meterID, const char* name,
                                           IACFUnknown* properties) = 0;
    /// Describes a MIDI node for control; `name` is copied. Returns AAX_SUCCESS, or a failure code where the
    /// host has none. [main]
    virtual AAX_Result AddControlMIDINode(AAX_CTypeID nodeID, int32_t nodeType, const char* name,
                                          uint32_t channelMask) = 0;

protected:
    ~AAX_IACFEffectDescriptor() = default;
};

#endif
