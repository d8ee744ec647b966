/// What a host offers to a plug-in.
#ifndef VARNO_FORMATS_LV2_HOSTFEATURES_H
#define VARNO_FORMATS_LV2_HOSTFEATURES_H

#include <lv2/core/lv2.h>

namespace varno {

/// A host's list of features, borrowed for the call that it came with. Nothing of it is required; a null list
/// and entries without an identifier are valid. [main]
class HostFeatures {
public:
    explicit HostFeatures(const LV2_Feature* const* features) noexcept
        : mFeatures(features) {}

    /// The data of a feature; null when it is not offered or has none.
    void* data(const char* uri) const noexcept;
    /// One line for the user: through the host's log, else on standard error.
    void logError(const char* text) const noexcept;

private:
    const LV2_Feature* const* mFeatures;
};

} // namespace varno

#endif
