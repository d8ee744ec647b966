#include "Window/Scale.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
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

// Reads the binary form of XSETTINGS from its start to its end; what is not all there is not read.
class SettingsReader {
public:
    explicit SettingsReader(std::string_view bytes)
        : mBytes(bytes) {
        mIsBigEndian = number(1) == 1;
        skip(kHeaderRest);
    }

    bool isGood() const { return mIsGood; }

    std::uint32_t number(std::size_t size) {
        std::uint32_t value = 0;
        const std::string_view part = text(size);
        for (std::size_t i = 0; i < part.size(); ++i) {
            const auto byte = static_cast<unsigned char>(part[mIsBigEndian ? i : part.size() - 1 - i]);
            value = value << kByteBits | byte;
        }
        return value;
    }

    std::string_view text(std::size_t size) {
        mIsGood = mIsGood && size <= mBytes.size();
        const auto part = mIsGood ? mBytes.substr(0, size) : std::string_view();
        mBytes.remove_prefix(part.size());
        return part;
    }

    void skip(std::size_t size) { text(size); }

private:
    static constexpr int kByteBits = 8;
    static constexpr std::size_t kHeaderRest = 7; // padding and the number of the change

    std::string_view mBytes;
    bool mIsBigEndian = false;
    bool mIsGood = true;
};

constexpr std::size_t padded(std::size_t size) {
    constexpr std::size_t kUnit = 4;
    return (size + kUnit - 1) / kUnit * kUnit;
}

// The whole number of a setting.
std::optional<std::int32_t> integerSetting(std::string_view settings, std::string_view name) {
    enum Type : std::uint8_t { kInteger = 0, kText = 1, kColour = 2 };
    constexpr std::size_t kColourBytes = 8;
    constexpr std::size_t kWord = 4;
    SettingsReader reader(settings);
    for (auto count = reader.number(kWord); count > 0 && reader.isGood(); --count) {
        const auto type = reader.number(1);
        reader.skip(1);
        const auto length = reader.number(2);
        const auto found = reader.text(padded(length)).substr(0, length);
        reader.skip(kWord); // the number of its last change
        if (type == kInteger) {
            const auto value = static_cast<std::int32_t>(reader.number(kWord));
            if (found == name && reader.isGood()) {
                return value;
            }
        } else if (type == kText) {
            reader.skip(padded(reader.number(kWord)));
        } else if (type == kColour) {
            reader.skip(kColourBytes);
        } else {
            return {}; // of a length that is not known
        }
    }
    return {};
}

std::optional<double> scaleOfSettings(std::string_view settings) {
    constexpr double kPartsOfADot = 1024.0;
    const auto parts = integerSetting(settings, "Xft/DPI");
    const double scale = parts.value_or(0) / kPartsOfADot / kPlainDotsPerInch;
    return isScale(scale) ? std::optional(scale) : std::nullopt;
}

} // namespace

double desktopScale(std::optional<std::string_view> gdkScale, std::string_view resources,
                    std::string_view settings) {
    std::optional<double> scale;
    if (gdkScale) {
        scale = scaleFrom(*gdkScale, 1.0);
    }
    if (!scale) {
        scale = scaleOfSettings(settings);
    }
    if (const auto dotsPerInch = resource(resources, kDotsPerInch); !scale && dotsPerInch) {
        scale = scaleFrom(*dotsPerInch, kPlainDotsPerInch);
    }
    return scale.value_or(1.0);
}

} // namespace varno
