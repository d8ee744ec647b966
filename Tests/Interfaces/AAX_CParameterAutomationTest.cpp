#include "AAX_CParameter.h"
#include "AAX_VAutomationDelegate.h"
#include "Tests/Support/FakeInstanceHost.h"
#include "Tests/Support/TestEffect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A parameter whose values the host sets.
class ParameterAutomation : public testing::Test {
protected:
    ParameterAutomation() {
        mHost.offer(IID_IAAXAutomationDelegateV1, &mAutomation);
        mDelegate = std::make_unique<AAX_VAutomationDelegate>(&mHost);
        mParameter->SetAutomationDelegate(mDelegate.get());
        mAutomation.takeCalls();
    }

    FakeHost mHost;
    FakeAutomation mAutomation;
    std::unique_ptr<AAX_VAutomationDelegate> mDelegate;
    std::unique_ptr<AAX_CParameter<float>> mParameter = makeFloatParameter();
};

TEST_F(ParameterAutomation, RegistersAndUnregistersTheIdentifier) {
    const auto parameter = makeFloatParameter("Mix");
    parameter->SetAutomationDelegate(mDelegate.get());
    EXPECT_THAT(mAutomation.takeCalls(), ElementsAre("register Mix"));
    parameter->SetAutomationDelegate(mDelegate.get());
    EXPECT_THAT(mAutomation.takeCalls(), ElementsAre("unregister Mix", "register Mix"));
    parameter->SetAutomationDelegate(nullptr);
    EXPECT_THAT(mAutomation.takeCalls(), ElementsAre("unregister Mix"));
}

TEST_F(ParameterAutomation, ForwardsGestures) {
    mParameter->Touch();
    mParameter->Release();
    EXPECT_THAT(mAutomation.takeCalls(), ElementsAre("touch Gain", "release Gain"));
}

TEST_F(ParameterAutomation, IsAskedForEveryValueAndChangesNothingItself) {
    const auto expectRequest = [this](const char* request) {
        EXPECT_THAT(mAutomation.takeCalls(), ElementsAre("touch Gain", request, "release Gain"));
        EXPECT_EQ(mParameter->GetNormalizedValue(), 0.5);
    };
    mParameter->SetNormalizedValue(0.25);
    expectRequest("request Gain 0.25");
    mParameter->SetNormalizedValue(1.7);
    expectRequest("request Gain 1");
    mParameter->SetNormalizedValue(std::numeric_limits<double>::quiet_NaN());
    expectRequest("request Gain 0");
    mParameter->SetValueWithFloat(0.75F);
    expectRequest("request Gain 0.75");
    mParameter->SetToDefaultValue();
    expectRequest("request Gain 0.5");
    mParameter->SetValueFromString("0.125");
    expectRequest("request Gain 0.125");
    mParameter->SetValueWithString(AAX_CString("0.375"));
    expectRequest("request Gain 0.375");
    mParameter->SetNumberOfSteps(5);
    mParameter->SetStepValue(1);
    expectRequest("request Gain 0.25");
}

TEST_F(ParameterAutomation, IsNotAskedForWhatCannotBeRead) {
    EXPECT_FALSE(mParameter->SetValueFromString("loud"));
    EXPECT_FALSE(mParameter->SetValueWithBool(true));
    mParameter->SetNumberOfSteps(1);
    mParameter->SetStepValue(1);
    EXPECT_THAT(mAutomation.takeCalls(), IsEmpty());
}

TEST_F(ParameterAutomation, ReceivesANewValueOnce) {
    mParameter->UpdateNormalizedValue(0.25);
    EXPECT_THAT(mAutomation.takeCalls(), ElementsAre("current Gain 0.25"));
    mParameter->UpdateNormalizedValue(0.25);
    EXPECT_THAT(mAutomation.takeCalls(), IsEmpty());
    EXPECT_EQ(mParameter->GetNormalizedValue(), 0.25);
}

TEST_F(ParameterAutomation, ReceivesTheValueThatTheHostSet) {
    mParameter->UpdateNormalizedValue(1.5);
    EXPECT_THAT(mAutomation.takeCalls(), ElementsAre("current Gain 1.5"));
    EXPECT_EQ(mParameter->GetNormalizedValue(), 1.0);
}

TEST_F(ParameterAutomation, NeverReceivesWhatIsNotANumber) {
    mParameter->UpdateNormalizedValue(std::numeric_limits<double>::quiet_NaN());
    EXPECT_THAT(mAutomation.takeCalls(), ElementsAre("current Gain 0"));
}

TEST_F(ParameterAutomation, ReceivesTheValueUnderANewTaperAtOnce) {
    FloatTaper wider(0.0F, 2.0F);
    mParameter->SetTaperDelegate(wider, true);
    EXPECT_THAT(mAutomation.takeCalls(), ElementsAre("current Gain 0.25"));
    EXPECT_EQ(realValue(*mParameter), 0.5F);
    mParameter->SetTaperDelegate(wider, true);
    EXPECT_THAT(mAutomation.takeCalls(), ElementsAre("current Gain 0.25")) << "even if nothing changes";
}

TEST_F(ParameterAutomation, KeepsTheValueUnlessTheUpdateIsAnother) {
    // The value that a parameter starts with has been set once already, by its construction.
    mParameter->UpdateNormalizedValue(0.5);
    EXPECT_THAT(mAutomation.takeCalls(), IsEmpty());
}

TEST(ParameterWithoutAutomation, IgnoresGestures) {
    const auto parameter = makeFloatParameter();
    parameter->Touch();
    parameter->Release();
    EXPECT_EQ(parameter->GetNormalizedValue(), 0.5);
}

TEST(ParameterWithoutAutomation, TakesEveryValueItIsGivenWhenAttachedLater) {
    // Setting without automation forces the update, but posts nothing to a host that is attached later.
    FakeHost host;
    FakeAutomation automation;
    host.offer(IID_IAAXAutomationDelegateV1, &automation);
    AAX_VAutomationDelegate delegate(&host);
    const auto parameter = makeFloatParameter();
    parameter->SetNormalizedValue(0.25);
    parameter->SetAutomationDelegate(&delegate);
    parameter->UpdateNormalizedValue(0.25);
    EXPECT_THAT(automation.takeCalls(), ElementsAre("register Gain"));
}

} // namespace
} // namespace varno::test
