/// A host that takes no memory, for tests of what a data model takes.
#ifndef VARNO_TESTS_SUPPORT_QUIETHOST_H
#define VARNO_TESTS_SUPPORT_QUIETHOST_H

#include "AAX_IACFAutomationDelegate.h"
#include "Tests/Support/FakeController.h"
#include "Tests/Support/FakeUnknown.h"

#include <array>
#include <cstring>

namespace varno::test {

/// Keeps the value of the last request, which the test answers.
class QuietAutomation : public FakeUnknown<AAX_IACFAutomationDelegate> {
public:
    AAX_Result RegisterParameter(AAX_CParamID /*paramID*/) override { return AAX_SUCCESS; }
    AAX_Result UnregisterParameter(AAX_CParamID /*paramID*/) override { return AAX_SUCCESS; }
    AAX_Result PostTouchRequest(AAX_CParamID /*paramID*/) override { return AAX_SUCCESS; }
    AAX_Result PostReleaseRequest(AAX_CParamID /*paramID*/) override { return AAX_SUCCESS; }
    AAX_Result PostSetValueRequest(AAX_CParamID /*paramID*/, double normalizedValue) override {
        requested = normalizedValue;
        return AAX_SUCCESS;
    }
    AAX_Result PostCurrentValue(AAX_CParamID /*paramID*/, double /*normalizedValue*/) override {
        return AAX_SUCCESS;
    }

    double requested = -1.0;
};

/// Keeps the last packet.
class QuietController : public FakeController {
public:
    AAX_Result PostPacket(AAX_CFieldIndex field, const void* payload, std::uint32_t size) override {
        lastField = field;
        std::memcpy(lastPayload.data(), payload, std::min<std::size_t>(size, lastPayload.size()));
        return AAX_SUCCESS;
    }

    AAX_CFieldIndex lastField = -1;
    std::array<char, sizeof(double)> lastPayload{};
};

/// Offers both.
class QuietHost : public FakeHost {
public:
    QuietHost() {
        offer(IID_IAAXControllerV1, &controller);
        offer(IID_IAAXAutomationDelegateV1, &automation);
    }

    QuietController controller;
    QuietAutomation automation;
};

} // namespace varno::test

#endif
