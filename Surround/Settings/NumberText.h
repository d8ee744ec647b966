/// Numbers as text, the same in every locale.
#ifndef VARNO_SURROUND_SETTINGS_NUMBERTEXT_H
#define VARNO_SURROUND_SETTINGS_NUMBERTEXT_H

#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace varno {

/// The number that the whole text is, with a decimal point in every locale; nothing where it is none or does
/// not fit. A double may be infinite or not a number ("inf", "nan").
template<class Number>
std::optional<Number> numberFromText(std::string_view text) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) {
        return std::nullopt;
    }
    return value;
}

/// A number as text, with a decimal point in every locale: without a format the shortest text that is the
/// very same number, else as std::to_chars writes it.
template<class... Format>
std::string textFromNumber(Format... numberAndFormat) {
    constexpr std::size_t kLongest = 64; // times in microseconds and shortest doubles have fewer
    std::array<char, kLongest> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), numberAndFormat...);
    return {text.data(), result.ptr};
}

/// A number with so many decimals and a decimal point in every locale: "-12.3".
inline std::string decimalText(double value, int decimals) {
    return textFromNumber(value, std::chars_format::fixed, decimals);
}

/// Level in dB of a magnitude, full scale 1; -infinity for 0.
inline double decibels(double magnitude) {
    constexpr double kDecibelsPerDecade = 20.0;
    return kDecibelsPerDecade * std::log10(magnitude);
}

} // namespace varno

#endif
