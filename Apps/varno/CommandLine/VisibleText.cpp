#include "CommandLine/VisibleText.h"

#include "Surround/Settings/Characters.h"

#include <algorithm>
#include <cstdio>

namespace varno {
namespace {

// Of a line that is cut: messages end with what is wrong.
constexpr std::size_t kBytesAtEnd = 300;
constexpr std::string_view kLeftOut = " [...] ";

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
