#include "Python/ParameterNames.h"

#include "Surround/Settings/NumberText.h"
#include "Surround/Settings/TrueValue.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <string_view>

namespace varno {
namespace {

std::string lowerCase(std::string text) {
    std::ranges::transform(text, text.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

// The shortest text of the number without an exponent, which texts with a unit do not have.
std::string plainText(double value) {
    constexpr double kLeast = 1e-9; // far below what any unit resolves
    constexpr double kMost = 1e9;   // far above every range
    if (std::fabs(value) < kLeast) {
        return "0";
    }
    return std::fabs(value) < kMost ? textFromNumber(value, std::chars_format::fixed) : textFromNumber(value);
}

} // namespace

TrueKind trueKindOf(const SDemoGain_Parameter& row) {
    if (hasNumberedChoices(row)) {
        return TrueKind::kNumbered;
    }
    return hasNamedChoices(row) ? TrueKind::kSwitch : TrueKind::kNumber;
}

std::string normalizedName(const SDemoGain_Parameter& row) {
    const std::string_view id = row.mIdentifier;
    return id == cDemoGain_MasterBypassID ? "bypass" : lowerCase(std::string(id));
}

std::string trueName(const SDemoGain_Parameter& row) {
    const std::string name = normalizedName(row);
    switch (trueKindOf(row)) {
    case TrueKind::kNumbered:
        return name + "_curve";
    case TrueKind::kSwitch:
        return name + "_on";
    case TrueKind::kNumber:
        break;
    }
    const std::string_view symbol = row.mUnit.mSymbol;
    return name + '_' + (symbol == "%" ? "percent" : lowerCase(std::string(symbol)));
}

std::string trueValueText(const SDemoGain_Parameter& row, double value) {
    switch (trueKindOf(row)) {
    case TrueKind::kNumbered:
        return '#' + plainText(value);
    case TrueKind::kSwitch:
        return row.mUnit.mTexts[value > 0.0 ? 1 : 0];
    case TrueKind::kNumber:
        break;
    }
    return plainText(value) + ' ' + row.mUnit.mSymbol;
}

} // namespace varno
