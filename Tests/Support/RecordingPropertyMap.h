/// A property map of the host's, for tests.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGPROPERTYMAP_H
#define VARNO_TESTS_SUPPORT_RECORDINGPROPERTYMAP_H

#include "AAX_IACFPropertyMap.h"
#include "Tests/Support/Recording.h"

namespace varno {

/// Notes its calls and does nothing else.
class RecordingPropertyMap : public Recording<AAX_IACFPropertyMap> {
public:
    AAX_Result GetProperty(AAX_EProperty property, std::int32_t* outValue) const override {
        return note("GetProperty", property, outValue);
    }
    AAX_Result GetPointerProperty(AAX_EProperty property, const void** outValue) const override {
        return note("GetPointerProperty", property, outValue);
    }
    AAX_Result AddProperty(AAX_EProperty property, std::int32_t value) override {
        return note("AddProperty", property, value);
    }
    AAX_Result AddPointerProperty(AAX_EProperty property, const void* value) override {
        return note("AddPointerProperty", property, value);
    }
    AAX_Result RemoveProperty(AAX_EProperty property) override { return note("RemoveProperty", property); }
    AAX_Result AddPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID* ids,
                                      std::uint32_t count) override {
        return note("AddPropertyWithIDArray", property, ids, count);
    }
    AAX_Result GetPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID** outIDs,
                                      std::uint32_t* outCount) const override {
        return note("GetPropertyWithIDArray", property, outIDs, outCount);
    }
};

} // namespace varno

#endif
