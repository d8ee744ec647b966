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
    std::vector<std::string> lines;
    monitor.setTraceListener([&](const TraceLine& line) { lines.push_back(line.text); });
    monitor.expectTrace("known");
    monitor.trace(1, "a known line");
    monitor.trace(2, "another known line");
    EXPECT_THAT(monitor.violations(), IsEmpty());
    EXPECT_THAT(monitor.unmetExpectations(), IsEmpty());
    EXPECT_THAT(lines, ElementsAre("a known line", "another known line"));
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
    EXPECT_EQ("unexpected trace line \"\"", monitor.violations()[0].text);
    EXPECT_EQ("unexpected failed assertion \"\" at :3", monitor.violations()[1].text);
}

// A module that breaks a contract in every buffer.
TEST(ContractMonitorTest, KeepsTheFirstViolationsAndCountsTheOthers) {
    ContractMonitor monitor;
    constexpr std::size_t kMost = ContractMonitor::kMostViolations;
    for (std::size_t i = 0; i < kMost; ++i) {
        monitor.report(Contract::kThread, std::to_string(i));
    }
    EXPECT_EQ(kMost, monitor.violations().size());
    monitor.report(Contract::kPackets, "one");
    monitor.report(Contract::kThread, "two");
    monitor.report(Contract::kThread, "three");
    const auto violations = monitor.takeViolations();
    ASSERT_EQ(kMost + 1, violations.size());
    EXPECT_EQ("999", violations[kMost - 1].text);
    EXPECT_EQ(Contract::kPackets, violations[kMost].contract);
    EXPECT_EQ("one (and 2 more, of any kind)", violations[kMost].text);
    EXPECT_THAT(monitor.violations(), IsEmpty());
    monitor.report(Contract::kTouch, "afterwards");
    EXPECT_EQ(1U, monitor.violations().size());
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
