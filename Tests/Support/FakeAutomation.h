/// The host's automation, for tests of the data model.
#ifndef VARNO_TESTS_SUPPORT_FAKEAUTOMATION_H
#define VARNO_TESTS_SUPPORT_FAKEAUTOMATION_H

#include "AAX_IACFAutomationDelegate.h"
#include "Tests/Support/FakeUnknown.h"

#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {

/// Keeps the value requests, which the test answers, and writes down every call.
class FakeAutomation : public FakeUnknown<AAX_IACFAutomationDelegate> {
public:
    AAX_Result RegisterParameter(AAX_CParamID paramID) override { return note("register", paramID); }
    AAX_Result UnregisterParameter(AAX_CParamID paramID) override { return note("unregister", paramID); }
    AAX_Result PostTouchRequest(AAX_CParamID paramID) override { return note("touch", paramID); }
    AAX_Result PostReleaseRequest(AAX_CParamID paramID) override { return note("release", paramID); }
    AAX_Result PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) override {
        requests.emplace_back(paramID, normalizedValue);
        return note("request", paramID, normalizedValue);
    }
    AAX_Result PostCurrentValue(AAX_CParamID paramID, double normalizedValue) override {
        return note("current", paramID, normalizedValue);
    }

    /// The calls since the last time this was asked, such as "touch Gain" and "request Gain 0.25".
    std::vector<std::string> takeCalls() { return std::exchange(mCalls, {}); }

    std::vector<std::pair<std::string, double>> requests; ///< In the order of their arrival.

private:
    template<class... Values>
    AAX_Result note(const char* call, const char* paramID, Values... values) {
        std::ostringstream text;
        text << call << " " << paramID;
        ((text << " " << values), ...);
        mCalls.push_back(text.str());
        return AAX_SUCCESS;
    }

    std::vector<std::string> mCalls;
};

} // namespace varno::test

#endif
