#include "Surround/Settings/Characters.h"

#include <algorithm>
#include <bit>
#include <iterator>

namespace varno {
namespace {

// UTF-8: a first byte below kFirstOfSeveral is a character; that of several bytes has as many leading ones as
// there are bytes, and each of the others has two fixed bits and six of the character.
constexpr unsigned kFirstOfSeveral = 0x80;
constexpr unsigned kFixedBits = 0xC0;
constexpr unsigned kContinuation = 0x80;
constexpr unsigned kCarriedBits = 6;
constexpr unsigned kCarried = 0x3F;
constexpr unsigned kAllOfFirst = 0x7F;
constexpr std::uint32_t kLeastCode[] = {0, 0, 0x80, 0x800, 0x10000}; // by the number of bytes
constexpr std::uint32_t kLastCode = 0x10FFFF;

constexpr std::string_view kReplacement = "\xEF\xBF\xBD"; // U+FFFD

struct CodeRange {
    std::uint32_t first;
    std::uint32_t last;

    constexpr bool holds(std::uint32_t code) const { return code >= first && code <= last; }
};

constexpr CodeRange kSurrogates = {0xD800, 0xDFFF};
constexpr CodeRange kUnsafe[] = {{0x00, 0x1F},     {0x7F, 0x9F},     {0x61C, 0x61C},
                                 {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}};

} // namespace

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & kFixedBits) == kContinuation;
}

Character firstCharacter(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < kFirstOfSeveral) {
        return {first, 1};
    }
    const auto bytes = static_cast<std::size_t>(std::countl_one(first));
    if (bytes < 2 || bytes >= std::size(kLeastCode) || bytes > text.size()) {
        return {};
    }
    std::uint32_t code = first & (kAllOfFirst >> bytes);
    for (const char byte : text.substr(1, bytes - 1)) {
        if (!isContinuation(byte)) {
            return {};
        }
        code = (code << kCarriedBits) | (static_cast<unsigned char>(byte) & kCarried);
    }
    if (code < kLeastCode[bytes] || code > kLastCode || kSurrogates.holds(code)) {
        return {};
    }
    return {code, bytes};
}

bool isUnsafe(std::uint32_t code) {
    return std::ranges::any_of(kUnsafe, [code](const CodeRange& range) { return range.holds(code); });
}

std::string safeText(std::string_view text) {
    std::string safe;
    while (!text.empty()) {
        const auto [code, bytes] = firstCharacter(text);
        safe += bytes == 0 || isUnsafe(code) ? kReplacement : text.substr(0, bytes);
        text.remove_prefix(std::max<std::size_t>(bytes, 1));
    }
    return safe;
}

} // namespace varno
