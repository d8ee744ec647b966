/// What the host reports about one of its features, as the plug-in reads it.
#ifndef VARNO_INTERFACES_AAX_IFEATUREINFO_H
#define VARNO_INTERFACES_AAX_IFEATUREINFO_H

#include "AAX.h"
#include "AAX_IPropertyMap.h"

#include <memory>

/// Each operation forwards to the host's of the same name (AAX_IACFFeatureInfo).
class AAX_IFeatureInfo {
public:
    virtual ~AAX_IFeatureInfo() = default;
    /// Whether the feature is supported. Returns the host's result, or AAX_ERROR_NULL_OBJECT without
    /// version 1. [main]
    virtual AAX_Result SupportLevel(AAX_ESupportLevel& outLevel) const = 0;
    /// The feature's properties, owned by the caller; null when the host has none or lacks version 1. [main]
    virtual std::unique_ptr<const AAX_IPropertyMap> AcquireProperties() const = 0;
    /// The feature that this is about. [any]
    virtual const acfUID& ID() const = 0;
};

#endif
