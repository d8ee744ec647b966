// A parameter in any sequence of settings, against a table of its values. The range is one whose numbers are
// all exact: 129 rows, three sixteenths of a dB apart.
#include "AAX_CParameter.h"
#include "Tests/Support/ModelCheck.h"
#include "Tests/Support/TestEffect.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

namespace varno::test {
namespace {

#if VARNO_HAS_PROPERTIES
constexpr int kLastRow = 128;
constexpr float kLowest = -12.0F;
constexpr float kHighest = 12.0F;
constexpr int kDecimals = 4;

// What a row of the table has.
double normalizedOf(int row) {
    return row / static_cast<double>(kLastRow);
}
float realOf(int row) {
    return kLowest + static_cast<float>(row) * 0.1875F;
}
std::string shownAs(double number, int decimals) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%.*f", decimals, number);
    return text.data();
}

std::string described(double normalized, float real, std::uint32_t step, const std::string& text,
                      double standard) {
    return shownAs(normalized, 17) + ' ' + shownAs(static_cast<double>(real), 17) + " step " +
           std::to_string(step) + " \"" + text + "\" default " + shownAs(standard, 17);
}

// The table and the row in it.
class TableModel {
public:
    std::string setNormalized(double normalized) { return go(rowOf(normalized * kLastRow)); }
    std::string update(double normalized) { return setNormalized(normalized); }
    std::string setStep(std::uint32_t step) {
        return mSteps < 2 ? seen() : go(rowOf(static_cast<double>(step) * kLastRow / (mSteps - 1)));
    }
    std::string setReal(float real) { return go(rowOf((static_cast<double>(real) - kLowest) / 0.1875)); }
    std::string setText(const std::string& text, int row) {
        return row < 0 ? "refused " + text + ' ' + seen() : go(row);
    }
    std::string setDefault(double normalized) {
        mDefault = rowOf(normalized * kLastRow);
        return seen();
    }
    std::string toDefault() { return go(mDefault); }
    std::string divide(std::uint32_t steps) {
        mSteps = steps;
        return seen();
    }

private:
    // Of a number between two rows there is none here; of one that is no number, the lowest.
    static int rowOf(double row) {
        return std::isnan(row) ? 0 : static_cast<int>(std::clamp(row, 0.0, static_cast<double>(kLastRow)));
    }
    std::string go(int row) {
        mRow = row;
        return seen();
    }
    // The nearest step, of two that are as near the upper one.
    std::uint32_t step() const {
        const auto row = static_cast<std::uint32_t>(mRow);
        return mSteps < 2 ? 0 : (2 * row * (mSteps - 1) + kLastRow) / (2 * kLastRow);
    }
    std::string seen() const {
        return described(normalizedOf(mRow), realOf(mRow), step(),
                         shownAs(static_cast<double>(realOf(mRow)), kDecimals), normalizedOf(mDefault));
    }

    int mRow = kLastRow / 2;
    int mDefault = kLastRow / 2;
    std::uint32_t mSteps = 129;
};

// The parameter.
class TableParameter {
public:
    TableParameter() { mParameter.SetNumberOfSteps(129); }
    std::string setNormalized(double normalized) {
        mParameter.SetNormalizedValue(normalized);
        return seen();
    }
    std::string update(double normalized) {
        mParameter.UpdateNormalizedValue(normalized);
        return seen();
    }
    std::string setStep(std::uint32_t step) {
        mParameter.SetStepValue(step);
        return seen();
    }
    std::string setReal(float real) {
        return mParameter.SetValueWithFloat(real) && !mParameter.SetValueWithDouble(0.0) &&
                       !mParameter.SetValueWithInt32(0) && !mParameter.SetValueWithBool(false)
                   ? seen()
                   : "types";
    }
    std::string setText(const std::string& text, int) {
        return mParameter.SetValueFromString(text.c_str()) ? seen() : "refused " + text + ' ' + seen();
    }
    std::string setDefault(double normalized) {
        mParameter.SetNormalizedDefaultValue(normalized);
        return seen();
    }
    std::string toDefault() {
        mParameter.SetToDefaultValue();
        return seen();
    }
    std::string divide(std::uint32_t steps) {
        mParameter.SetNumberOfSteps(steps);
        return seen();
    }

protected:
    std::string seen() const {
        AAX_CString text;
        AAX_CString later;
        mParameter.GetValueString(&text);
        mParameter.GetStringFromNormalizedValue(mParameter.GetNormalizedValue(), later);
        return described(mParameter.GetNormalizedValue(), realValue(mParameter), mParameter.GetStepValue(),
                         text == later ? text.Get() : "two texts", mParameter.GetNormalizedDefaultValue());
    }

    AAX_CParameter<float> mParameter{"Gain", AAX_CString("Gain"), 0.0F,
                                     AAX_CLinearTaperDelegate<float>(kLowest, kHighest),
                                     AAX_CNumberDisplayDelegate<float, kDecimals>()};
};

// Steps beyond the last one begin again.
class WrappingParameter : public TableParameter {
public:
    std::string setStep(std::uint32_t step) {
        return TableParameter::setStep(step % mParameter.GetNumberOfSteps());
    }
};

// A text is read as far as a point.
class WholeTextParameter : public TableParameter {
public:
    std::string setText(const std::string& text, int row) {
        return TableParameter::setText(text.substr(0, text.find('.')), row);
    }
};

// A new default is taken at once.
class EagerParameter : public TableParameter {
public:
    std::string setDefault(double normalized) {
        TableParameter::setDefault(normalized);
        return toDefault();
    }
};

// A normalized value: a row's, one beyond the ends, or what is no number.
double anyNormalized() {
    return *rc::gen::weightedOneOf<double>(
        {{20, rc::gen::map(rc::gen::inRange(0, kLastRow + 1), normalizedOf)},
         {4, rc::gen::element(-1.0, 2.0, HUGE_VAL, -HUGE_VAL, std::nan(""))}});
}

template<class Parameter>
typename ModelCheck<TableModel, Parameter>::Operation anySetting() {
    using Check = ModelCheck<TableModel, Parameter>;
    const double normalized = anyNormalized();
    const std::string value = std::to_string(normalized);
    switch (*rc::gen::inRange(0, 9)) {
    case 0:
    case 1:
        return Check::operation("normalized " + value,
                                [=](auto& it) { return it.setNormalized(normalized); });
    case 2:
        return Check::operation("update " + value, [=](auto& it) { return it.update(normalized); });
    case 3: {
        const auto step = *rc::gen::element<std::uint32_t>(0, 1, 2, 4, 8, 16, 64, 128, 129, 0xFFFFFFFF);
        return Check::operation("step " + std::to_string(step), [=](auto& it) { return it.setStep(step); });
    }
    case 4: {
        const float real = realOf(*rc::gen::inRange(-20, kLastRow + 20));
        return Check::operation("real " + std::to_string(real), [=](auto& it) { return it.setReal(real); });
    }
    case 5: {
        const int row = *rc::gen::inRange(-1, kLastRow + 1);
        const std::string number = shownAs(static_cast<double>(realOf(std::max(row, 0))), kDecimals);
        const std::string text = row < 0 ? *rc::gen::element<std::string>("", "x", "-", ".", " dB", "nan")
                                         : *rc::gen::element<std::string>("", " ", "\t") + number +
                                               *rc::gen::element<std::string>("", " dB", "dB", " 5");
        return Check::operation("text \"" + text + '"', [=](auto& it) { return it.setText(text, row); });
    }
    case 6:
        return Check::operation("default " + value, [=](auto& it) { return it.setDefault(normalized); });
    case 7:
        return Check::operation("to default", [](auto& it) { return it.toDefault(); });
    default: {
        const auto steps = *rc::gen::element<std::uint32_t>(1, 2, 3, 5, 9, 17, 33, 65, 129);
        return Check::operation("steps " + std::to_string(steps), [=](auto& it) { return it.divide(steps); });
    }
    }
}

template<class Parameter>
ModelCheck<TableModel, Parameter> parameterCheck(int cases) {
    return {.draw = anySetting<Parameter>, .cases = cases};
}

TEST(ParameterModelTest, valuesStepsAndTextsAreThoseOfTheTable) {
    expectHolds(parameterCheck<TableParameter>(50 * testScale()), std::int64_t{7500} * testScale());
}

TEST(ParameterModelTest, rejectsParametersThatWrapCutOrHurry) {
    expectRejects(parameterCheck<WrappingParameter>(50), "steps wrap");
    expectRejects(parameterCheck<WholeTextParameter>(50), "decimals are cut");
    expectRejects(parameterCheck<EagerParameter>(50), "the default is taken at once");
}
#endif

} // namespace
} // namespace varno::test
