#include "Host/ContractMonitor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varno {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ContractMonitorTest, KeepsViolationsInOrderUntilTaken) {
    ContractMonitor monitor;
    monitor.report(Contract::kTouch, "first");
    monitor.report(Contract::kPackets, "second");
    ASSERT_EQ(2U, monitor.violations().size());
    EXPECT_EQ(Contract::kTouch, monitor.violations()[0].contract);
    EXPECT_EQ("second", monitor.takeViolations()[1].text);
    EXPECT_THAT(monitor.violations(), IsEmpty());
}

TEST(ContractMonitorTest, CallsItsListener) {
    ContractMonitor monitor;
    std::vector<std::string> heard;
    monitor.setListener([&](const Violation& violation) { heard.push_back(violation.text); });
    monitor.report(Contract::kThread, "heard");
    monitor.setListener({});
    monitor.report(Contract::kThread, "not heard");
    EXPECT_THAT(heard, ElementsAre("heard"));
}

TEST(ContractMonitorTest, AnExpectationCoversAnyNumberOfLines) {
    ContractMonitor monitor;
    monitor.expectTrace("known");
    monitor.trace(1, "a known line");
    monitor.trace(2, "another known line");
    EXPECT_THAT(monitor.violations(), IsEmpty());
    EXPECT_THAT(monitor.unmetExpectations(), IsEmpty());
    EXPECT_EQ(2U, monitor.traces().size());
    monitor.trace(3, "something else");
    EXPECT_EQ(1U, monitor.violations().size());
}

TEST(ContractMonitorTest, AnExpectationOfOneKindDoesNotCoverTheOther) {
    ContractMonitor monitor;
    monitor.expectTrace("both");
    monitor.assertFailure("file", 1, "both", 1);
    EXPECT_EQ(1U, monitor.violations().size());
}

TEST(ContractMonitorTest, ReportsWhatNeverHappened) {
    ContractMonitor monitor;
    monitor.expectTrace("a line");
    monitor.expectAssertion("a condition");
    EXPECT_THAT(monitor.unmetExpectations(),
                ElementsAre("a trace line with \"a line\"", "a failed assertion with \"a condition\""));
}

TEST(ContractMonitorTest, TakesNullTexts) {
    ContractMonitor monitor;
    monitor.trace(1, nullptr);
    monitor.assertFailure(nullptr, 3, nullptr, 1);
    EXPECT_EQ("", monitor.traces()[0].text);
    EXPECT_EQ("unexpected failed assertion \"\" at :3", monitor.violations()[1].text);
}

TEST(ContractMonitorTest, NamesEveryContract) {
    EXPECT_STREQ("thread", contractName(Contract::kThread));
    EXPECT_STREQ("lifecycle", contractName(Contract::kLifecycle));
    EXPECT_STREQ("touch", contractName(Contract::kTouch));
    EXPECT_STREQ("references", contractName(Contract::kReferences));
    EXPECT_STREQ("live objects", contractName(Contract::kLiveObjects));
    EXPECT_STREQ("diagnostics", contractName(Contract::kDiagnostics));
    EXPECT_STREQ("packets", contractName(Contract::kPackets));
    EXPECT_STREQ("parameters", contractName(Contract::kParameters));
    EXPECT_STREQ("description", contractName(Contract::kDescription));
}

} // namespace
} // namespace varno
