/// What a host tells about a feature, for tests.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGFEATUREINFO_H
#define VARNO_TESTS_SUPPORT_RECORDINGFEATUREINFO_H

#include "AAX_IACFFeatureInfo.h"
#include "Tests/Support/Recording.h"

namespace varno {

/// Notes its calls; tells `level` and hands out `made`.
class RecordingFeatureInfo : public Recording<AAX_IACFFeatureInfo> {
public:
    AAX_Result SupportLevel(AAX_ESupportLevel* outLevel) const override {
        *outLevel = level;
        return note("SupportLevel", outLevel);
    }
    AAX_Result AcquireProperties(IACFUnknown** outMap) override {
        return handOut(note("AcquireProperties"), outMap);
    }

    AAX_ESupportLevel level = AAX_eSupportLevel_Unsupported;
};

} // namespace varno

#endif
