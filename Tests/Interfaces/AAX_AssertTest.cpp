#include "AAX_Assert.h"
#include "Tests/Support/FakeHostServices.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

TEST(AAX_AssertTest, ReportsTheTextOfTheConditionAndCarriesOn) {
    const ListeningHost host;
    const int numSteps = 0;
    AAX_ASSERT(0 < numSteps);
    const int line = __LINE__ - 1;
    ASSERT_EQ(host.assertions().size(), 1U);
    EXPECT_EQ(host.assertions()[0].note, "0 < numSteps");
    EXPECT_EQ(host.assertions()[0].line, line);
    EXPECT_EQ(host.assertions()[0].flags, 1);
}

TEST(AAX_AssertTest, FileIsNamedFromTheSourceRoot) {
    const ListeningHost host;
    AAX_ASSERT(0);
    ASSERT_EQ(host.assertions().size(), 1U);
    EXPECT_EQ(host.assertions()[0].file, "Tests/Interfaces/AAX_AssertTest.cpp");
    EXPECT_EQ(host.assertions()[0].note, "0");
}

TEST(AAX_AssertTest, TextStandsAsWrittenEvenWhereItNamesAMacro) {
    const ListeningHost host;
    const void* parameter = nullptr;
    AAX_ASSERT(NULL != parameter); // NOLINT(modernize-use-nullptr): the text is what is tested
    ASSERT_EQ(host.assertions().size(), 1U);
    EXPECT_EQ(host.assertions()[0].note, "NULL != parameter");
}

TEST(AAX_AssertTest, SourceAndTextCanBeGiven) {
    const ListeningHost host;
    const void* properties = nullptr;
    AAX_ASSERT_IN("Description", properties);
    AAX_ASSERT_NOTE(properties != nullptr, "no properties");
    const int line = __LINE__ - 1;
    ASSERT_EQ(host.assertions().size(), 2U);
    EXPECT_EQ(host.assertions()[0].line, line - 1);
    EXPECT_EQ(host.assertions()[1].line, line);
    EXPECT_EQ(host.assertions()[0].file, "Description");
    EXPECT_EQ(host.assertions()[0].note, "properties");
    EXPECT_EQ(host.assertions()[1].file, "Tests/Interfaces/AAX_AssertTest.cpp");
    EXPECT_EQ(host.assertions()[1].note, "no properties");
}

TEST(AAX_AssertTest, IsSilentWhenTheConditionHolds) {
    const ListeningHost host;
    AAX_ASSERT(1 < 2);
    AAX_ASSERT_IN("Description", true);
    AAX_ASSERT_NOTE(true, "never");
    EXPECT_TRUE(host.assertions().empty());
}

TEST(AAX_AssertTest, ConditionIsEvaluatedOnce) {
    int evaluations = 0;
    AAX_ASSERT(++evaluations > 5);
    EXPECT_EQ(evaluations, 1);
}

} // namespace
} // namespace varno
