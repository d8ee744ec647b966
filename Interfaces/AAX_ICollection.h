/// Everything that the module offers, as the description writes it.
#ifndef VARNO_INTERFACES_AAX_ICOLLECTION_H
#define VARNO_INTERFACES_AAX_ICOLLECTION_H

#include "AAX.h"
#include "AAX_IDescriptionHost.h"
#include "AAX_IEffectDescriptor.h"
#include "AAX_IPropertyMap.h"

/// Each operation forwards to the host's of the same name (AAX_IACFCollection). Texts are borrowed for the
/// call. What the collection makes it owns: descriptors and maps live as long as it does, all through the
/// description.
class AAX_ICollection {
public:
    virtual ~AAX_ICollection() = default;
    /// A new effect descriptor, owned by the collection; null when the host fails or there is none. [main]
    virtual AAX_IEffectDescriptor* NewDescriptor() = 0;
    /// Adds the effect that `descriptor` (borrowed, may be null) describes now. Returns the host's result, or
    /// AAX_ERROR_NULL_OBJECT without a host's collection. [main]
    virtual AAX_Result AddEffect(const char* effectID, AAX_IEffectDescriptor* descriptor) = 0;
    /// Names the maker. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's collection.
    /// [main]
    virtual AAX_Result SetManufacturerName(const char* name) = 0;
    /// Adds a name of the whole module. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's
    /// collection. [main]
    virtual AAX_Result AddPackageName(const char* name) = 0;
    /// Sets the module's version number. Returns the host's result, or AAX_ERROR_NULL_OBJECT without a host's
    /// collection. [main]
    virtual AAX_Result SetPackageVersion(uint32_t version) = 0;
    /// A new property map, owned by the collection; null when the host fails or there is none. [main]
    virtual AAX_IPropertyMap* NewPropertyMap() = 0;
    /// Gives the module the properties that `map` (borrowed, may be null) holds now. Returns the host's
    /// result, or AAX_ERROR_NULL_OBJECT without a host's collection. [main]
    virtual AAX_Result SetProperties(AAX_IPropertyMap* map) = 0;
    /// What the host reports about itself, owned by the collection; never null. [main]
    virtual const AAX_IDescriptionHost* DescriptionHost() const = 0;
    /// The host's own object that takes the description in, borrowed; null when there is none. [main]
    virtual IACFUnknown* HostDefinition() const = 0;
};

#endif
