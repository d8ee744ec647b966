/// Which of a parameter's names to show.
#ifndef VARNO_LIBS_AAXLIBRARY_SOURCE_NAMEOFLENGTH_H
#define VARNO_LIBS_AAXLIBRARY_SOURCE_NAMEOFLENGTH_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// `names` holds spellings separated by line feeds; only its first 255 characters count. Returns the longest
/// spelling of at most `length` characters, the first one of several. If none fits: the first `length`
/// characters of `names`, nothing for a length below 1. An empty spelling does not count. [any]
inline std::string_view NameOfLength(std::string_view names, int32_t length) {
    constexpr std::size_t kMaxNames = 255;
    const auto limit = static_cast<std::size_t>(std::max(length, 0));
    std::string_view best;
    std::string_view rest = names.substr(0, kMaxNames);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view candidate = rest.substr(0, end);
        if (candidate.size() <= limit && candidate.size() > best.size()) {
            best = candidate;
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return best.empty() ? names.substr(0, limit) : best;
}

#endif
