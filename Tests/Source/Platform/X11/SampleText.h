/// Texts for the clipboard.
#ifndef VARNO_TESTS_SOURCE_PLATFORM_X11_SAMPLETEXT_H
#define VARNO_TESTS_SOURCE_PLATFORM_X11_SAMPLETEXT_H

#include <cstddef>
#include <string>

namespace varno::test {

inline constexpr std::size_t kMebibyte = std::size_t{1024} * 1024;

/// No part of it is like another of the same length.
inline std::string longText(std::size_t bytes) {
    std::string text;
    text.reserve(bytes + 16);
    for (std::size_t number = 0; text.size() < bytes; ++number) {
        text.append(std::to_string(number)).append("\xc3\xa4\n");
    }
    text.resize(bytes);
    // Not half a character at the end.
    text.back() = '.';
    text[bytes - 2] = '.';
    return text;
}

} // namespace varno::test

#endif
