/// The number that a text stands for, by std::from_chars, for systems without a C library that takes a
/// locale.
#ifndef VARNO_INTERFACES_AAX_NUMBERFROMCHARS_H
#define VARNO_INTERFACES_AAX_NUMBERFROMCHARS_H

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <system_error>

/// Whether a number that no floating-point type can hold is too large, instead of too small.
/// @param digits as strtod reads them, without sign and "0x" @param isHex whether they are hexadecimal [any]
inline bool AAX_IsAboveOne(std::string_view digits, bool isHex) {
    const std::string_view mantissa = digits.substr(0, digits.find_first_of(isHex ? "pP" : "eE"));
    const std::size_t point = std::min(mantissa.find('.'), mantissa.size());
    // The places that the first digit stands before the point, or behind it.
    const auto places =
        static_cast<std::int64_t>(point) - static_cast<std::int64_t>(mantissa.find_first_not_of("0."));

    std::string_view exponentText = digits.substr(mantissa.size());
    exponentText.remove_prefix(std::min<std::size_t>(exponentText.size(), 1));
    const bool isNegative = exponentText.starts_with('-');
    exponentText.remove_prefix(isNegative || exponentText.starts_with('+') ? 1 : 0);
    std::int64_t exponent = 0;
    const std::errc read =
        std::from_chars(exponentText.data(), exponentText.data() + exponentText.size(), exponent).ec;
    if (read == std::errc::result_out_of_range) {
        return !isNegative;
    }
    constexpr std::int64_t kBitsOfHexDigit = 4;
    return places * (isHex ? kBitsOfHexDigit : 1) + (isNegative ? -exponent : exponent) > 0;
}

/// The Number, float or double, nearest to `number`, which strtod reads in full in the locale of the language
/// C; infinity for what is too large, zero for what is too small. [any]
template<class Number>
Number AAX_NumberFromChars(std::string_view number) {
    const bool isNegative = number.starts_with('-');
    number.remove_prefix(isNegative || number.starts_with('+') ? 1 : 0);
    const bool isHex = number.starts_with("0x") || number.starts_with("0X");
    number.remove_prefix(isHex ? 2 : 0);
    Number value = 0;
    const std::errc read = std::from_chars(number.data(), number.data() + number.size(), value,
                                           isHex ? std::chars_format::hex : std::chars_format::general)
                               .ec;
    if (read == std::errc::result_out_of_range) {
        value = AAX_IsAboveOne(number, isHex) ? std::numeric_limits<Number>::infinity() : Number(0);
    }
    return isNegative ? -value : value;
}

#endif
