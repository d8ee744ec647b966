#include "Host/ViewContainer.h"

#include "ACF/ACFPtr.h"
#include "Tests/Host/TestContext.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varno {
namespace {

using testing::ElementsAre;

class ViewContainerTest : public testing::Test {
protected:
    ACFPtr<ViewContainer> container = ACFPtr<ViewContainer>::Adopt(new ViewContainer(testContext()));
};

TEST_F(ViewContainerTest, StartsWithoutView) {
    EXPECT_EQ(AAX_eViewContainerType_None, container->GetType());
    EXPECT_EQ(nullptr, container->GetPtr());
}

TEST_F(ViewContainerTest, TellsWhatItWasGiven) {
    container->setView(5, this);
    container->setModifiers(AAX_eModifiers_Control | AAX_eModifiers_Shift);
    std::uint32_t modifiers = 0;
    EXPECT_EQ(5, container->GetType());
    EXPECT_EQ(this, container->GetPtr());
    EXPECT_EQ(AAX_SUCCESS, container->GetModifiers(&modifiers));
    EXPECT_EQ(3U, modifiers);
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, container->GetModifiers(nullptr));
}

TEST_F(ViewContainerTest, RefusesMouseOffersUnlessToldOtherwise) {
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, container->HandleParameterMouseDown("A", 1));
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, container->HandleParameterMouseDrag("A", 2));
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, container->HandleParameterMouseUp("A", 3));
    ASSERT_EQ(3U, container->offers().size());
    EXPECT_EQ(MouseOffer::Kind::Drag, container->offers()[1].kind);
    EXPECT_EQ(3U, container->offers()[2].modifiers);
}

TEST_F(ViewContainerTest, AsksItsHandlerAboutOneOrSeveralParameters) {
    container->setMouseHandler([](const MouseOffer& offer) {
        return offer.parameters.size() == 2 ? AAX_SUCCESS : AAX_ERROR_UNIMPLEMENTED;
    });
    const AAX_CParamID ids[] = {"A", "B"};
    EXPECT_EQ(AAX_SUCCESS, container->HandleMultipleParametersMouseDown(ids, 2, 0));
    EXPECT_EQ(AAX_SUCCESS, container->HandleMultipleParametersMouseDrag(ids, 2, 0));
    EXPECT_EQ(AAX_SUCCESS, container->HandleMultipleParametersMouseUp(ids, 2, 0));
    EXPECT_EQ(AAX_ERROR_UNIMPLEMENTED, container->HandleParameterMouseUp(nullptr, 0));
    EXPECT_THAT(container->offers()[0].parameters, ElementsAre("A", "B"));
    EXPECT_EQ(MouseOffer::Kind::Up, container->offers()[2].kind);
    EXPECT_THAT(container->offers()[3].parameters, ElementsAre(""));
}

TEST_F(ViewContainerTest, GrantsSizesUnlessToldOtherwise) {
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

} // namespace
} // namespace varno
