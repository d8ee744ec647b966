#include "CommandLine/VisibleText.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <iterator>

namespace varno {
namespace {

// Of a line that is cut: messages end with what is wrong.
constexpr std::size_t kBytesAtEnd = 300;
constexpr std::string_view kLeftOut = " [...] ";

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

struct CodeRange {
    std::uint32_t first;
    std::uint32_t last;

    constexpr bool holds(std::uint32_t code) const { return code >= first && code <= last; }
};

constexpr CodeRange kSurrogates = {0xD800, 0xDFFF};

// Control characters, separators of lines, and marks that reorder what is around them.
constexpr CodeRange kUnsafe[] = {{0x00, 0x1F},     {0x7F, 0x9F},     {0x61C, 0x61C},
                                 {0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}};

struct Character {
    std::uint32_t code = 0;
    std::size_t bytes = 0; // 0: the text does not start with a character of UTF-8
};

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & kFixedBits) == kContinuation;
}

// The first character of a text that is not empty.
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

std::string escaped(const char* format, unsigned number) {
    char text[16];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

// At most `bytes`, and no part of a character at the end.
std::string_view start(std::string_view text, std::size_t bytes) {
    while (bytes > 0 && isContinuation(text[bytes])) {
        --bytes;
    }
    return text.substr(0, bytes);
}

std::string_view end(std::string_view text, std::size_t bytes) {
    std::string_view rest = text.substr(text.size() - bytes);
    while (!rest.empty() && isContinuation(rest.front())) {
        rest.remove_prefix(1);
    }
    return rest;
}

} // namespace

std::string visibleText(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const auto [code, bytes] = firstCharacter(text);
        if (bytes == 0) {
            result += escaped("\\x%02x", static_cast<unsigned char>(text.front()));
        } else if (isUnsafe(code) && code != '\n' && code != '\t') {
            result += escaped("\\u%04x", code);
        } else {
            result += text.substr(0, bytes);
        }
        text.remove_prefix(std::max<std::size_t>(bytes, 1));
    }
    return result;
}

std::string visibleLine(std::string_view text) {
    std::string shortened(text);
    if (text.size() > kMostLineBytes) {
        shortened = start(text, kMostLineBytes - kBytesAtEnd);
        shortened += kLeftOut;
        shortened += end(text, kBytesAtEnd);
    }
    std::string line;
    for (const char c : visibleText(shortened)) {
        if (c == '\n') {
            line += "\\n";
        } else if (c == '\t') {
            line += "\\t";
        } else {
            line += c;
        }
    }
    return line;
}

} // namespace varno
