#include "AAX_CHostServices.h"
#include "AAX_VHostServices.h"
#include "Tests/Support/FakeHostServices.h"
#include "Tests/Support/ForwardingCheck.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace varno {
namespace {

// Closes the channel at the end of every test.
class AAX_CHostServicesTest : public testing::Test {
protected:
    ~AAX_CHostServicesTest() override {
        AAX_CHostServices::Set(nullptr);
        EXPECT_EQ(mHost.allReferences(), 0);
    }

    FakeHostWithServices mHost;
};

TEST_F(AAX_CHostServicesTest, IsSilentBeforeSetAndAfterSetNull) {
    EXPECT_EQ(AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "early"), 0);
    EXPECT_EQ(AAX_CHostServices::HandleAssertFailure("file", 1, "note", 1), 0);
    AAX_CHostServices::Set(&mHost);
    AAX_CHostServices::Set(nullptr);
    mHost.version1.traceResult = -1;
    mHost.version3.assertResult = -1;
    EXPECT_EQ(AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "late"), 0);
    EXPECT_EQ(AAX_CHostServices::HandleAssertFailure("file", 1, "note", 1), 0);
    EXPECT_TRUE(mHost.version1.lines.empty());
    EXPECT_TRUE(mHost.version3.assertions.empty());
}

// A text that the C library cannot format.
constexpr wchar_t kNoCharacter[] = {static_cast<wchar_t>(0xD800), 0};

TEST_F(AAX_CHostServicesTest, FormatsNothingWithoutAHost) {
    EXPECT_EQ(AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "%ls", kNoCharacter), 0);
    AAX_CHostServices::Set(&mHost);
    AAX_CHostServices::Set(nullptr);
    EXPECT_EQ(AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "%ls", kNoCharacter), 0);
}

TEST_F(AAX_CHostServicesTest, SecondHostIsIgnoredUntilTheChannelIsClosed) {
    FakeHostWithServices second;
    AAX_CHostServices::Set(&mHost);
    AAX_CHostServices::Set(&second);
    AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "first");
    EXPECT_EQ(mHost.version1.lines.size(), 1U);
    EXPECT_EQ(second.allReferences(), 0);
    AAX_CHostServices::Set(nullptr);
    AAX_CHostServices::Set(nullptr);
    AAX_CHostServices::Set(&second);
    AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "second");
    EXPECT_EQ(mHost.version1.lines.size(), 1U);
    EXPECT_EQ(second.version1.lines.size(), 1U);
    AAX_CHostServices::Set(nullptr);
    EXPECT_EQ(second.allReferences(), 0);
}

TEST_F(AAX_CHostServicesTest, TraceFormatsAndForwards) {
    AAX_CHostServices::Set(&mHost);
    mHost.version1.traceResult = 17;
    EXPECT_EQ(AAX_CHostServices::Trace(AAX_eTracePriorityHost_Normal, "%s is %d", "answer", 42), 17);
    ASSERT_EQ(mHost.version1.lines.size(), 1U);
    EXPECT_EQ(mHost.version1.lines[0].priority, 0x4000000);
    EXPECT_EQ(mHost.version1.lines[0].text, "answer is 42");
}

TEST_F(AAX_CHostServicesTest, PriorityPassesThroughUnchanged) {
    AAX_CHostServices::Set(&mHost);
    AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "x");
    AAX_CHostServices::Trace(static_cast<AAX_ETracePriorityHost>(0x123), "x");
    EXPECT_EQ(mHost.version1.lines[0].priority, 0x8000000);
    EXPECT_EQ(mHost.version1.lines[1].priority, 0x123);
}

TEST_F(AAX_CHostServicesTest, LongLinesAreCutTo511Characters) {
    AAX_CHostServices::Set(&mHost);
    for (std::size_t length : {510U, 511U, 512U, 5000U}) {
        const std::string text(length, 'x');
        EXPECT_EQ(AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "%s", text.c_str()), 0);
        EXPECT_EQ(mHost.version1.lines.back().text, text.substr(0, 511));
    }
}

TEST_F(AAX_CHostServicesTest, LineThatCannotBeFormattedGivesItsOwnCode) {
    AAX_CHostServices::Set(&mHost);
    EXPECT_EQ(AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "%ls", kNoCharacter), -20051);
    EXPECT_TRUE(mHost.version1.lines.empty());
}

TEST_F(AAX_CHostServicesTest, AssertionsAreForwarded) {
    AAX_CHostServices::Set(&mHost);
    mHost.version3.assertResult = 18;
    EXPECT_EQ(AAX_CHostServices::HandleAssertFailure("file", 12, "note", 3), 18);
    ASSERT_EQ(mHost.version3.assertions.size(), 1U);
    const FakeHostServices::Assertion& assertion = mHost.version3.assertions[0];
    EXPECT_EQ(assertion.file, "file");
    EXPECT_EQ(assertion.line, 12);
    EXPECT_EQ(assertion.note, "note");
    EXPECT_EQ(assertion.flags, 3);
}

TEST_F(AAX_CHostServicesTest, HostWithVersionOneAloneStillReceivesTraceLines) {
    mHost.factory.offer(IID_IAAXHostServicesV2, nullptr);
    mHost.factory.offer(IID_IAAXHostServicesV3, nullptr);
    AAX_CHostServices::Set(&mHost);
    EXPECT_EQ(AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "line"), 0);
    EXPECT_EQ(mHost.version1.lines.size(), 1U);
    EXPECT_EQ(AAX_CHostServices::HandleAssertFailure("file", 1, "note", 1), -20004);
}

// A host that throws where it must not.
class UnrulyServices : public FakeHostServices {
public:
    AAX_Result Trace(std::int32_t, const char*) override { throw 5; }
    AAX_Result HandleAssertFailure(const char*, std::int32_t, const char*, std::int32_t) override {
        throw std::runtime_error("host");
    }
};

TEST_F(AAX_CHostServicesTest, WhatTheHostThrowsBecomesACode) {
    UnrulyServices unruly;
    mHost.factory.offer(IID_IAAXHostServicesV1, &unruly);
    mHost.factory.offer(IID_IAAXHostServicesV3, &unruly);
    AAX_CHostServices::Set(&mHost);
    EXPECT_EQ(AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "line"), -20042);
    EXPECT_EQ(AAX_CHostServices::HandleAssertFailure("file", 1, "note", 1), -20042);
    static_assert(noexcept(AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "line")));
    static_assert(noexcept(AAX_CHostServices::HandleAssertFailure("file", 1, "note", 1)));
    AAX_CHostServices::Set(nullptr);
    EXPECT_EQ(unruly.references(), 0);
}

using AAX_VHostServicesTest = AAX_CHostServicesTest;

TEST_F(AAX_VHostServicesTest, EachOperationUsesItsVersion) {
    mHost.version1.traceResult = 1;
    mHost.version2.stackTraceResult = 2;
    mHost.version3.assertResult = 3;
    const AAX_VHostServices services(&mHost);
    EXPECT_EQ(services.Trace(5, "line"), 1);
    EXPECT_EQ(services.StackTrace(6, 7, "stack"), 2);
    EXPECT_EQ(services.HandleAssertFailure("file", 8, "note", 9), 3);
    ASSERT_EQ(mHost.version2.stackTraces.size(), 1U);
    EXPECT_EQ(mHost.version2.stackTraces[0], (FakeHostServices::Line{6, "stack"}));
    EXPECT_EQ(mHost.version2.stackTracePriorities[0], 7);
    EXPECT_EQ(mHost.version1.lines[0], (FakeHostServices::Line{5, "line"}));
    EXPECT_EQ(mHost.version3.assertions.size(), 1U);
}

TEST_F(AAX_VHostServicesTest, AsksTheFactoryForEachVersionOnceInOrder) {
    const AAX_VHostServices services(&mHost);
    ASSERT_EQ(mHost.factory.asked.size(), 3U);
    EXPECT_TRUE(mHost.factory.asked[0] == IID_IAAXHostServicesV1);
    EXPECT_TRUE(mHost.factory.asked[1] == IID_IAAXHostServicesV2);
    EXPECT_TRUE(mHost.factory.asked[2] == IID_IAAXHostServicesV3);
    EXPECT_EQ(mHost.factory.references(), 0);
    EXPECT_EQ(mHost.allReferences(), 3);
}

// Host services that record the number of their version when they are released.
class NotingServices : public FakeHostServices {
public:
    NotingServices(int version, std::vector<int>& released)
        : mVersion(version),
          mReleased(released) {}
    std::uint32_t Release() override {
        mReleased.push_back(mVersion);
        return FakeHostServices::Release();
    }

private:
    int mVersion;
    std::vector<int>& mReleased;
};

TEST_F(AAX_VHostServicesTest, ReleasesTheLatestVersionFirst) {
    std::vector<int> released;
    NotingServices first(1, released);
    NotingServices second(2, released);
    NotingServices third(3, released);
    mHost.factory.offer(IID_IAAXHostServicesV1, &first);
    mHost.factory.offer(IID_IAAXHostServicesV2, &second);
    mHost.factory.offer(IID_IAAXHostServicesV3, &third);
    AAX_CHostServices::Set(&mHost);
    AAX_CHostServices::Set(nullptr);
    EXPECT_EQ(released, (std::vector<int>{3, 2, 1}));
    released.clear();
    { const AAX_VHostServices services(&mHost); }
    EXPECT_EQ(released, (std::vector<int>{3, 2, 1})) << "also where it is only destroyed";
}

TEST_F(AAX_VHostServicesTest, MissingVersionsHaveTheirCodes) {
    for (const acfIID& missing : {IID_IAAXHostServicesV1, IID_IAAXHostServicesV2, IID_IAAXHostServicesV3}) {
        FakeHostWithServices host;
        host.factory.offer(missing, nullptr);
        const AAX_VHostServices services(&host);
        EXPECT_EQ(services.Trace(1, "x"), missing == IID_IAAXHostServicesV1 ? -20004 : 0);
        EXPECT_EQ(services.StackTrace(1, 1, "x"), missing == IID_IAAXHostServicesV2 ? -20009 : 0);
        EXPECT_EQ(services.HandleAssertFailure("f", 1, "x", 1),
                  missing == IID_IAAXHostServicesV3 ? -20004 : 0);
    }
}

TEST_F(AAX_VHostServicesTest, WithoutHostOrFactoryEverythingIsMissing) {
    FakeHost bare;
    for (IACFUnknown* host : {static_cast<IACFUnknown*>(nullptr), static_cast<IACFUnknown*>(&bare)}) {
        const AAX_VHostServices services(host);
        EXPECT_EQ(services.Trace(1, "x"), -20004);
        EXPECT_EQ(services.StackTrace(1, 1, "x"), -20009);
        EXPECT_EQ(services.HandleAssertFailure("f", 1, "x", 1), -20004);
    }
}

TEST_F(AAX_VHostServicesTest, ComponentOfAFailingFactoryIsReleasedAndNotUsed) {
    mHost.factory.resultWhenFound = ACF_E_UNEXPECTED;
    const AAX_VHostServices services(&mHost);
    EXPECT_EQ(mHost.allReferences(), 0);
    EXPECT_EQ(services.Trace(1, "x"), -20004);
}

TEST_F(AAX_VHostServicesTest, VirtualSlotsHaveTheirOrder) {
    EXPECT_EQ(slotOf(&AAX_IHostServices::HandleAssertFailure), kDestructorSlots);
    EXPECT_EQ(slotOf(&AAX_IHostServices::Trace), kDestructorSlots + 1);
    EXPECT_EQ(slotOf(&AAX_IHostServices::StackTrace), kDestructorSlots + 2);
}

} // namespace
} // namespace varno
