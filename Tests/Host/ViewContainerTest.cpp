#include "Host/ViewContainer.h"
#include "ACF/ACFPtr.h"
#include "Tests/Host/TestContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varno {
namespace {

using testing::_;
using testing::ElementsAre;
using testing::InvokeArgument;
using testing::Return;

class ViewContainerTest : public testing::Test {
protected:
    ACFPtr<ViewContainer> container = ACFPtr<ViewContainer>::Adopt(new ViewContainer(testContext()));
};

TEST_F(ViewContainerTest, StartsWithoutView) {
    EXPECT_EQ(AAX_eViewContainerType_None, container->GetType());
    EXPECT_EQ(nullptr, container->GetPtr());
}

TEST_F(ViewContainerTest, ReturnsWhatItReceived) {
    container->setView(5, this);
    container->setModifierSource([] { return AAX_eModifiers_Control | AAX_eModifiers_Shift; });
    std::uint32_t modifiers = 0;
    EXPECT_EQ(5, container->GetType());
    EXPECT_EQ(this, container->GetPtr());
    EXPECT_EQ(AAX_SUCCESS, container->GetModifiers(&modifiers));
    EXPECT_EQ(3U, modifiers);
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, container->GetModifiers(nullptr));
}

TEST_F(ViewContainerTest, RefusesMouseOffersByDefault) {
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, container->HandleParameterMouseDown("A", 1));
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, container->HandleParameterMouseDrag("A", 2));
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, container->HandleParameterMouseUp("A", 3));
}

TEST_F(ViewContainerTest, AsksItsHandlerAboutOneOrSeveralParameters) {
    std::vector<MouseOffer> offers;
    container->setMouseHandler([&](const MouseOffer& offer) {
        offers.push_back(offer);
        return offer.parameters.size() == 2 ? AAX_SUCCESS : AAX_ERROR_UNIMPLEMENTED;
    });
    const AAX_CParamID ids[] = {"A", "B"};
    EXPECT_EQ(AAX_SUCCESS, container->HandleMultipleParametersMouseDown(ids, 2, 0));
    EXPECT_EQ(AAX_SUCCESS, container->HandleMultipleParametersMouseDrag(ids, 2, 0));
    EXPECT_EQ(AAX_SUCCESS, container->HandleMultipleParametersMouseUp(ids, 2, 0));
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, container->HandleParameterMouseUp(nullptr, 3));
    ASSERT_EQ(4U, offers.size());
    EXPECT_THAT(offers[0].parameters, ElementsAre("A", "B"));
    EXPECT_EQ(MouseOffer::Kind::kDrag, offers[1].kind);
    EXPECT_EQ(MouseOffer::Kind::kUp, offers[2].kind);
    EXPECT_THAT(offers[3].parameters, ElementsAre(""));
    EXPECT_EQ(3U, offers[3].modifiers);
}

TEST_F(ViewContainerTest, GrantsSizesByDefault) {
    AAX_Point wish{300.0F, 400.0F};
    EXPECT_EQ(AAX_SUCCESS, container->SetViewSize(&wish));
    EXPECT_EQ(400.0F, container->size().horz);
    container->setSizeHandler([](const AAX_Point&) { return AAX_ERROR_INVALID_VIEW_SIZE; });
    wish.horz = 1.0F;
    EXPECT_EQ(AAX_ERROR_INVALID_VIEW_SIZE, container->SetViewSize(&wish));
    EXPECT_EQ(400.0F, container->size().horz);
    EXPECT_EQ(AAX_ERROR_INVALID_VIEW_SIZE, container->SetViewSize(nullptr));
}

TEST_F(ViewContainerTest, AnswersToBothVersions) {
    EXPECT_TRUE(ACFPtr<IACFUnknown>::Query(container.Get(), IID_IAAXViewContainerV1));
    EXPECT_TRUE(ACFPtr<IACFUnknown>::Query(container.Get(), IID_IAAXViewContainerV2));
    EXPECT_FALSE(ACFPtr<IACFUnknown>::Query(container.Get(), IID_IAAXPageTableV1));
    EXPECT_FALSE(ACFPtr<IACFUnknown>::Query(container.Get(), IID_IVarnoDesktopV1));
}

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

TEST_F(DesktopFacetTest, ReportsTheScale) {
    EXPECT_CALL(desktop, scale()).WillRepeatedly(Return(1.5));
    double scale = 0.0;
    EXPECT_EQ(AAX_SUCCESS, facet->GetScale(&scale));
    EXPECT_EQ(1.5, scale);
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, facet->GetScale(nullptr));
}

TEST_F(DesktopFacetTest, AsksForKnobsThatFollowALine) {
    std::int32_t mode = AAX_eKnobMode_Default;
    EXPECT_EQ(AAX_SUCCESS, facet->GetKnobMode(&mode));
    EXPECT_EQ(AAX_eKnobMode_Line, mode);
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, facet->GetKnobMode(nullptr));
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
    std::int32_t mode = AAX_eKnobMode_Default;
    EXPECT_EQ(AAX_ERROR_NULL_OBJECT, facet->GetKnobMode(&mode));
    EXPECT_EQ(AAX_ERROR_NULL_OBJECT, facet->WatchDescriptor(kDescriptor, count, &calls));
    EXPECT_EQ(AAX_ERROR_NULL_OBJECT, facet->StartTimer(kPeriodMs, count, &calls));
    EXPECT_EQ(AAX_SUCCESS, facet->UnwatchDescriptor(kDescriptor, &calls));
    EXPECT_EQ(AAX_SUCCESS, facet->StopTimer(&calls));
}

} // namespace
} // namespace varno
