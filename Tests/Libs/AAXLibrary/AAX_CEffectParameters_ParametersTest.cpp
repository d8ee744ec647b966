#include "AAX_CEffectParameters.h"
#include "AAX_CString.h"
#include "Tests/Support/FakeHostServices.h"
#include "Tests/Support/FakeInstanceHost.h"
#include "Tests/Support/TestEffect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// An effect with a master bypass, "Gain" and a fake parameter, in a host of its own.
class EffectParametersTest : public testing::Test {
protected:
    EffectParametersTest() {
        effect.onInit = [this](TestEffect& self) {
            self.add(makeBoolParameter(cDefaultMasterBypassID));
            gain = self.add(makeFloatParameter("Gain"));
            fake = self.add(std::make_unique<FakeParameter>("Fake"));
            self.mPacketDispatcher.RegisterPacket("Gain", 1);
            return AAX_SUCCESS;
        };
        effect.Initialize(&host);
        effect.GenerateCoefficients();
        host.automation.takeCalls();
        host.controller.posts.clear();
    }
    ~EffectParametersTest() override { effect.Uninitialize(); }

    std::int32_t changes() const {
        std::int32_t count = -1;
        EXPECT_EQ(effect.GetNumberOfChanges(&count), AAX_SUCCESS);
        return count;
    }
    AAX_Result update(const char* id, double value) {
        return effect.UpdateParameterNormalizedValue(id, value, AAX_eUpdateSource_Unspecified);
    }
    double value(const char* id) const {
        double result = -1.0;
        EXPECT_EQ(effect.GetParameterNormalizedValue(id, &result), AAX_SUCCESS);
        return result;
    }

    FakeInstanceHost host;
    ACFPtr<TestEffect> owned = makeTestEffect();
    TestEffect& effect = *owned;
    AAX_IParameter* gain = nullptr;
    FakeParameter* fake = nullptr;
    AAX_CString text{"before"};
};

TEST_F(EffectParametersTest, ReportsItsParameters) {
    std::int32_t count = 0;
    EXPECT_EQ(effect.GetNumberOfParameters(&count), AAX_SUCCESS);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(effect.GetMasterBypassParameter(&text), AAX_SUCCESS);
    EXPECT_STREQ(text.Get(), "MasterBypassID");
    EXPECT_EQ(effect.GetParameterIDFromIndex(1, &text), AAX_SUCCESS);
    EXPECT_STREQ(text.Get(), "Gain");
    std::int32_t index = -9;
    EXPECT_EQ(effect.GetParameterIndex("Gain", &index), AAX_SUCCESS);
    EXPECT_EQ(index, 1);
    AAX_IParameter* parameter = nullptr;
    EXPECT_EQ(effect.GetParameter("Gain", &parameter), AAX_SUCCESS);
    EXPECT_EQ(parameter, gain);
}

TEST_F(EffectParametersTest, HasAnEmptyMasterBypassWhenThereIsNone) {
    const ACFPtr<TestEffect> other = makeTestEffect();
    other->Initialize(&host);
    EXPECT_EQ(other->GetMasterBypassParameter(&text), AAX_SUCCESS);
    EXPECT_STREQ(text.Get(), "");
}

TEST_F(EffectParametersTest, ClearsTheOutputsForAnUnknownIndex) {
    for (const std::int32_t index : {-1, 3, std::numeric_limits<std::int32_t>::max()}) {
        text = "before";
        EXPECT_EQ(effect.GetParameterIDFromIndex(index, &text), AAX_ERROR_INVALID_PARAMETER_ID);
        EXPECT_STREQ(text.Get(), "");
    }
}

TEST_F(EffectParametersTest, ClearsTheOutputsForAnUnknownIdentifier) {
    AAX_IParameter* parameter = gain;
    EXPECT_EQ(effect.GetParameter("gain", &parameter), AAX_ERROR_INVALID_PARAMETER_ID);
    EXPECT_EQ(parameter, nullptr);
    std::int32_t index = 7;
    EXPECT_EQ(effect.GetParameterIndex("gain", &index), AAX_ERROR_INVALID_PARAMETER_ID);
    EXPECT_EQ(index, -1);
    std::uint8_t automatable = 7;
    EXPECT_EQ(effect.GetParameterIsAutomatable("gain", &automatable), AAX_ERROR_INVALID_PARAMETER_ID);
    EXPECT_EQ(automatable, 0);
    EXPECT_EQ(effect.GetParameterName("gain", &text), AAX_SUCCESS) << "deliberately no error";
    EXPECT_STREQ(text.Get(), "");
    text = "before";
    EXPECT_EQ(effect.GetParameterNameOfLength("gain", &text, 4), AAX_SUCCESS);
    EXPECT_STREQ(text.Get(), "");
}

TEST_F(EffectParametersTest, ReportsWhatAParameterIs) {
    std::uint8_t automatable = 0;
    EXPECT_EQ(effect.GetParameterIsAutomatable("Gain", &automatable), AAX_SUCCESS);
    EXPECT_EQ(automatable, 1);
    std::int32_t steps = 0;
    EXPECT_EQ(effect.GetParameterNumberOfSteps("Gain", &steps), AAX_SUCCESS);
    EXPECT_EQ(steps, 128);
    AAX_EParameterType type = AAX_eParameterType_Discrete;
    EXPECT_EQ(effect.GetParameterType("Gain", &type), AAX_SUCCESS);
    EXPECT_EQ(type, AAX_eParameterType_Continuous);
    gain->SetOrientation(6);
    std::int32_t orientation = 0;
    EXPECT_EQ(effect.GetParameterOrientation("Gain", &orientation), AAX_SUCCESS);
    EXPECT_EQ(orientation, 6);
    EXPECT_EQ(effect.GetParameterName("Gain", &text), AAX_SUCCESS);
    EXPECT_STREQ(text.Get(), "Input Gain");
    std::int32_t info = 7;
    EXPECT_EQ(effect.GetParameterValueInfo("Gain", 1, &info), AAX_ERROR_UNIMPLEMENTED);
    EXPECT_EQ(info, 0);
}

TEST_F(EffectParametersTest, ReportsWhenAParameterIsNotAutomatable) {
    effect.add(std::make_unique<AAX_CParameter<float>>("Fixed", AAX_CString("Fixed"), 0.0F, FloatTaper(),
                                                       FloatDisplay(), false));
    std::uint8_t automatable = 7;
    EXPECT_EQ(effect.GetParameterIsAutomatable("Fixed", &automatable), AAX_SUCCESS);
    EXPECT_EQ(automatable, 0);
}

TEST_F(EffectParametersTest, RefusesNumbersOfStepsThatDoNotFit) {
    std::int32_t steps = 7;
    fake->steps = 0x7FFFFFFFU;
    EXPECT_EQ(effect.GetParameterNumberOfSteps("Fake", &steps), AAX_SUCCESS);
    EXPECT_EQ(steps, 0x7FFFFFFF);
    fake->steps = 0x80000000U;
    EXPECT_EQ(effect.GetParameterNumberOfSteps("Fake", &steps), AAX_ERROR_SIGNED_INT_OVERFLOW);
    EXPECT_EQ(steps, 0x7FFFFFFF);
}

TEST_F(EffectParametersTest, ChoosesTheNameThatFits) {
    gain->SetName("Volume\nVol");
    EXPECT_EQ(effect.GetParameterNameOfLength("Gain", &text, 4), AAX_SUCCESS);
    EXPECT_STREQ(text.Get(), "Vol");
    EXPECT_EQ(effect.GetParameterNameOfLength("Gain", &text, 2), AAX_SUCCESS);
    EXPECT_STREQ(text.Get(), "Vo");
    EXPECT_EQ(effect.GetParameterNameOfLength("Gain", &text, 0), AAX_SUCCESS);
    EXPECT_STREQ(text.Get(), "");
    gain->AddShortenedName("V\nVl");
    EXPECT_EQ(effect.GetParameterNameOfLength("Gain", &text, 4), AAX_SUCCESS);
    EXPECT_STREQ(text.Get(), "Vl") << "spellings of the shortened name";
    EXPECT_EQ(effect.GetParameterNameOfLength("Gain", nullptr, 4), AAX_ERROR_INVALID_STRING_CONVERSION);
}

TEST_F(EffectParametersTest, TurnsValuesIntoTextAndBack) {
    EXPECT_EQ(effect.GetParameterValueString("Gain", &text, 3), AAX_SUCCESS);
    EXPECT_STREQ(text.Get(), "0.5");
    EXPECT_EQ(effect.GetParameterStringFromValue("Gain", 0.25, &text, 10), AAX_SUCCESS);
    EXPECT_STREQ(text.Get(), "0.25");
    double number = 7.0;
    EXPECT_EQ(effect.GetParameterValueFromString("Gain", &number, AAX_CString("0.75")), AAX_SUCCESS);
    EXPECT_EQ(number, 0.75);
    EXPECT_EQ(effect.GetParameterValueFromString("Gain", &number, AAX_CString("nan")),
              AAX_ERROR_INVALID_STRING_CONVERSION);
    EXPECT_EQ(number, 0.75);
    text = "before";
    EXPECT_EQ(effect.GetParameterStringFromValue("Fake", 0.5, &text, 4), AAX_ERROR_INVALID_STRING_CONVERSION);
    EXPECT_STREQ(text.Get(), "before");
    EXPECT_EQ(effect.GetParameterValueString("Fake", &text, 4), AAX_SUCCESS) << "without text it is empty";
    EXPECT_STREQ(text.Get(), "");
}

TEST_F(EffectParametersTest, SetsTheDefaultAlone) {
    EXPECT_EQ(effect.SetParameterDefaultNormalizedValue("Gain", 0.125), AAX_SUCCESS);
    double number = 0.0;
    EXPECT_EQ(effect.GetParameterDefaultNormalizedValue("Gain", &number), AAX_SUCCESS);
    EXPECT_EQ(number, 0.125);
    EXPECT_EQ(value("Gain"), 0.5);
    EXPECT_EQ(effect.SetParameterDefaultNormalizedValue("Gain", kNaN), AAX_SUCCESS);
    EXPECT_EQ(effect.GetParameterDefaultNormalizedValue("Gain", &number), AAX_SUCCESS);
    EXPECT_EQ(number, 0.0);
}

TEST_F(EffectParametersTest, AsksTheHostForValues) {
    EXPECT_EQ(effect.SetParameterNormalizedValue("Gain", 0.25), AAX_SUCCESS);
    EXPECT_EQ(effect.SetParameterNormalizedRelative("Gain", 0.25), AAX_SUCCESS);
    EXPECT_EQ(effect.SetParameterNormalizedRelative("Gain", 3.0), AAX_SUCCESS);
    EXPECT_EQ(effect.SetParameterNormalizedRelative("Gain", -3.0), AAX_SUCCESS);
    EXPECT_EQ(effect.SetParameterNormalizedRelative("Gain", kNaN), AAX_SUCCESS);
    const std::vector<std::pair<std::string, double>> expected = {
        {"Gain", 0.25}, {"Gain", 0.75}, {"Gain", 1.0}, {"Gain", 0.0}, {"Gain", 0.0}};
    EXPECT_EQ(host.automation.requests, expected);
    EXPECT_EQ(value("Gain"), 0.5) << "the host has not answered yet";
    EXPECT_EQ(changes(), 0);
}

TEST_F(EffectParametersTest, ForwardsGestures) {
    EXPECT_EQ(effect.TouchParameter("Gain"), AAX_SUCCESS);
    EXPECT_EQ(effect.ReleaseParameter("Gain"), AAX_SUCCESS);
    EXPECT_THAT(host.automation.takeCalls(), ElementsAre("touch Gain", "release Gain"));
    EXPECT_EQ(effect.UpdateParameterTouch("Gain", 1), AAX_SUCCESS);
    EXPECT_EQ(effect.UpdateParameterTouch("unknown", 1), AAX_SUCCESS);
    EXPECT_THAT(host.automation.takeCalls(), IsEmpty());
}

TEST_F(EffectParametersTest, TakesTheHostsWordForAValue) {
    EXPECT_EQ(update("Gain", 0.25), AAX_SUCCESS);
    EXPECT_EQ(value("Gain"), 0.25);
    EXPECT_EQ(changes(), 1);
    EXPECT_THAT(host.automation.takeCalls(), ElementsAre("current Gain 0.25"));
    EXPECT_EQ(effect.GenerateCoefficients(), AAX_SUCCESS);
    EXPECT_EQ(host.controller.latest(1).as<float>(), 0.25F);
}

TEST_F(EffectParametersTest, PostsNothingForAValueThatWasNotStored) {
    effect.mPacketDispatcher.RegisterPacket("Fake", 2);
    fake->asFloat = 0.5F;
    EXPECT_EQ(effect.GenerateCoefficients(), AAX_SUCCESS);
    host.controller.posts.clear();
    fake->before = [] { throw std::runtime_error("not stored"); };
    EXPECT_EQ(update("Fake", 0.25), AAX_ERROR_UNKNOWN_EXCEPTION);
    fake->before = [] {};
    EXPECT_EQ(effect.GenerateCoefficients(), AAX_SUCCESS);
    EXPECT_THAT(host.controller.posts, IsEmpty());
}

// The host may ask for the coefficients from within the announcement of the value.
TEST_F(EffectParametersTest, MarksThePacketWhenTheValueHasBeenAnnounced) {
    class AskingAutomation : public FakeAutomation {
    public:
        AAX_Result PostCurrentValue(AAX_CParamID, double) override { return asked->GenerateCoefficients(); }
        TestEffect* asked = nullptr;
    };
    AskingAutomation asking;
    asking.asked = &effect;
    FakeInstanceHost other;
    other.offer(IID_IAAXAutomationDelegateV1, &asking);
    EXPECT_EQ(effect.Initialize(&other), AAX_SUCCESS);
    EXPECT_EQ(effect.GenerateCoefficients(), AAX_SUCCESS);
    other.controller.posts.clear();
    EXPECT_EQ(update("Gain", 0.25), AAX_SUCCESS);
    EXPECT_THAT(other.controller.posts, IsEmpty());
    EXPECT_EQ(effect.GenerateCoefficients(), AAX_SUCCESS);
    EXPECT_EQ(other.controller.latest(1).as<float>(), 0.25F);
    EXPECT_EQ(effect.Uninitialize(), AAX_SUCCESS);
}

TEST_F(EffectParametersTest, PostsTheSameValueAgainButCountsNoChange) {
    EXPECT_EQ(update("Gain", 0.5), AAX_SUCCESS);
    EXPECT_EQ(changes(), 0);
    EXPECT_EQ(effect.GenerateCoefficients(), AAX_SUCCESS);
    EXPECT_EQ(host.controller.fields(), std::vector<AAX_CFieldIndex>{1});
}

TEST_F(EffectParametersTest, CountsChangesOfTheParameterAndNotOfTheArgument) {
    update("Gain", 0.1); // not a float: the parameter has the nearest one
    EXPECT_EQ(changes(), 1);
    update("Gain", 0.1);
    EXPECT_EQ(changes(), 1);
    update("Gain", 7.0);
    update("Gain", 8.0);
    EXPECT_EQ(changes(), 2);
    update("Gain", kNaN);
    EXPECT_EQ(value("Gain"), 0.0);
    EXPECT_EQ(changes(), 3);
    update("Gain", kNaN);
    EXPECT_EQ(changes(), 3);
}

TEST_F(EffectParametersTest, TakesTheHostsWordForARelativeChangeWithinBounds) {
    const auto updated = [this](double delta) {
        EXPECT_EQ(effect.UpdateParameterNormalizedRelative("Gain", delta), AAX_SUCCESS);
        return value("Gain");
    };
    EXPECT_EQ(updated(0.25), 0.75);
    EXPECT_EQ(updated(0.5), 1.0);
    EXPECT_EQ(updated(-0.25), 0.75);
    EXPECT_EQ(updated(-7.0), 0.0);
    EXPECT_EQ(changes(), 4);
    EXPECT_THAT(host.automation.takeCalls(),
                ElementsAre("current Gain 0.75", "current Gain 1", "current Gain 0.75", "current Gain 0"));
    EXPECT_EQ(updated(kNaN), 0.0);
    EXPECT_EQ(effect.GenerateCoefficients(), AAX_SUCCESS);
    EXPECT_EQ(host.controller.fields(), std::vector<AAX_CFieldIndex>{1});
}

TEST_F(EffectParametersTest, ReportsNoNumberOfChangesThatHasOverflowed) {
    effect.mNumPlugInChanges = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(changes(), std::numeric_limits<std::int32_t>::max());
    update("Gain", 0.75);
    EXPECT_LT(effect.mNumPlugInChanges, 0);
    std::int32_t count = 5;
    EXPECT_EQ(effect.GetNumberOfChanges(&count), AAX_SUCCESS);
    EXPECT_EQ(count, 5);
}

// One call by identifier, all of whose outputs are valid.
struct Call {
    const char* name;
    std::function<AAX_Result(AAX_CEffectParameters&, AAX_CParamID)> call;
    AAX_Result whenUnknown;
};

std::vector<Call> callsByIdentifier() {
    using E = AAX_CEffectParameters;
    static std::uint8_t byte;
    static std::int32_t integer;
    static double number;
    static AAX_CString string;
    static AAX_EParameterType type;
    static AAX_IParameter* parameter;
    constexpr AAX_Result kUnknown = AAX_ERROR_INVALID_PARAMETER_ID;
    return {
        {"GetParameterIsAutomatable",
         [](E& e, AAX_CParamID id) { return e.GetParameterIsAutomatable(id, &byte); }, kUnknown},
        {"GetParameterNumberOfSteps",
         [](E& e, AAX_CParamID id) { return e.GetParameterNumberOfSteps(id, &integer); }, kUnknown},
        {"GetParameterName", [](E& e, AAX_CParamID id) { return e.GetParameterName(id, &string); },
         AAX_SUCCESS},
        {"GetParameterNameOfLength",
         [](E& e, AAX_CParamID id) { return e.GetParameterNameOfLength(id, &string, 4); }, AAX_SUCCESS},
        {"GetParameterDefaultNormalizedValue",
         [](E& e, AAX_CParamID id) { return e.GetParameterDefaultNormalizedValue(id, &number); }, kUnknown},
        {"SetParameterDefaultNormalizedValue",
         [](E& e, AAX_CParamID id) { return e.SetParameterDefaultNormalizedValue(id, 0.5); }, kUnknown},
        {"GetParameterType", [](E& e, AAX_CParamID id) { return e.GetParameterType(id, &type); }, kUnknown},
        {"GetParameterOrientation",
         [](E& e, AAX_CParamID id) { return e.GetParameterOrientation(id, &integer); }, kUnknown},
        {"GetParameter", [](E& e, AAX_CParamID id) { return e.GetParameter(id, &parameter); }, kUnknown},
        {"GetParameterIndex", [](E& e, AAX_CParamID id) { return e.GetParameterIndex(id, &integer); },
         kUnknown},
        {"GetParameterValueInfo",
         [](E& e, AAX_CParamID id) { return e.GetParameterValueInfo(id, 0, &integer); },
         AAX_ERROR_UNIMPLEMENTED},
        {"GetParameterValueFromString",
         [](E& e, AAX_CParamID id) { return e.GetParameterValueFromString(id, &number, AAX_CString("0")); },
         kUnknown},
        {"GetParameterStringFromValue",
         [](E& e, AAX_CParamID id) { return e.GetParameterStringFromValue(id, 0.5, &string, 4); }, kUnknown},
        {"GetParameterValueString",
         [](E& e, AAX_CParamID id) { return e.GetParameterValueString(id, &string, 4); }, kUnknown},
        {"GetParameterNormalizedValue",
         [](E& e, AAX_CParamID id) { return e.GetParameterNormalizedValue(id, &number); }, kUnknown},
        {"SetParameterNormalizedValue",
         [](E& e, AAX_CParamID id) { return e.SetParameterNormalizedValue(id, 0.5); }, kUnknown},
        {"SetParameterNormalizedRelative",
         [](E& e, AAX_CParamID id) { return e.SetParameterNormalizedRelative(id, 0.5); }, kUnknown},
        {"TouchParameter", [](E& e, AAX_CParamID id) { return e.TouchParameter(id); }, kUnknown},
        {"ReleaseParameter", [](E& e, AAX_CParamID id) { return e.ReleaseParameter(id); }, kUnknown},
        {"UpdateParameterTouch", [](E& e, AAX_CParamID id) { return e.UpdateParameterTouch(id, 1); },
         AAX_SUCCESS},
        {"UpdateParameterNormalizedValue",
         [](E& e, AAX_CParamID id) {
             return e.UpdateParameterNormalizedValue(id, 0.5, AAX_eUpdateSource_Unspecified);
         },
         kUnknown},
        {"UpdateParameterNormalizedRelative",
         [](E& e, AAX_CParamID id) { return e.UpdateParameterNormalizedRelative(id, 0.5); }, kUnknown},
    };
}

TEST_F(EffectParametersTest, AnswersEveryCallForAnUnknownIdentifier) {
    const ACFPtr<TestEffect> uninitialized = makeTestEffect();
    for (const Call& call : callsByIdentifier()) {
        for (const char* id : {"gain", "", static_cast<const char*>(nullptr)}) {
            EXPECT_EQ(call.call(effect, id), call.whenUnknown) << call.name;
            EXPECT_EQ(call.call(*uninitialized, id), call.whenUnknown) << call.name;
        }
        EXPECT_EQ(call.call(*uninitialized, "Gain"), call.whenUnknown) << call.name << " before Initialize";
    }
    EXPECT_THAT(host.automation.takeCalls(), IsEmpty());
    EXPECT_EQ(changes(), 0);
}

TEST_F(EffectParametersTest, AnswersEveryCallForAKnownIdentifier) {
    for (const Call& call : callsByIdentifier()) {
        const bool isUnimplemented = call.whenUnknown == AAX_ERROR_UNIMPLEMENTED;
        EXPECT_EQ(call.call(effect, "Gain"), isUnimplemented ? AAX_ERROR_UNIMPLEMENTED : AAX_SUCCESS)
            << call.name;
    }
}

TEST_F(EffectParametersTest, LetsNoExceptionEscapeFromAnyCall) {
    const ListeningHost listening;
    fake->before = [] { throw std::runtime_error("broken"); };
    // These call nothing of the parameter that could fail.
    const std::vector<std::string> never = {"GetParameterName", "GetParameter", "GetParameterIndex",
                                            "GetParameterValueInfo", "UpdateParameterTouch"};
    for (const Call& call : callsByIdentifier()) {
        const bool throws = std::find(never.begin(), never.end(), call.name) == never.end();
        const std::size_t linesBefore = listening.lines().size();
        const AAX_Result result = call.call(effect, "Fake");
        EXPECT_EQ(result == AAX_ERROR_UNKNOWN_EXCEPTION, throws) << call.name;
        ASSERT_EQ(listening.lines().size(), linesBefore + (throws ? 1 : 0)) << call.name;
        if (throws) {
            EXPECT_EQ(listening.lines().back().text,
                      "AAX_CEffectParameters::" + std::string(call.name) + " exception caught: broken");
        }
    }
    fake->before = [] {};
}

TEST_F(EffectParametersTest, RefusesNullOutputs) {
    constexpr AAX_Result kNull = AAX_ERROR_NULL_ARGUMENT;
    EXPECT_EQ(effect.GetNumberOfParameters(nullptr), kNull);
    EXPECT_EQ(effect.GetMasterBypassParameter(nullptr), kNull);
    EXPECT_EQ(effect.GetParameterIsAutomatable("Gain", nullptr), kNull);
    EXPECT_EQ(effect.GetParameterNumberOfSteps("Gain", nullptr), kNull);
    EXPECT_EQ(effect.GetParameterName("Gain", nullptr), kNull);
    EXPECT_EQ(effect.GetParameterDefaultNormalizedValue("Gain", nullptr), kNull);
    EXPECT_EQ(effect.GetParameterType("Gain", nullptr), kNull);
    EXPECT_EQ(effect.GetParameterOrientation("Gain", nullptr), kNull);
    EXPECT_EQ(effect.GetParameter("Gain", nullptr), kNull);
    EXPECT_EQ(effect.GetParameterIndex("Gain", nullptr), kNull);
    EXPECT_EQ(effect.GetParameterIDFromIndex(0, nullptr), kNull);
    EXPECT_EQ(effect.GetParameterValueInfo("Gain", 0, nullptr), kNull);
    EXPECT_EQ(effect.GetParameterValueFromString("Gain", nullptr, text), kNull);
    EXPECT_EQ(effect.GetParameterStringFromValue("Gain", 0.5, nullptr, 4), kNull);
    EXPECT_EQ(effect.GetParameterValueString("Gain", nullptr, 4), kNull);
    EXPECT_EQ(effect.GetParameterNormalizedValue("Gain", nullptr), kNull);
    EXPECT_EQ(effect.GetNumberOfChanges(nullptr), kNull);
}

} // namespace
} // namespace varno::test
