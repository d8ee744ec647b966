#include "AAX_Exception.h"
#include "Tests/Support/FakeHostServices.h"

#include <gtest/gtest.h>

#include <exception>
#include <string>
#include <type_traits>

namespace varno {
namespace {

using AAX::Exception::Any;
using AAX::Exception::ResultError;

TEST(AAX_ExceptionTest, WhatIsDescriptionThenFunctionThenLine) {
    EXPECT_EQ(Any::CreateWhat("broken", "", ""), "broken");
    EXPECT_EQ(Any::CreateWhat("broken", "f", ""), "broken func:f");
    EXPECT_EQ(Any::CreateWhat("broken", "", "7"), "broken line:7");
    EXPECT_EQ(Any::CreateWhat("broken", "f", "7"), "broken func:f line:7");
    EXPECT_EQ(Any::CreateWhat("", "", ""), "");
}

TEST(AAX_ExceptionTest, AnyKeepsItsTexts) {
    const Any plain("broken");
    EXPECT_EQ(plain.Description(), "broken");
    EXPECT_EQ(plain.Function(), "");
    EXPECT_EQ(plain.Line(), "");
    EXPECT_STREQ(plain.What(), "broken");
    const Any placed("broken", "f", "7");
    EXPECT_EQ(placed.Function(), "f");
    EXPECT_EQ(placed.Line(), "7");
    EXPECT_STREQ(placed.What(), "broken func:f line:7");
}

TEST(AAX_ExceptionTest, AnyIsItsOwnFamily) {
    EXPECT_FALSE((std::is_base_of_v<std::exception, Any>));
    EXPECT_TRUE((std::is_base_of_v<Any, ResultError>));
    EXPECT_TRUE(std::has_virtual_destructor_v<Any>);
}

TEST(AAX_ExceptionTest, ResultErrorHoldsNameAndNumber) {
    EXPECT_EQ(ResultError::FormatResult(-20004), "AAX_ERROR_NULL_OBJECT (-20004)");
    EXPECT_EQ(ResultError::FormatResult(0), "AAX_SUCCESS (0)");
    EXPECT_EQ(ResultError::FormatResult(-20700), "plug-in defined error (-20700)");
    EXPECT_EQ(ResultError::FormatResult(5), "<unknown error code> (5)");
    const ResultError error(-20009);
    EXPECT_EQ(error.Result(), -20009);
    EXPECT_EQ(error.Description(), "AAX_ERROR_UNIMPLEMENTED (-20009)");
    EXPECT_STREQ(error.What(), "AAX_ERROR_UNIMPLEMENTED (-20009)");
}

TEST(AAX_CheckedResultTest, ConstructionFromAFailureThrowsAfterOneTraceLine) {
    const ListeningHost host;
    try {
        const AAX_CheckedResult result(-20001);
        FAIL() << "nothing was thrown, the result is " << result.CurrentResult();
    } catch (const ResultError& error) {
        EXPECT_EQ(error.Result(), -20001);
        EXPECT_STREQ(error.What(), "AAX_ERROR_INVALID_PARAMETER_ID (-20001)");
    }
    const FakeHostServices::Line expected{
        0x4000000, "AAX_CheckedResult - throwing AAX_ERROR_INVALID_PARAMETER_ID (-20001)"};
    ASSERT_EQ(host.lines().size(), 1U);
    EXPECT_EQ(host.lines()[0], expected);
}

TEST(AAX_CheckedResultTest, ThrowsWithoutAHostToo) {
    EXPECT_THROW(AAX_CheckedResult(-20001), ResultError);
}

TEST(AAX_CheckedResultTest, ThrowsItsCodeAlsoWhenTheHostThrowsAtTheTraceLine) {
    class ThrowingServices : public FakeHostServices {
        AAX_Result Trace(std::int32_t, const char*) override { throw 5; }
    };
    FakeHostWithServices host;
    ThrowingServices throwing;
    host.factory.offer(IID_IAAXHostServicesV1, &throwing);
    AAX_CHostServices::Set(&host);
    EXPECT_THROW(AAX_CheckedResult(-20004), ResultError);
    AAX_CHostServices::Set(nullptr);
}

// A host that looks at the result from within the trace line.
class LookingServices : public FakeHostServices {
public:
    AAX_Result Trace(std::int32_t, const char*) override {
        current = looked->CurrentResult();
        last = looked->LastError();
        return AAX_SUCCESS;
    }

    const AAX_CheckedResult* looked = nullptr;
    AAX_Result current = 99;
    AAX_Result last = 99;
};

TEST(AAX_CheckedResultTest, IsReusableBeforeItsTraceLine) {
    FakeHostWithServices host;
    LookingServices looking;
    host.factory.offer(IID_IAAXHostServicesV1, &looking);
    AAX_CHostServices::Set(&host);
    AAX_CheckedResult result(AAX_SUCCESS);
    looking.looked = &result;
    EXPECT_THROW(result = -20004, ResultError);
    AAX_CHostServices::Set(nullptr);
    EXPECT_EQ(looking.current, AAX_SUCCESS);
    EXPECT_EQ(looking.last, -20004);
}

TEST(AAX_CheckedResultTest, SuccessPassesInSilence) {
    const ListeningHost host;
    AAX_CheckedResult result(AAX_SUCCESS);
    result = AAX_SUCCESS;
    result.Check();
    EXPECT_EQ(result.CurrentResult(), AAX_SUCCESS);
    EXPECT_EQ(result.LastError(), AAX_SUCCESS);
    EXPECT_TRUE(host.lines().empty());
}

TEST(AAX_CheckedResultTest, IsReusableAfterAThrow) {
    AAX_CheckedResult result(AAX_SUCCESS);
    EXPECT_THROW(result = -20004, ResultError);
    EXPECT_EQ(result.CurrentResult(), 0);
    EXPECT_EQ(result.LastError(), -20004);
    EXPECT_NO_THROW(result.Check());
    EXPECT_NO_THROW(result = AAX_SUCCESS);
    EXPECT_EQ(result.LastError(), -20004);
    EXPECT_THROW(result = 1, ResultError);
    EXPECT_EQ(result.LastError(), 1);
}

TEST(AAX_CheckedResultTest, ResetAcceptsSuccessAlone) {
    AAX_CheckedResult result(AAX_SUCCESS);
    result.ResetAcceptedResults();
    EXPECT_NO_THROW(result = AAX_SUCCESS);
    EXPECT_THROW(result = -20009, ResultError);
}

} // namespace
} // namespace varno
