#pragma once

#include <charconv>
#include <optional>
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

} // namespace varno
