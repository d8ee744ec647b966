/// The host's automation, for tests of the data model.
#ifndef VARNO_FAKEAUTOMATION_H
#define VARNO_FAKEAUTOMATION_H

#include "AAX_IACFAutomationDelegate.h"
#include "FakeUnknown.h"

#include <string>
#include <utility>
#include <vector>

namespace varno::test {

/// Keeps the value requests; the test answers them.
class FakeAutomation : public FakeUnknown<AAX_IACFAutomationDelegate> {
public:
    AAX_Result PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) override {
        requests.emplace_back(paramID, normalizedValue);
        return AAX_SUCCESS;
    }
    AAX_Result RegisterParameter(AAX_CParamID) override { return AAX_SUCCESS; }
    AAX_Result UnregisterParameter(AAX_CParamID) override { return AAX_SUCCESS; }
    AAX_Result PostCurrentValue(AAX_CParamID, double) override { return AAX_SUCCESS; }
    AAX_Result PostTouchRequest(AAX_CParamID) override { return AAX_SUCCESS; }
    AAX_Result PostReleaseRequest(AAX_CParamID) override { return AAX_SUCCESS; }

    std::vector<std::pair<std::string, double>> requests; ///< In the order of their arrival.
};

} // namespace varno::test

#endif
