/// The host's record of a module, for tests.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGCOLLECTION_H
#define VARNO_TESTS_SUPPORT_RECORDINGCOLLECTION_H

#include "AAX_IACFCollection.h"
#include "Tests/Support/Recording.h"

namespace varno {

/// Notes its calls; hands out `made` where an object is asked for.
class RecordingCollection : public Recording<AAX_IACFCollection> {
public:
    AAX_Result NewDescriptor(IACFUnknown** outDescriptor) override {
        return handOut(note("NewDescriptor"), outDescriptor);
    }
    AAX_Result AddEffect(const char* effectID, IACFUnknown* descriptor) override {
        return note("AddEffect", effectID, descriptor);
    }
    AAX_Result SetManufacturerName(const char* name) override { return note("SetManufacturerName", name); }
    AAX_Result AddPackageName(const char* name) override { return note("AddPackageName", name); }
    AAX_Result SetPackageVersion(std::uint32_t version) override {
        return note("SetPackageVersion", version);
    }
    AAX_Result NewPropertyMap(IACFUnknown** outMap) override {
        return handOut(note("NewPropertyMap"), outMap);
    }
    AAX_Result SetProperties(IACFUnknown* map) override { return note("SetProperties", map); }
};

} // namespace varno

#endif
