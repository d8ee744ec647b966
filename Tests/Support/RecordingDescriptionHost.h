/// What a host tells about itself, for tests.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGDESCRIPTIONHOST_H
#define VARNO_TESTS_SUPPORT_RECORDINGDESCRIPTIONHOST_H

#include "AAX_IACFDescriptionHost.h"
#include "Tests/Support/Recording.h"

namespace varno {

/// Notes its calls; hands out `made` where an object is asked for.
class RecordingDescriptionHost : public Recording<AAX_IACFDescriptionHost> {
public:
    AAX_Result AcquireFeatureProperties(const acfUID& featureID, IACFUnknown** outFeatureInfo) override {
        return handOut(note("AcquireFeatureProperties", &featureID), outFeatureInfo);
    }
};

} // namespace varno

#endif
