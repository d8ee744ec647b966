/// The settings as text, for the clipboard and for preset files: five lines of 7-bit ASCII, a product word
/// with the format's version and thirteen labelled normalized values. Pure functions over the data model that
/// need nothing but Interfaces and the parameter table, for every layer that may include this.
#ifndef VARNO_SOURCE_DEMOGAIN_PRESETTEXT_H
#define VARNO_SOURCE_DEMOGAIN_PRESETTEXT_H

#include "AAX_IACFEffectParameters.h"
#include "AAX_NumberText.h"
#include "DemoGain_ParameterTable.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace DemoGain_PresetText {

/// One value of the text.
struct Item {
    const char* mLabel;       ///< For people; a reader skips it unread.
    const char* mParameterID; ///< The parameter whose normalized value follows the label.
    bool mEndsLine;           ///< The last one of its line.
};

/// The values in the order of the text, by which alone a reader knows them: those of the parameter table.
inline constexpr auto kItems = [] {
    std::array<Item, kDemoGain_PresetOrder.size()> items{};
    std::transform(
        kDemoGain_PresetOrder.begin(), kDemoGain_PresetOrder.end(), items.begin(),
        [](const SDemoGain_Parameter* parameter) {
            return Item{parameter->mPresetLabel, parameter->mIdentifier, parameter->mEndsPresetLine};
        });
    return items;
}();

/// First line of the text: product word and format version.
inline constexpr std::string_view kHeader = "Varno-S 030001";
/// The format's version. A text of a later one is read as well.
inline constexpr float kVersion = 30001.0F;
/// Digits after the point of a written value.
inline constexpr int kDecimals = 10;

/// Normalized values in the order of kItems, as read: not limited to 0..1, not even finite.
using Values = std::array<float, std::size(kItems)>;

/// The current settings as text, without a line feed at the end. A value that cannot be read is written as
/// 0. [main]
inline std::string Write(const AAX_IACFEffectParameters& parameters);
/// The same of values in the order of kItems, which are finite. [any]
inline std::string Write(const Values& values);

/// The values of a text, or nothing when it is no preset. A text is one when a scan with the C format
/// "%s %f" and thirteen times " %*s %f" assigns every item, and the version is kVersion or later. Labels and
/// what follows the last value do not matter, line feeds count as blanks, a zero byte ends the text. The
/// C locale's rules hold in every locale. Takes time proportional to the length. [any]
inline std::optional<Values> Parse(std::string_view text);

/// Requests every value in the order of kItems. The parameters limit them to 0..1. Returns AAX_SUCCESS, or
/// the first failure, after which the others are requested nevertheless. [main]
inline AAX_Result Apply(const Values& values, AAX_IACFEffectParameters& parameters);

} // namespace DemoGain_PresetText

// Implementation.

namespace DemoGain_PresetText {
namespace Detail {

inline constexpr std::string_view kBlanks = " \t\n\v\f\r";
inline constexpr std::string_view kDigits = "0123456789";
inline constexpr std::string_view kHexDigits = "0123456789abcdefABCDEF";

inline void SkipBlanks(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(kBlanks), rest.size()));
}

/// Takes characters of `accepted` off the front of `rest`.
inline std::string_view TakeRun(std::string_view& rest, std::string_view accepted) {
    const std::string_view run = rest.substr(0, rest.find_first_not_of(accepted));
    rest.remove_prefix(run.size());
    return run;
}

inline bool IsNext(std::string_view rest, std::string_view accepted) {
    return !rest.empty() && accepted.find(rest.front()) != std::string_view::npos;
}

/// Takes one character off the front of `rest` if it is one of `accepted`.
inline bool TakeOne(std::string_view& rest, std::string_view accepted) {
    const bool isFound = IsNext(rest, accepted);
    rest.remove_prefix(isFound ? 1 : 0);
    return isFound;
}

/// Takes `lowerCase` off the front of `rest`, in capitals or not.
inline bool TakeLetters(std::string_view& rest, std::string_view lowerCase) {
    constexpr char kCaseBit = 'a' ^ 'A';
    return std::all_of(lowerCase.begin(), lowerCase.end(), [&rest](char letter) {
        const char both[] = {letter, static_cast<char>(letter ^ kCaseBit)};
        return TakeOne(rest, std::string_view(both, std::size(both)));
    });
}

/// "%*s": a run of anything but blanks.
inline bool SkipWord(std::string_view& rest) {
    SkipBlanks(rest);
    const std::size_t length = std::min(rest.find_first_of(kBlanks), rest.size());
    rest.remove_prefix(length);
    return length > 0;
}

/// Takes the longest text that could be a number, without its sign, off the front of `rest`; nothing where it
/// is none. An exponent without digits belongs to it and counts as none, and "0x." is 0, as in the C library.
inline std::optional<std::string_view> TakeNumber(std::string_view& rest) {
    const std::string_view text = rest;
    const bool isHex = rest.starts_with("0x") || rest.starts_with("0X");
    rest.remove_prefix(isHex ? 2 : 0);
    const std::string_view digits = isHex ? kHexDigits : kDigits;
    bool hasDigits = !TakeRun(rest, digits).empty();
    const bool hasPoint = TakeOne(rest, ".");
    hasDigits = (hasPoint && !TakeRun(rest, digits).empty()) || hasDigits;
    if (!hasDigits && !(isHex && hasPoint)) {
        return std::nullopt;
    }
    if (hasDigits && TakeOne(rest, isHex ? "pP" : "eE")) {
        TakeOne(rest, "+-");
        TakeRun(rest, kDigits);
    }
    return text.substr(0, text.size() - rest.size());
}

/// Infinity or not-a-number by name.
inline std::optional<float> TakeNamed(std::string_view& rest) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
    if (IsNext(rest, "nN")) {
        return TakeLetters(rest, "nan") ? std::optional(kNaN) : std::nullopt;
    }
    const bool isNamed = TakeLetters(rest, "inf") && (!IsNext(rest, "iI") || TakeLetters(rest, "inity"));
    return isNamed ? std::optional(kInfinity) : std::nullopt;
}

/// "%f": a decimal or hexadecimal number, or a name of infinity or not-a-number.
inline std::optional<float> TakeFloat(std::string_view& rest) {
    SkipBlanks(rest);
    const bool isNegative = !TakeOne(rest, "+") && TakeOne(rest, "-");
    std::optional<float> value;
    if (IsNext(rest, "iInN")) {
        value = TakeNamed(rest);
    } else if (const std::optional<std::string_view> number = TakeNumber(rest)) {
        value = AAX_NearestFloat(*number);
    }
    return value && isNegative ? -*value : value;
}

/// " %.10f".
inline void AppendValue(std::string& text, double value) {
    // Sign, every digit before the point, the point.
    constexpr int kLongest = 1 + std::numeric_limits<double>::max_exponent10 + 1 + 1 + kDecimals;
    std::array<char, kLongest> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                       std::chars_format::fixed, kDecimals);
    text.append(" ").append(digits.data(), written.ptr);
}

/// The text of the values that `read` returns for the place of an item.
template<class Read>
std::string WriteWith(Read read) {
    std::string text(kHeader);
    bool startsLine = true;
    for (std::size_t i = 0; i < kItems.size(); ++i) {
        text.append(startsLine ? "\n" : " ").append(kItems[i].mLabel);
        AppendValue(text, read(i));
        startsLine = kItems[i].mEndsLine;
    }
    return text;
}

} // namespace Detail

inline std::string Write(const AAX_IACFEffectParameters& parameters) {
    return Detail::WriteWith([&parameters](std::size_t i) {
        double value = 0.0;
        parameters.GetParameterNormalizedValue(kItems[i].mParameterID, &value);
        return value;
    });
}

inline std::string Write(const Values& values) {
    return Detail::WriteWith([&values](std::size_t i) { return double{values[i]}; });
}

inline std::optional<Values> Parse(std::string_view text) {
    std::string_view rest = text.substr(0, text.find('\0'));
    if (!Detail::SkipWord(rest)) {
        return std::nullopt;
    }
    const std::optional<float> version = Detail::TakeFloat(rest);
    if (!version || !(*version >= kVersion)) {
        return std::nullopt;
    }
    Values values{};
    for (float& value : values) {
        const std::optional<float> read = Detail::SkipWord(rest) ? Detail::TakeFloat(rest) : std::nullopt;
        if (!read) {
            return std::nullopt;
        }
        value = *read;
    }
    return values;
}

inline AAX_Result Apply(const Values& values, AAX_IACFEffectParameters& parameters) {
    AAX_Result result = AAX_SUCCESS;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const AAX_Result set = parameters.SetParameterNormalizedValue(kItems[i].mParameterID, values[i]);
        result = result == AAX_SUCCESS ? set : result;
    }
    return result;
}

} // namespace DemoGain_PresetText

#endif
