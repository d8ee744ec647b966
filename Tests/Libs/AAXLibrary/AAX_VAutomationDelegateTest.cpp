#include "AAX_VAutomationDelegate.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingInstance.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using Automation = AAX_IAutomationDelegate;

std::vector<Operation<Automation>> automationOperations() {
    return {
        operation<Automation>("RegisterParameter", 1, kWithoutHost, &Automation::RegisterParameter, kText),
        operation<Automation>("UnregisterParameter", 1, kWithoutHost, &Automation::UnregisterParameter,
                              kText),
        operation<Automation>("PostSetValueRequest", 1, kWithoutHost, &Automation::PostSetValueRequest, kText,
                              0.25),
        operation<Automation>("PostCurrentValue", 1, kWithoutHost, &Automation::PostCurrentValue, kText,
                              0.75),
        operation<Automation>("PostTouchRequest", 1, kWithoutHost, &Automation::PostTouchRequest, kText),
        operation<Automation>("PostReleaseRequest", 1, kWithoutHost, &Automation::PostReleaseRequest, kText),
    };
}

TEST(AAX_VAutomationDelegateTest, ForwardsToTheHost) {
    expectForwarding<RecordingAutomationDelegate, Automation>(
        {IID_IAAXAutomationDelegateV1}, automationOperations(),
        [](IACFUnknown* host) { return std::make_unique<AAX_VAutomationDelegate>(host); });
}

TEST(AAX_VAutomationDelegateTest, ReleasesAHostThatThrows) {
    expectReleaseOfAll<AAX_VAutomationDelegate>({IID_IAAXAutomationDelegateV1});
}

TEST(AAX_VAutomationDelegateTest, VirtualSlotsHaveTheirOrder) {
    expectConsecutive(slotsOf(automationOperations()));
}

} // namespace
} // namespace varno
