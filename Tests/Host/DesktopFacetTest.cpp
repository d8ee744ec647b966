#include "Host/DesktopFacet.h"

#include "ACF/ACFPtr.h"
#include "Host/ViewContainer.h"
#include "Tests/Host/TestContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varno {
namespace {

using testing::_;
using testing::InvokeArgument;
using testing::Return;

class MockDesktop : public Desktop {
public:
    MOCK_METHOD(double, scale, (), (const, override));
    MOCK_METHOD(void, watch, (int descriptor, const void* owner, Wake wake), (override));
    MOCK_METHOD(void, unwatch, (int descriptor, const void* owner), (override));
    MOCK_METHOD(void, startTimer, (std::chrono::milliseconds period, const void* owner, Wake wake),
                (override));
    MOCK_METHOD(void, stopTimer, (const void* owner), (override));
};

constexpr int kDescriptor = 7;
constexpr std::uint32_t kPeriodMs = 16;

class DesktopFacetTest : public testing::Test {
protected:
    void SetUp() override {
        container->setDesktop(&desktop);
        facet = ACFPtr<AAX_IACFDesktop>::Query(container.Get(), IID_IVarnoDesktopV1);
        ASSERT_TRUE(facet);
    }

    static void count(void* context) { ++*static_cast<int*>(context); }

    MockDesktop desktop;
    ACFPtr<ViewContainer> container = ACFPtr<ViewContainer>::Adopt(new ViewContainer(testContext()));
    ACFPtr<AAX_IACFDesktop> facet;
    int calls = 0;
};

TEST_F(DesktopFacetTest, IsAPartOfItsContainer) {
    EXPECT_EQ(ACFPtr<IACFUnknown>::Query(container.Get(), IID_IACFUnknown).Get(),
              ACFPtr<IACFUnknown>::Query(facet.Get(), IID_IACFUnknown).Get());
}

TEST_F(DesktopFacetTest, TellsTheScale) {
    EXPECT_CALL(desktop, scale()).WillRepeatedly(Return(1.5));
    double scale = 0.0;
    EXPECT_EQ(AAX_SUCCESS, facet->GetScale(&scale));
    EXPECT_EQ(1.5, scale);
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, facet->GetScale(nullptr));
}

TEST_F(DesktopFacetTest, WatchesWithTheContextAsOwner) {
    EXPECT_CALL(desktop, watch(kDescriptor, &calls, _)).WillOnce(InvokeArgument<2>());
    EXPECT_CALL(desktop, unwatch(kDescriptor, &calls));
    EXPECT_EQ(AAX_SUCCESS, facet->WatchDescriptor(kDescriptor, count, &calls));
    EXPECT_EQ(1, calls);
    EXPECT_EQ(AAX_SUCCESS, facet->UnwatchDescriptor(kDescriptor, &calls));
}

TEST_F(DesktopFacetTest, KeepsATimerWithTheContextAsOwner) {
    EXPECT_CALL(desktop, startTimer(std::chrono::milliseconds(kPeriodMs), &calls, _))
        .WillOnce(InvokeArgument<2>());
    EXPECT_CALL(desktop, stopTimer(&calls));
    EXPECT_EQ(AAX_SUCCESS, facet->StartTimer(kPeriodMs, count, &calls));
    EXPECT_EQ(1, calls);
    EXPECT_EQ(AAX_SUCCESS, facet->StopTimer(&calls));
}

TEST_F(DesktopFacetTest, RefusesWithoutProcedure) {
    EXPECT_CALL(desktop, watch(_, _, _)).Times(0);
    EXPECT_CALL(desktop, startTimer(_, _, _)).Times(0);
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, facet->WatchDescriptor(kDescriptor, nullptr, &calls));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, facet->StartTimer(kPeriodMs, nullptr, &calls));
}

TEST_F(DesktopFacetTest, DoesNothingOnceItsDesktopIsTakenAway) {
    container->setDesktop(nullptr);
    double scale = 0.0;
    EXPECT_EQ(AAX_ERROR_NULL_OBJECT, facet->GetScale(&scale));
    EXPECT_EQ(AAX_ERROR_NULL_OBJECT, facet->WatchDescriptor(kDescriptor, count, &calls));
    EXPECT_EQ(AAX_ERROR_NULL_OBJECT, facet->StartTimer(kPeriodMs, count, &calls));
    EXPECT_EQ(AAX_SUCCESS, facet->UnwatchDescriptor(kDescriptor, &calls));
    EXPECT_EQ(AAX_SUCCESS, facet->StopTimer(&calls));
}

} // namespace
} // namespace varno
