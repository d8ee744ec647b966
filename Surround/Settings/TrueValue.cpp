#include "Surround/Settings/TrueValue.h"

#include "Surround/Settings/NumberText.h"
#include "Surround/Settings/SettingValues.h"

#include <algorithm>
#include <system_error>

namespace varno {
namespace {

constexpr std::string_view kCurveWord = "curve";
constexpr char kChoiceMark = '#';
constexpr std::string_view kBlanks = " \t";

bool isChoice(const SDemoGain_Parameter& row) {
    return row.mUnit.mConversion == EDemoGain_Conversion::kChoice;
}

bool isBeyond(const SDemoGain_Parameter& row, double inUnit, const DemoGain_ValueText::Range& range) {
    using DemoGain_ValueText::WriteInUnit;
    const double nearest = std::clamp(inUnit, range.mLow, range.mHigh);
    return inUnit != nearest && WriteInUnit(row, inUnit) != WriteInUnit(row, nearest);
}

std::string_view withoutBlanks(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    text.remove_suffix(text.size() - std::min(text.find_last_not_of(kBlanks) + 1, text.size()));
    return text;
}

bool startsWithWord(std::string_view text, std::string_view lowerCase) {
    return text.size() >= lowerCase.size() &&
           std::ranges::equal(text.substr(0, lowerCase.size()), lowerCase, [](char written, char small) {
               return written == small || (written >= 'A' && written <= 'Z' && written - 'A' + 'a' == small);
           });
}

// "curve 5" and "#5" without what stands before the number.
std::string_view numberOfChoice(std::string_view text) {
    text = withoutBlanks(text);
    if (startsWithWord(text, kCurveWord)) {
        text.remove_prefix(kCurveWord.size());
    } else if (text.starts_with(kChoiceMark)) {
        text.remove_prefix(1);
    }
    return withoutBlanks(text);
}

// "0" and "1" are the states of a switch.
std::optional<double> switchFromDigit(const SDemoGain_Parameter& row, std::string_view text) {
    if (row.mUnit.mTexts.size() != kDemoGain_SwitchSteps || (text != "0" && text != "1")) {
        return std::nullopt;
    }
    return text == "1" ? 1.0 : 0.0;
}

std::optional<double> normalizedFromTyped(const SDemoGain_Parameter& row, std::string_view text,
                                          const DemoGain_ValueText::Settings& settings) {
    if (hasNumberedChoices(row)) {
        return normalizedFromTrueText(row, numberOfChoice(text), settings, UnitText::kOptional);
    }
    if (const auto state = switchFromDigit(row, withoutBlanks(text))) {
        return state;
    }
    return normalizedFromTrueText(row, text, settings, UnitText::kOptional);
}

// "2.43 to 83.3 ms", or with both units where they differ.
std::string timeRange(const SDemoGain_Parameter& row, const DemoGain_ValueText::Range& range) {
    std::string low = DemoGain_ValueText::WriteInUnit(row, range.mLow);
    const std::string high = DemoGain_ValueText::WriteInUnit(row, range.mHigh);
    const auto unit = low.find(' ');
    if (unit != std::string::npos && high.ends_with(low.substr(unit)) &&
        high.find(' ') == high.size() - (low.size() - unit)) {
        low.resize(unit);
    }
    return low + " to " + high;
}

std::string expected(const SDemoGain_Parameter& row, const DemoGain_ValueText::Settings& settings) {
    const SDemoGain_Unit& unit = row.mUnit;
    if (hasNumberedChoices(row)) {
        return std::string("a curve from ")
            .append(unit.mTexts.front())
            .append(" to ")
            .append(unit.mTexts.back());
    }
    switch (unit.mConversion) {
    case EDemoGain_Conversion::kChoice:
        return std::string(unit.mTexts.front()).append(" or ").append(unit.mTexts.back());
    case EDemoGain_Conversion::kAttackTime:
    case EDemoGain_Conversion::kReleaseTime:
        return "a time from " + timeRange(row, DemoGain_ValueText::RangeInUnit(row, settings));
    case EDemoGain_Conversion::kLinear:
        break;
    }
    const bool isLevel = unit.mSymbol == std::string_view("dB");
    return std::string(isLevel ? "a level" : "a share") + " from " + textFromNumber(unit.mLow) + " to " +
           textFromNumber(unit.mHigh) + ' ' + unit.mSymbol;
}

std::string nameOf(const SDemoGain_Parameter& row) {
    const auto setting = settingOf(row.mIdentifier);
    return setting ? settingName(*setting) : row.mName;
}

} // namespace

DemoGain_ValueText::Settings unitSettings(const Instance& instance) {
    DemoGain_ValueText::Settings settings{.mSampleRateHz = instance.setup().sampleRateHz};
    if (instance.parameter(cDemoGain_RatioID) != nullptr && instance.parameter(cDemoGain_UKID) != nullptr) {
        settings.mRatio = static_cast<float>(instance.normalized(cDemoGain_RatioID));
        settings.mUK = static_cast<float>(instance.normalized(cDemoGain_UKID));
    }
    return settings;
}

bool dependsOnOthers(const std::string& id) {
    const auto* const row = DemoGain_FindParameter(id);
    return row != nullptr && DemoGain_ValueText::DependsOnOthers(*row);
}

double normalizedOfStep(int step, int steps) {
    return static_cast<double>(step) / (steps - 1);
}

bool hasNumberedChoices(const SDemoGain_Parameter& row) {
    if (!isChoice(row)) {
        return false;
    }
    const std::string_view text = row.mUnit.mTexts.front();
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

bool hasNamedChoices(const SDemoGain_Parameter& row) {
    return isChoice(row) && !hasNumberedChoices(row);
}

std::optional<double> normalizedFromTrueText(const SDemoGain_Parameter& row, std::string_view text,
                                             const DemoGain_ValueText::Settings& settings, UnitText unit) {
    if (isChoice(row)) {
        return DemoGain_ValueText::Parse(row, text);
    }
    const auto quantity = DemoGain_ValueText::ParseInUnit(row, text);
    if (!quantity || (unit == UnitText::kRequired && !quantity->mHasUnit) ||
        isBeyond(row, quantity->mValue, DemoGain_ValueText::RangeInUnit(row, settings))) {
        return std::nullopt;
    }
    return DemoGain_ValueText::Normalized(row, quantity->mValue, settings);
}

std::string spokenValue(std::string_view id, double normalized,
                        const DemoGain_ValueText::Settings& settings) {
    const auto* const row = DemoGain_FindParameter(id);
    if (row == nullptr) {
        return {};
    }
    const std::string text = DemoGain_ValueText::Write(*row, normalized, settings);
    return hasNumberedChoices(*row) ? std::string(kCurveWord) + ' ' + text : text;
}

TypedValue typedValue(std::string_view id, std::string_view text,
                      const DemoGain_ValueText::Settings& settings) {
    const auto* const row = DemoGain_FindParameter(id);
    if (row == nullptr) {
        return {std::nullopt, std::string(id) + ": is no parameter of the effect"};
    }
    if (const auto normalized = normalizedFromTyped(*row, text, settings)) {
        return {normalized, {}};
    }
    return {std::nullopt,
            nameOf(*row) + ": expected " + expected(*row, settings) + ", found \"" + std::string(text) + '"'};
}

} // namespace varno
