/// The host's automation, for tests.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGAUTOMATIONDELEGATE_H
#define VARNO_TESTS_SUPPORT_RECORDINGAUTOMATIONDELEGATE_H

#include "AAX_IACFAutomationDelegate.h"
#include "Tests/Support/Recording.h"

namespace varno {

/// Notes its calls and does nothing else.
class RecordingAutomationDelegate : public Recording<AAX_IACFAutomationDelegate> {
public:
    AAX_Result RegisterParameter(AAX_CParamID paramID) override { return note("RegisterParameter", paramID); }
    AAX_Result UnregisterParameter(AAX_CParamID paramID) override {
        return note("UnregisterParameter", paramID);
    }
    AAX_Result PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) override {
        return note("PostSetValueRequest", paramID, normalizedValue);
    }
    AAX_Result PostCurrentValue(AAX_CParamID paramID, double normalizedValue) override {
        return note("PostCurrentValue", paramID, normalizedValue);
    }
    AAX_Result PostTouchRequest(AAX_CParamID paramID) override { return note("PostTouchRequest", paramID); }
    AAX_Result PostReleaseRequest(AAX_CParamID paramID) override {
        return note("PostReleaseRequest", paramID);
    }
};

} // namespace varno

#endif
