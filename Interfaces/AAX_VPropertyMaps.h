/// The property maps of a descriptor.
#ifndef VARNO_INTERFACES_AAX_VPROPERTYMAPS_H
#define VARNO_INTERFACES_AAX_VPROPERTYMAPS_H

#include "AAX_VPropertyMap.h"

#include <memory>
#include <vector>

/// Owns the maps that a descriptor returns, for the descriptor's lifetime.
class AAX_VPropertyMaps {
public:
    explicit AAX_VPropertyMaps(bool supportsExtendedStemFormats)
        : mSupportsExtendedStemFormats(supportsExtendedStemFormats) {}

    /// Wraps a new map of the host's. The result is owned here; null for an empty reference. [main]
    AAX_IPropertyMap* Add(const ACFPtr<IACFUnknown>& hostMap);

    bool SupportsExtendedStemFormats() const { return mSupportsExtendedStemFormats; }

private:
    bool mSupportsExtendedStemFormats;
    std::vector<std::unique_ptr<AAX_VPropertyMap>> mMaps;
};

#endif
