#include "AAX_CParameter.h"
#include "Tests/Support/FakeHostServices.h"
#include "Tests/Support/Properties.h"
#include "Tests/Support/TestEffect.h"
#include "Tests/Support/TestRun.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>

namespace varno::test {
namespace {

TEST(Parameter, IsWhatItIsMadeAs) {
    const auto parameter = makeFloatParameter();
    EXPECT_STREQ(parameter->Identifier(), "Gain");
    EXPECT_STREQ(parameter->Name().Get(), "Input Gain");
    EXPECT_TRUE(parameter->Automatable());
    EXPECT_EQ(parameter->GetType(), AAX_eParameterType_Continuous);
    EXPECT_EQ(parameter->GetOrientation(), 0);
    EXPECT_EQ(parameter->GetNumberOfSteps(), 128U);
    EXPECT_EQ(parameter->GetNormalizedDefaultValue(), 0.5);
    EXPECT_EQ(parameter->GetNormalizedValue(), 0.5);
    EXPECT_EQ(realValue(*parameter), 0.5F);
}

TEST(Parameter, IsNotAutomatableByDefault) {
    const AAX_CParameter<float> parameter("A", AAX_CString("A"), 0.0F, FloatTaper(), FloatDisplay());
    EXPECT_FALSE(parameter.Automatable());
}

TEST(Parameter, HasAsManyStepsAsItsTypeAsksFor) {
    const ListeningHost host;
    EXPECT_EQ(AAX_DefaultNumberOfSteps(AAX_eParameterType_Continuous), 128U);
    EXPECT_EQ(AAX_DefaultNumberOfSteps(AAX_eParameterType_Discrete), 2U);
    EXPECT_TRUE(host.assertions().empty());
    EXPECT_EQ(AAX_DefaultNumberOfSteps(static_cast<AAX_EParameterType>(7)), 1U);
    ASSERT_EQ(host.assertions().size(), 1U);
    EXPECT_EQ(host.assertions()[0].note, "0");
}

TEST(Parameter, CutsAnIdentifierThatIsTooLong) {
    const ListeningHost host;
    EXPECT_EQ(makeFloatParameter(std::string(40, 'y').c_str())->Identifier(), std::string(31, 'y'));
    ASSERT_EQ(host.assertions().size(), 1U);
    EXPECT_EQ(host.assertions()[0].note, "len < eParemeterDefaultMaxIdentifierSize");
}

TEST(Parameter, KeepsWhatIsSet) {
    const auto parameter = makeFloatParameter();
    parameter->SetName("Drive");
    parameter->SetType(AAX_eParameterType_Discrete);
    parameter->SetOrientation(3);
    parameter->SetNumberOfSteps(9);
    EXPECT_STREQ(parameter->Name().Get(), "Drive");
    EXPECT_EQ(parameter->GetType(), AAX_eParameterType_Discrete);
    EXPECT_EQ(parameter->GetOrientation(), 3);
    EXPECT_EQ(parameter->GetNumberOfSteps(), 9U);
}

TEST(Parameter, RefusesToHaveNoSteps) {
    const ListeningHost host;
    const auto parameter = makeFloatParameter();
    parameter->SetNumberOfSteps(0);
    EXPECT_EQ(parameter->GetNumberOfSteps(), 128U);
    ASSERT_EQ(host.assertions().size(), 1U);
    EXPECT_EQ(host.assertions()[0].note, "0 < numSteps");
}

TEST(Parameter, ClonesItsValue) {
    const auto parameter = makeFloatParameter("Mix", 0.25F);
    const std::unique_ptr<AAX_IParameterValue> value = parameter->CloneValue();
    parameter->SetValueWithFloat(0.75F);
    float real = 0.0F;
    EXPECT_STREQ(value->Identifier(), "Mix");
    EXPECT_TRUE(value->GetValueAsFloat(&real));
    EXPECT_EQ(real, 0.25F);
}

TEST(ParameterShortenedName, IsTheLongestThatFits) {
    const auto parameter = makeFloatParameter(); // "Input Gain"
    parameter->AddShortenedName("InGain");
    parameter->AddShortenedName("Gn");
    parameter->AddShortenedName("Gain");
    EXPECT_STREQ(parameter->ShortenedName(10).Get(), "Input Gain");
    EXPECT_STREQ(parameter->ShortenedName(9).Get(), "InGain");
    EXPECT_STREQ(parameter->ShortenedName(6).Get(), "InGain");
    EXPECT_STREQ(parameter->ShortenedName(5).Get(), "Gain");
    EXPECT_STREQ(parameter->ShortenedName(2).Get(), "Gn");
    EXPECT_STREQ(parameter->ShortenedName(1).Get(), "Gn") << "all are longer: the shortest";
    EXPECT_STREQ(parameter->ShortenedName(0).Get(), "Gn");
    EXPECT_STREQ(parameter->ShortenedName(-1).Get(), "Input Gain");
}

TEST(ParameterShortenedName, ReplacesAnotherOfItsLength) {
    const auto parameter = makeFloatParameter();
    parameter->AddShortenedName("Gain");
    parameter->AddShortenedName("Gn_1");
    EXPECT_STREQ(parameter->ShortenedName(4).Get(), "Gn_1");
}

TEST(ParameterShortenedName, IsTheFullNameWithoutShortenedOnes) {
    const auto parameter = makeFloatParameter();
    EXPECT_STREQ(parameter->ShortenedName(3).Get(), "Input Gain");
    parameter->AddShortenedName("Gn");
    parameter->ClearShortenedNames();
    EXPECT_STREQ(parameter->ShortenedName(3).Get(), "Input Gain");
}

TEST(ParameterValues, AreSetAtOnceWithoutAutomation) {
    const auto parameter = makeFloatParameter();
    parameter->SetNormalizedValue(0.25);
    EXPECT_EQ(parameter->GetNormalizedValue(), 0.25);
    EXPECT_TRUE(parameter->SetValueWithFloat(0.75F));
    EXPECT_EQ(realValue(*parameter), 0.75F);
    EXPECT_TRUE(parameter->SetValueFromString("0.125"));
    EXPECT_EQ(realValue(*parameter), 0.125F);
    EXPECT_TRUE(parameter->SetValueWithString(AAX_CString("0.375")));
    EXPECT_EQ(realValue(*parameter), 0.375F);
    parameter->SetToDefaultValue();
    EXPECT_EQ(realValue(*parameter), 0.5F);
}

TEST(ParameterValues, AreClampedByTheTaper) {
    const auto parameter = makeFloatParameter();
    parameter->SetNormalizedValue(1.7);
    EXPECT_EQ(parameter->GetNormalizedValue(), 1.0);
    parameter->SetValueWithFloat(-3.0F);
    EXPECT_EQ(parameter->GetNormalizedValue(), 0.0);
    parameter->SetValueFromString("1e300");
    EXPECT_EQ(parameter->GetNormalizedValue(), 1.0);
    parameter->UpdateNormalizedValue(-0.5);
    EXPECT_EQ(parameter->GetNormalizedValue(), 0.0);
}

TEST(ParameterValues, AreNeverWhatIsNotANumber) {
    const double nan = kNaN;
    const auto parameter = makeFloatParameter("Drive", 0.5F, FloatTaper(0.25F, 0.75F));
    const auto expectLowerBound = [&](const char* way) {
        EXPECT_EQ(realValue(*parameter), 0.25F) << way;
        EXPECT_EQ(parameter->GetNormalizedValue(), 0.0) << way;
        parameter->SetValueWithFloat(0.5F);
    };
    parameter->SetNormalizedValue(nan);
    expectLowerBound("normalized");
    parameter->SetValueWithFloat(kNaN);
    expectLowerBound("real");
    parameter->UpdateNormalizedValue(nan);
    expectLowerBound("automation");
    parameter->SetNormalizedDefaultValue(nan);
    EXPECT_EQ(parameter->GetNormalizedDefaultValue(), 0.0);
    parameter->SetToDefaultValue();
    expectLowerBound("default");

    float real = 0.0F;
    double normalized = -1.0;
    EXPECT_TRUE(parameter->GetFloatFromNormalizedValue(nan, &real));
    EXPECT_EQ(real, 0.25F);
    EXPECT_TRUE(parameter->GetNormalizedValueFromFloat(kNaN, &normalized));
    EXPECT_EQ(normalized, 0.0);
    EXPECT_EQ(parameter->GetStepValueFromNormalizedValue(nan), 0U);

    EXPECT_FALSE(parameter->SetValueFromString("nan"));
    EXPECT_EQ(realValue(*parameter), 0.5F) << "a text that is no number sets nothing";
}

TEST(ParameterValues, StartAtTheLowerBoundWhenTheDefaultIsNotANumber) {
    const auto parameter = makeFloatParameter("Drive", kNaN, FloatTaper(0.25F, 0.75F));
    EXPECT_EQ(realValue(*parameter), 0.25F);
    EXPECT_EQ(parameter->GetNormalizedDefaultValue(), 0.0);
}

TEST(ParameterValues, StayWhenTheDefaultIsSet) {
    const auto parameter = makeFloatParameter();
    parameter->SetNormalizedDefaultValue(1.5);
    EXPECT_EQ(parameter->GetNormalizedDefaultValue(), 1.0);
    EXPECT_EQ(parameter->GetNormalizedValue(), 0.5);
}

TEST(ParameterSteps, DivideTheRange) {
    const auto parameter = makeFloatParameter();
    parameter->SetNumberOfSteps(8);
    for (std::uint32_t step = 0; step < 8; ++step) {
        EXPECT_EQ(parameter->GetNormalizedValueFromStep(step), step * (1.0 / 7));
        EXPECT_EQ(parameter->GetStepValueFromNormalizedValue(parameter->GetNormalizedValueFromStep(step)),
                  step);
        parameter->SetStepValue(step);
        EXPECT_EQ(parameter->GetStepValue(), step);
    }
    EXPECT_EQ(parameter->GetNormalizedValueFromStep(8), 1.0);
    EXPECT_EQ(parameter->GetNormalizedValueFromStep(std::numeric_limits<std::uint32_t>::max()), 1.0);
}

TEST(ParameterSteps, RoundHalvesUpward) {
    const auto parameter = makeFloatParameter();
    parameter->SetNumberOfSteps(8);
    EXPECT_EQ(parameter->GetStepValueFromNormalizedValue(0.5), 4U);
    parameter->SetNumberOfSteps(131);
    EXPECT_EQ(parameter->GetStepValueFromNormalizedValue(0.5), 65U);
    parameter->SetNumberOfSteps(2);
    EXPECT_EQ(parameter->GetStepValueFromNormalizedValue(0.5), 1U);
    EXPECT_EQ(parameter->GetStepValueFromNormalizedValue(0.49), 0U);
}

TEST(ParameterSteps, ComeFromADivisionByTheirWidth) {
    // Values half way between two steps round differently when multiplied by the number of steps.
    const auto parameter = makeFloatParameter();
    std::uint32_t differing = 0;
    for (std::uint32_t numSteps = 3; numSteps < 400; ++numSteps) {
        parameter->SetNumberOfSteps(numSteps);
        for (std::uint32_t step = 0; step + 1 < numSteps; ++step) {
            const double half = (step + 0.5) / (numSteps - 1);
            const auto byDivision =
                static_cast<std::uint32_t>(std::floor(half / (1.0 / (numSteps - 1)) + 0.5));
            const auto byMultiplication = static_cast<std::uint32_t>(std::floor(half * (numSteps - 1) + 0.5));
            EXPECT_EQ(parameter->GetStepValueFromNormalizedValue(half), byDivision);
            differing += byDivision != byMultiplication ? 1 : 0;
        }
    }
    EXPECT_GT(differing, 0U) << "the two forms are not the same";
}

TEST(ParameterSteps, ClampWhatLiesOutside) {
    const auto parameter = makeFloatParameter();
    parameter->SetNumberOfSteps(8);
    EXPECT_EQ(parameter->GetStepValueFromNormalizedValue(-3.0), 0U);
    EXPECT_EQ(parameter->GetStepValueFromNormalizedValue(3.0), 7U);
    EXPECT_EQ(parameter->GetStepValueFromNormalizedValue(std::numeric_limits<double>::infinity()), 7U);
    parameter->SetNumberOfSteps(std::numeric_limits<std::uint32_t>::max());
    EXPECT_EQ(parameter->GetStepValueFromNormalizedValue(1.0), std::numeric_limits<std::uint32_t>::max() - 1);
}

TEST(ParameterSteps, DoNothingWhenThereIsOneOnly) {
    const auto parameter = makeFloatParameter();
    parameter->SetNumberOfSteps(1);
    EXPECT_EQ(parameter->GetNormalizedValueFromStep(1), 0.0);
    EXPECT_EQ(parameter->GetStepValueFromNormalizedValue(1.0), 0U);
    parameter->SetStepValue(0);
    EXPECT_EQ(parameter->GetNormalizedValue(), 0.5);
}

TEST(ParameterSteps, OfASwitchAreItsBounds) {
    const auto parameter = makeFloatParameter("HP", 0.0F);
    parameter->SetNumberOfSteps(2);
    parameter->SetStepValue(1);
    EXPECT_EQ(realValue(*parameter), 1.0F);
    parameter->SetStepValue(0);
    EXPECT_EQ(realValue(*parameter), 0.0F);
}

TEST(ParameterText, ShowsTheValue) {
    const auto parameter = makeFloatParameter();
    AAX_CString text;
    EXPECT_TRUE(parameter->GetValueString(&text));
    EXPECT_STREQ(text.Get(), "0.50");
    EXPECT_TRUE(parameter->GetValueString(3, &text));
    EXPECT_STREQ(text.Get(), "0.5");
    EXPECT_TRUE(parameter->GetValueAsString(&text));
    EXPECT_STREQ(text.Get(), "0.50");
}

TEST(ParameterText, ShowsNormalizedValues) {
    const auto parameter = makeFloatParameter("Gain", 0.0F, FloatTaper(-10.0F, 10.0F));
    AAX_CString text;
    EXPECT_TRUE(parameter->GetStringFromNormalizedValue(0.75, text));
    EXPECT_STREQ(text.Get(), "5.00");
    EXPECT_TRUE(parameter->GetStringFromNormalizedValue(7.0, 2, text));
    EXPECT_STREQ(text.Get(), "10");
}

TEST(ParameterText, IsReadAsNormalizedValue) {
    const auto parameter = makeFloatParameter("Gain", 0.0F, FloatTaper(-10.0F, 10.0F));
    double normalized = -1.0;
    EXPECT_TRUE(parameter->GetNormalizedValueFromString("5", &normalized));
    EXPECT_EQ(normalized, 0.75);
    EXPECT_FALSE(parameter->GetNormalizedValueFromString("loud", &normalized));
    EXPECT_EQ(normalized, 0.75);
    EXPECT_FALSE(parameter->SetValueFromString("loud"));
    EXPECT_FALSE(parameter->SetValueWithString(AAX_CString("")));
    EXPECT_EQ(realValue(*parameter), 0.0F);
}

TEST(ParameterText, RefusesNullOutputs) {
    const auto parameter = makeFloatParameter();
    EXPECT_FALSE(parameter->GetValueString(nullptr));
    EXPECT_FALSE(parameter->GetValueString(3, nullptr));
    EXPECT_FALSE(parameter->GetValueAsString(nullptr));
    EXPECT_FALSE(parameter->GetNormalizedValueFromString("0.5", nullptr));
    EXPECT_FALSE(parameter->GetValueAsFloat(nullptr));
    EXPECT_FALSE(parameter->GetFloatFromNormalizedValue(0.5, nullptr));
    EXPECT_FALSE(parameter->GetNormalizedValueFromFloat(0.5F, nullptr));
}

// Which of a family of typed operations succeed, by the initials of their types.
struct Typed {
    bool asBool = false;
    std::int32_t asInt32 = 0;
    float asFloat = 0.0F;
    double asDouble = 0.0;

    static std::string initials(bool b, bool i, bool f, bool d) {
        return std::string(b ? "b" : "") + (i ? "i" : "") + (f ? "f" : "") + (d ? "d" : "");
    }
    std::string getters(const AAX_IParameter& parameter) {
        return initials(parameter.GetValueAsBool(&asBool), parameter.GetValueAsInt32(&asInt32),
                        parameter.GetValueAsFloat(&asFloat), parameter.GetValueAsDouble(&asDouble));
    }
    static std::string setters(AAX_IParameter& parameter) {
        return initials(parameter.SetValueWithBool(true), parameter.SetValueWithInt32(1),
                        parameter.SetValueWithFloat(1.0F), parameter.SetValueWithDouble(1.0));
    }
    static std::string toNormalized(const AAX_IParameter& parameter) {
        double x = 0.0;
        return initials(
            parameter.GetNormalizedValueFromBool(true, &x), parameter.GetNormalizedValueFromInt32(1, &x),
            parameter.GetNormalizedValueFromFloat(1.0F, &x), parameter.GetNormalizedValueFromDouble(1.0, &x));
    }
    std::string fromNormalized(const AAX_IParameter& parameter) {
        return initials(parameter.GetBoolFromNormalizedValue(1.0, &asBool),
                        parameter.GetInt32FromNormalizedValue(1.0, &asInt32),
                        parameter.GetFloatFromNormalizedValue(1.0, &asFloat),
                        parameter.GetDoubleFromNormalizedValue(1.0, &asDouble));
    }
};

void expectTyped(AAX_IParameter& parameter, const std::string& initial) {
    Typed typed;
    EXPECT_EQ(typed.getters(parameter), initial);
    EXPECT_EQ(Typed::setters(parameter), initial);
    EXPECT_EQ(Typed::toNormalized(parameter), initial);
    EXPECT_EQ(typed.fromNormalized(parameter), initial);
    EXPECT_EQ(parameter.GetNormalizedValue(), 1.0) << "the one setter that succeeded";
}

TEST(ParameterTypes, OfAFloatAreFloat) {
    expectTyped(*makeFloatParameter(), "f");
}

TEST(ParameterTypes, OfASwitchAreBool) {
    expectTyped(*makeBoolParameter(), "b");
}

TEST(ParameterTypes, OfADoubleAreDouble) {
    expectTyped(*makeDoubleParameter(), "d");
}

TEST(ParameterTypes, OthersWriteNothing) {
    const auto parameter = makeFloatParameter();
    Typed typed{true, 7, 8.0F, 9.0};
    EXPECT_EQ(typed.getters(*parameter), "f");
    EXPECT_TRUE(typed.asBool);
    EXPECT_EQ(typed.asInt32, 7);
    EXPECT_EQ(typed.asDouble, 9.0);
    double x = 5.0;
    EXPECT_FALSE(parameter->GetNormalizedValueFromDouble(0.5, &x));
    EXPECT_EQ(x, 5.0);
}

TEST(BoolParameter, IsExactlyZeroOrOne) {
    const auto parameter = makeBoolParameter();
    bool value = true;
    EXPECT_TRUE(parameter->GetValueAsBool(&value));
    EXPECT_FALSE(value);
    EXPECT_EQ(parameter->GetNormalizedValue(), 0.0);
    parameter->UpdateNormalizedValue(0.001);
    EXPECT_TRUE(parameter->GetValueAsBool(&value));
    EXPECT_TRUE(value);
    EXPECT_EQ(parameter->GetNormalizedValue(), 1.0);
    parameter->UpdateNormalizedValue(kNaN);
    EXPECT_EQ(parameter->GetNormalizedValue(), 0.0);
}

TEST(BoolParameter, ReadsAndShowsItsTexts) {
    const auto parameter = makeBoolParameter();
    AAX_CString text;
    EXPECT_TRUE(parameter->GetValueString(&text));
    EXPECT_STREQ(text.Get(), "bypass");
    EXPECT_TRUE(parameter->SetValueFromString("on"));
    EXPECT_EQ(parameter->GetNormalizedValue(), 1.0);
    EXPECT_FALSE(parameter->SetValueFromString("bypassed"));
    EXPECT_EQ(parameter->GetNormalizedValue(), 1.0);
}

TEST(ParameterDelegates, ReplaceTheDisplay) {
    const auto parameter = makeFloatParameter();
    AAX_CNumberDisplayDelegate<float, 0> whole;
    parameter->SetDisplayDelegate(whole);
    AAX_CString text;
    EXPECT_TRUE(parameter->GetValueString(&text));
    EXPECT_STREQ(text.Get(), "0");
}

TEST(ParameterDelegates, KeepTheRealValueUnderANewTaperWhenAskedTo) {
    const auto parameter = makeFloatParameter("Gain", 0.25F);
    parameter->SetValueWithFloat(0.75F);
    FloatTaper wider(0.0F, 3.0F);
    parameter->SetTaperDelegate(wider, true);
    EXPECT_EQ(realValue(*parameter), 0.75F);
    EXPECT_EQ(parameter->GetNormalizedValue(), 0.25);
    EXPECT_EQ(parameter->GetNormalizedDefaultValue(), 0.25 / 3);
    FloatTaper narrower(0.0F, 0.5F);
    parameter->SetTaperDelegate(narrower, true);
    EXPECT_EQ(realValue(*parameter), 0.5F) << "clamped into the new range";
}

TEST(ParameterDelegates, KeepTheNormalizedValueUnderANewTaperOtherwise) {
    const auto parameter = makeFloatParameter("Gain", 0.25F);
    parameter->SetValueWithFloat(0.75F);
    FloatTaper wider(-2.0F, 2.0F);
    parameter->SetTaperDelegate(wider, false);
    EXPECT_EQ(parameter->GetNormalizedValue(), 0.75);
    EXPECT_EQ(realValue(*parameter), 1.0F);
    EXPECT_EQ(parameter->GetNormalizedDefaultValue(), 0.25);
    parameter->SetToDefaultValue();
    EXPECT_EQ(realValue(*parameter), -1.0F);
}

TEST(ParameterDelegates, OfAnotherTypeAreRefused) {
    const ListeningHost host;
    const auto parameter = makeFloatParameter();
    AAX_CBinaryTaperDelegate<bool> taper;
    AAX_CBinaryDisplayDelegate<bool> display("no", "yes");
    parameter->SetTaperDelegate(taper, true);
    parameter->SetDisplayDelegate(display);
    EXPECT_EQ(host.assertions().size(), 2U);
    AAX_CString text;
    EXPECT_TRUE(parameter->GetValueString(&text));
    EXPECT_STREQ(text.Get(), "0.50");
}

// A display that cannot be copied.
class UncloneableDisplay : public AAX_IDisplayDelegate<float> {
public:
    std::unique_ptr<AAX_IDisplayDelegate<float>> Clone() const override { throw std::bad_alloc(); }
    bool ValueToString(float, AAX_CString*) const override { return false; }
    bool ValueToString(float, std::int32_t, AAX_CString*) const override { return false; }
    bool StringToValue(const AAX_CString&, float*) const override { return false; }
};

// A taper that counts its living copies.
class CountedTaper : public AAX_ITaperDelegate<float> {
public:
    explicit CountedTaper(int& alive)
        : mAlive(alive) {
        ++mAlive;
    }
    CountedTaper(const CountedTaper& other)
        : AAX_ITaperDelegate(other),
          mAlive(other.mAlive) {
        ++mAlive;
    }
    CountedTaper& operator=(const CountedTaper&) = delete;
    ~CountedTaper() override { --mAlive; }

    std::unique_ptr<AAX_ITaperDelegate<float>> Clone() const override {
        return std::make_unique<CountedTaper>(*this);
    }
    float GetMaximumValue() const override { return 1.0F; }
    float GetMinimumValue() const override { return 0.0F; }
    float ConstrainRealValue(float value) const override { return value; }
    float NormalizedToReal(double value) const override { return static_cast<float>(value); }
    double RealToNormalized(float value) const override { return value; }

private:
    int& mAlive;
};

TEST(ParameterDelegates, LeaveNothingBehindWhenOneCannotBeCloned) {
    int alive = 0;
    {
        const CountedTaper taper(alive);
        EXPECT_THROW(AAX_CParameter<float>("A", AAX_CString("A"), 0.0F, taper, UncloneableDisplay()),
                     std::bad_alloc);
        EXPECT_EQ(alive, 1);
        AAX_CParameter<float> parameter("A", AAX_CString("A"), 0.0F, taper, FloatDisplay());
        EXPECT_EQ(alive, 2);
        UncloneableDisplay display;
        EXPECT_THROW(parameter.SetDisplayDelegate(display), std::bad_alloc);
        AAX_CString text;
        EXPECT_TRUE(parameter.GetValueString(&text)) << "the display before it is still there";
    }
    EXPECT_EQ(alive, 0);
}

TEST(ParameterDelegates, MayHaveNoTextForAValue) {
    class Mute : public UncloneableDisplay {
        std::unique_ptr<AAX_IDisplayDelegate<float>> Clone() const override {
            return std::make_unique<Mute>(*this);
        }
    };
    const AAX_CParameter<float> parameter("A", AAX_CString("A"), 0.0F, FloatTaper(), Mute());
    AAX_CString text("before");
    EXPECT_FALSE(parameter.GetValueAsString(&text));
    EXPECT_STREQ(text.Get(), "before");
}

#if VARNO_HAS_PROPERTIES
RC_GTEST_PROP(ParameterProperty, KeepsAnyFloatOfItsRangeThroughTheHost, (std::uint32_t bits)) {
    // The host may read the normalized value and set it again: the parameter keeps its value.
    const float real = static_cast<float>(bits) / 4294967296.0F;
    const auto parameter = makeFloatParameter();
    parameter->SetValueWithFloat(real);
    RC_ASSERT(realValue(*parameter) == real);
    const double normalized = parameter->GetNormalizedValue();
    parameter->UpdateNormalizedValue(normalized);
    RC_ASSERT(parameter->GetNormalizedValue() == normalized);
}

RC_GTEST_PROP(ParameterProperty, TextRoundTripsToItsDecimals, ()) {
    const auto parameter = makeFloatParameter();
    parameter->SetNormalizedValue(*rc::gen::inRange(0, 10001) / 10000.0);
    AAX_CString text;
    RC_ASSERT(parameter->GetValueString(&text));
    RC_ASSERT(parameter->SetValueFromString(text));
    AAX_CString again;
    RC_ASSERT(parameter->GetValueString(&again));
    RC_ASSERT(text == again);
}
#endif

} // namespace
} // namespace varno::test
