#include "AAX_VAutomationDelegate.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingAutomationDelegate.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using D = AAX_IAutomationDelegate;

constexpr auto kNull = AAX_ERROR_NULL_OBJECT;
constexpr const char* kID = "Gain";

std::vector<Operation<D>> allOperations() {
    return {
        operation<D>("RegisterParameter", 1, kNull, &D::RegisterParameter, kID),
        operation<D>("UnregisterParameter", 1, kNull, &D::UnregisterParameter, kID),
        operation<D>("PostSetValueRequest", 1, kNull, &D::PostSetValueRequest, kID, 0.25),
        operation<D>("PostCurrentValue", 1, kNull, &D::PostCurrentValue, kID, 0.75),
        operation<D>("PostTouchRequest", 1, kNull, &D::PostTouchRequest, kID),
        operation<D>("PostReleaseRequest", 1, kNull, &D::PostReleaseRequest, kID),
    };
}

TEST(AAX_VAutomationDelegateTest, ForwardsToTheHost) {
    expectForwarding<RecordingAutomationDelegate, D>(
        {IID_IAAXAutomationDelegateV1}, allOperations(),
        [](IACFUnknown* host) { return std::make_unique<AAX_VAutomationDelegate>(host); });
}

TEST(AAX_VAutomationDelegateTest, VirtualSlotsHaveTheirOrder) {
    expectConsecutive(slotsOf(allOperations()));
}

} // namespace
} // namespace varno
