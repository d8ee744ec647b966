#include "Window/Scale.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace varno {

namespace {

constexpr double kPlainDotsPerInch = 96.0;
constexpr std::string_view kDotsPerInch = "Xft.dpi:";
constexpr std::string_view kBlanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::optional<double> scaleFrom(std::string_view text, double plain) {
    text = trimmed(text);
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isNumber = error == std::errc() && end == text.data() + text.size();
    return isNumber && isScale(number / plain) ? std::optional(number / plain) : std::nullopt;
}

// The value of a resource; of several with the same name the last counts.
std::optional<std::string_view> resource(std::string_view resources, std::string_view name) {
    std::optional<std::string_view> value;
    while (!resources.empty()) {
        const auto end = std::min(resources.find('\n'), resources.size());
        const auto line = trimmed(resources.substr(0, end));
        if (line.starts_with(name)) {
            value = line.substr(name.size());
        }
        resources.remove_prefix(std::min(end + 1, resources.size()));
    }
    return value;
}

} // namespace

double desktopScale(std::optional<std::string_view> gdkScale, std::string_view resources) {
    std::optional<double> scale;
    if (gdkScale) {
        scale = scaleFrom(*gdkScale, 1.0);
    }
    if (const auto dotsPerInch = resource(resources, kDotsPerInch); !scale && dotsPerInch) {
        scale = scaleFrom(*dotsPerInch, kPlainDotsPerInch);
    }
    return scale.value_or(1.0);
}

} // namespace varno
