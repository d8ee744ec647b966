#include "Host/ContractMonitor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varno {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ContractMonitorTest, KeepsViolationsInOrderUntilTaken) {
    ContractMonitor monitor;
    monitor.report(Contract::Touch, "first");
    monitor.report(Contract::Packets, "second");
    ASSERT_EQ(2U, monitor.violations().size());
    EXPECT_EQ(Contract::Touch, monitor.violations()[0].contract);
    EXPECT_EQ("second", monitor.takeViolations()[1].text);
    EXPECT_THAT(monitor.violations(), IsEmpty());
}

TEST(ContractMonitorTest, CallsItsListener) {
    ContractMonitor monitor;
    std::vector<std::string> heard;
    monitor.setListener([&](const Violation& violation) { heard.push_back(violation.text); });
    monitor.report(Contract::Thread, "heard");
    monitor.setListener({});
    monitor.report(Contract::Thread, "not heard");
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

TEST(ContractMonitorTest, TellsWhatNeverHappened) {
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
    EXPECT_STREQ("thread", contractName(Contract::Thread));
    EXPECT_STREQ("lifecycle", contractName(Contract::Lifecycle));
    EXPECT_STREQ("touch", contractName(Contract::Touch));
    EXPECT_STREQ("references", contractName(Contract::References));
    EXPECT_STREQ("live objects", contractName(Contract::LiveObjects));
    EXPECT_STREQ("diagnostics", contractName(Contract::Diagnostics));
    EXPECT_STREQ("packets", contractName(Contract::Packets));
    EXPECT_STREQ("parameters", contractName(Contract::Parameters));
    EXPECT_STREQ("description", contractName(Contract::Description));
}

} // namespace
} // namespace varno
