#include "DemoGain_ValueText.h"

#include "AAX_NumberText.h"
#include "DemoGain_AlgFields.h"
#include "DemoGain_Coefficients.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>

namespace DemoGain_ValueText {
namespace {

constexpr double kMsPerSecond = 1000.0;
constexpr std::string_view kBlank = " \t";
constexpr std::string_view kDigits = "0123456789";

// Not a number counts as 0.
double Limited(double normalized) {
    return normalized > 0.0 ? std::min(normalized, 1.0) : 0.0;
}

double TimeMs(EDemoGain_Conversion conversion, double normalized, const Settings& settings) {
    const auto value = static_cast<float>(normalized);
    const SDemoGain_Times times = DemoGain_ComputeTimes(
        {.mAttack = value, .mRelease = value, .mUK = settings.mUK, .mRatio = settings.mRatio},
        settings.mSampleRateHz);
    return conversion == EDemoGain_Conversion::kAttackTime ? times.mAttackMs : times.mReleaseMs;
}

bool IsTime(EDemoGain_Conversion conversion) {
    return conversion == EDemoGain_Conversion::kAttackTime ||
           conversion == EDemoGain_Conversion::kReleaseTime;
}

// The lowest normalized value with this time: the first interval in which the time is reached, halved until
// it is as small as a double can represent.
double NormalizedTime(EDemoGain_Conversion conversion, double ms, const Settings& settings) {
    constexpr int kIntervals = static_cast<int>(kDemoGain_KnobSteps) - 1;
    constexpr int kHalvings = 50;
    const auto isReached = [&](double normalized) { return TimeMs(conversion, normalized, settings) >= ms; };
    int end = 0;
    while (end < kIntervals && !isReached(static_cast<double>(end) / kIntervals)) {
        ++end;
    }
    if (end == 0) {
        return 0.0;
    }
    double high = static_cast<double>(end) / kIntervals;
    double low = static_cast<double>(end - 1) / kIntervals;
    for (int i = 0; i < kHalvings; ++i) {
        const double middle = (low + high) / 2.0;
        (isReached(middle) ? high : low) = middle;
    }
    return high;
}

// As the routine chooses: a switch by its threshold, and a curve begins half a step below its value.
std::size_t ChoiceOf(const SDemoGain_Parameter& parameter, double normalized) {
    const std::size_t last = parameter.mUnit.mTexts.size() - 1;
    if (last == 1) {
        return normalized > double{kAlgSwitchThreshold} ? 1 : 0;
    }
    return static_cast<std::size_t>(std::floor(normalized * static_cast<double>(last) + 0.5));
}

std::string Fixed(double value, int decimals) {
    char digits[64];
    const auto written =
        std::to_chars(std::begin(digits), std::end(digits), value, std::chars_format::fixed, decimals);
    return {std::begin(digits), written.ptr};
}

std::string WriteLinear(const SDemoGain_Unit& unit, double value) {
    constexpr int kDecimals = 1;
    constexpr double kLeastShown = 0.05; // Everything below is 0.0, which has no sign.
    const bool isZero = std::fabs(value) < kLeastShown;
    const char* const sign = unit.mLow < 0.0 && value > 0.0 && !isZero ? "+" : "";
    return std::string(sign).append(Fixed(isZero ? 0.0 : value, kDecimals)).append(" ").append(unit.mSymbol);
}

// With three digits. The limits are where the shown number would have one more.
std::string WriteTime(double ms) {
    constexpr double kTwoDecimalsBelowMs = 9.995;
    constexpr double kOneDecimalBelowMs = 99.95;
    constexpr double kSecondsFromMs = 999.5;
    if (ms >= kSecondsFromMs) {
        return Fixed(ms / kMsPerSecond, 2) + " s";
    }
    const int decimals = ms < kTwoDecimalsBelowMs ? 2 : ms < kOneDecimalBelowMs ? 1 : 0;
    return Fixed(ms, decimals) + " ms";
}

char LowerCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool IsSame(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char left, char right) { return LowerCase(left) == LowerCase(right); });
}

std::string_view Trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlank), text.size()));
    text.remove_suffix(text.size() - std::min(text.find_last_not_of(kBlank) + 1, text.size()));
    return text;
}

// A number and what follows it.
struct Number {
    double mValue;
    std::string_view mUnit;
};

std::optional<Number> TakeNumber(std::string& text) {
    constexpr std::string_view kMinus = "−"; // As on the panel.
    if (text.starts_with(kMinus)) {
        text.replace(0, kMinus.size(), "-");
    }
    std::replace(text.begin(), text.end(), ',', '.');
    const std::size_t sign = text.starts_with('+') || text.starts_with('-') ? 1 : 0;
    const std::size_t whole = std::min(text.find_first_not_of(kDigits, sign), text.size());
    const bool hasPoint = text.substr(whole).starts_with('.');
    const std::size_t end =
        hasPoint ? std::min(text.find_first_not_of(kDigits, whole + 1), text.size()) : whole;
    const bool hasDigits = end - sign > (hasPoint ? 1U : 0U);
    const std::string_view number = std::string_view(text).substr(0, end);
    const double value = hasDigits ? AAX_NearestDouble(number) : 0.0;
    if (!hasDigits || !std::isfinite(value)) {
        return std::nullopt;
    }
    return Number{value, Trimmed(std::string_view(text).substr(end))};
}

std::optional<Quantity> ParseChoice(const SDemoGain_Unit& unit, std::string_view text) {
    const auto found = std::find_if(unit.mTexts.begin(), unit.mTexts.end(),
                                    [text](const char* choice) { return IsSame(choice, text); });
    if (found == unit.mTexts.end()) {
        return std::nullopt;
    }
    return Quantity{static_cast<double>(found - unit.mTexts.begin()), false};
}

std::optional<Quantity> ParseNumber(const SDemoGain_Unit& unit, std::string_view text) {
    std::string copy(text);
    const std::optional<Number> number = TakeNumber(copy);
    if (!number) {
        return std::nullopt;
    }
    if (number->mUnit.empty() || IsSame(number->mUnit, unit.mSymbol)) {
        return Quantity{number->mValue, !number->mUnit.empty()};
    }
    if (IsTime(unit.mConversion) && IsSame(number->mUnit, "s")) {
        return Quantity{number->mValue * kMsPerSecond, true};
    }
    return std::nullopt;
}

} // namespace

double InUnit(const SDemoGain_Parameter& parameter, double normalized, const Settings& settings) {
    const SDemoGain_Unit& unit = parameter.mUnit;
    const double value = Limited(normalized);
    switch (unit.mConversion) {
    case EDemoGain_Conversion::kAttackTime:
    case EDemoGain_Conversion::kReleaseTime:
        return TimeMs(unit.mConversion, value, settings);
    case EDemoGain_Conversion::kChoice:
        return static_cast<double>(ChoiceOf(parameter, value));
    case EDemoGain_Conversion::kLinear:
        break;
    }
    return unit.mLow + value * (unit.mHigh - unit.mLow);
}

double Normalized(const SDemoGain_Parameter& parameter, double inUnit, const Settings& settings) {
    const SDemoGain_Unit& unit = parameter.mUnit;
    switch (unit.mConversion) {
    case EDemoGain_Conversion::kAttackTime:
    case EDemoGain_Conversion::kReleaseTime:
        return NormalizedTime(unit.mConversion, inUnit, settings);
    case EDemoGain_Conversion::kChoice:
        return Limited(inUnit / static_cast<double>(unit.mTexts.size() - 1));
    case EDemoGain_Conversion::kLinear:
        break;
    }
    return Limited((inUnit - unit.mLow) / (unit.mHigh - unit.mLow));
}

std::string Write(const SDemoGain_Parameter& parameter, double normalized, const Settings& settings) {
    const SDemoGain_Unit& unit = parameter.mUnit;
    const double value = InUnit(parameter, normalized, settings);
    return unit.mConversion == EDemoGain_Conversion::kChoice ? unit.mTexts[static_cast<std::size_t>(value)]
                                                             : WriteInUnit(parameter, value);
}

std::string WriteInUnit(const SDemoGain_Parameter& parameter, double inUnit) {
    return IsTime(parameter.mUnit.mConversion) ? WriteTime(inUnit) : WriteLinear(parameter.mUnit, inUnit);
}

std::optional<Quantity> ParseInUnit(const SDemoGain_Parameter& parameter, std::string_view text) {
    const SDemoGain_Unit& unit = parameter.mUnit;
    return unit.mConversion == EDemoGain_Conversion::kChoice ? ParseChoice(unit, Trimmed(text))
                                                             : ParseNumber(unit, Trimmed(text));
}

std::optional<double> Parse(const SDemoGain_Parameter& parameter, std::string_view text,
                            const Settings& settings) {
    const std::optional<Quantity> quantity = ParseInUnit(parameter, text);
    return quantity ? std::optional(Normalized(parameter, quantity->mValue, settings)) : std::nullopt;
}

bool DependsOnOthers(const SDemoGain_Parameter& parameter) {
    return IsTime(parameter.mUnit.mConversion);
}

Range RangeInUnit(const SDemoGain_Parameter& parameter, const Settings& settings) {
    const double first = InUnit(parameter, 0.0, settings);
    Range range{first, first};
    const int last = static_cast<int>(parameter.mSteps) - 1;
    for (int step = 1; step <= last; ++step) {
        const double value = InUnit(parameter, static_cast<double>(step) / last, settings);
        range = {std::min(range.mLow, value), std::max(range.mHigh, value)};
    }
    return range;
}

std::string WriteStatus(const char* text, const std::optional<SDemoGain_StatusScale>& scale, float value) {
    constexpr int kDecimals = 2;
    return scale ? std::string(text) + " " + Fixed(value * scale->mFactor + scale->mOffset, kDecimals) : text;
}

} // namespace DemoGain_ValueText
