/// One effect, as the description writes it.
#ifndef VARNO_INTERFACES_AAX_IEFFECTDESCRIPTOR_H
#define VARNO_INTERFACES_AAX_IEFFECTDESCRIPTOR_H

#include "AAX.h"
#include "AAX_IComponentDescriptor.h"
#include "AAX_IPropertyMap.h"

/// Each operation forwards to the host's of the same name (AAX_IACFEffectDescriptor). Texts are borrowed for
/// the call. What the descriptor makes it owns: component descriptors and maps live as long as it does.
class AAX_IEffectDescriptor {
public:
    virtual ~AAX_IEffectDescriptor() = default;
    /// A new component descriptor, owned by this one; null when the host fails or there is none. [main]
    virtual AAX_IComponentDescriptor* NewComponentDescriptor() = 0;
    /// Adds the variant that `component` (borrowed, may be null) describes now. Returns the host's result, or
    /// AAX_ERROR_NULL_OBJECT without a host's descriptor. [main]
    virtual AAX_Result AddComponent(AAX_IComponentDescriptor* component) = 0;
    /// Adds a name. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's descriptor. [main]
    virtual AAX_Result AddName(const char* name) = 0;
    /// Adds categories, AAX_EPlugInCategory bits. Returns the host's result, or AAX_ERROR_NULL_OBJECT without
    /// a host's descriptor. [main]
    virtual AAX_Result AddCategory(uint32_t category) = 0;
    /// Adds categories and the parameter that bypasses them. Returns the host's result, or
    /// AAX_ERROR_NULL_OBJECT without a host's descriptor. [main]
    virtual AAX_Result AddCategoryBypassParameter(uint32_t category, AAX_CParamID paramID) = 0;
    /// Registers a creation procedure, an AAX_CCreateObjectProc handed over as an untyped pointer. Returns
    /// the host's result, or AAX_ERROR_NULL_OBJECT without a host's descriptor. [main]
    virtual AAX_Result AddProcPtr(void* proc, AAX_CProcPtrID procID) = 0;
    /// A new property map, owned by this descriptor; null when the host fails or there is none. [main]
    virtual AAX_IPropertyMap* NewPropertyMap() = 0;
    /// Gives the effect the properties that `map` (borrowed, may be null) holds now. Returns the host's
    /// result, or AAX_ERROR_NULL_OBJECT without a host's descriptor. [main]
    virtual AAX_Result SetProperties(AAX_IPropertyMap* map) = 0;
    /// Names a file of the bundle's resources. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a
    /// host's descriptor. [main]
    virtual AAX_Result AddResourceInfo(AAX_EResourceType type, const char* fileName) = 0;
    /// Describes a meter with the properties that `map` (borrowed, may be null) holds now. Returns the host's
    /// result, or AAX_ERROR_NULL_OBJECT without a host's descriptor. [main]
    virtual AAX_Result AddMeterDescription(AAX_CTypeID meterID, const char* name, AAX_IPropertyMap* map) = 0;
    /// Describes a MIDI node for control. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a
    /// host's descriptor. [main]
    virtual AAX_Result AddControlMIDINode(AAX_CTypeID nodeID, int32_t nodeType, const char* name,
                                          uint32_t channelMask) = 0;
    /// The host's descriptor, borrowed; null when there is none. [main]
    virtual IACFUnknown* HostObject() const = 0;
};

#endif
