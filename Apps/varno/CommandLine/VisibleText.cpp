#include "CommandLine/VisibleText.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>

namespace varno {
namespace {

// Of a line that is cut: messages end with what is wrong.
constexpr std::size_t kBytesAtEnd = 300;
constexpr std::string_view kLeftOut = " [...] ";

struct Character {
    std::uint32_t code = 0;
    std::size_t bytes = 0; // 0: the text does not start with a character of UTF-8
};

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// The first character of a text that is not empty.
Character firstCharacter(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x80U) {
        return {first, 1};
    }
    // The leading ones of the first byte count the bytes.
    const auto bytes = static_cast<std::size_t>(std::countl_one(first));
    if (bytes < 2 || bytes > 4 || bytes > text.size()) {
        return {};
    }
    std::uint32_t code = first & (0x7FU >> bytes);
    for (const char byte : text.substr(1, bytes - 1)) {
        if (!isContinuation(byte)) {
            return {};
        }
        code = (code << 6U) | (static_cast<unsigned char>(byte) & 0x3FU);
    }
    constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000}; // by the number of bytes
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < kLeast[bytes] || code > 0x10FFFF || isSurrogate) {
        return {};
    }
    return {code, bytes};
}

bool isWithin(std::uint32_t code, std::uint32_t first, std::uint32_t last) {
    return code >= first && code <= last;
}

// Control characters, separators of lines, and marks that reorder what is around them.
bool isUnsafe(std::uint32_t code) {
    return code < 0x20 || isWithin(code, 0x7F, 0x9F) || code == 0x61C || code == 0x200E || code == 0x200F ||
           isWithin(code, 0x2028, 0x202E) || isWithin(code, 0x2066, 0x2069);
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
