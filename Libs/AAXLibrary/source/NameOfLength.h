/// Which of a parameter's names to show.
#ifndef VARNO_LIBS_AAXLIBRARY_SOURCE_NAMEOFLENGTH_H
#define VARNO_LIBS_AAXLIBRARY_SOURCE_NAMEOFLENGTH_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

/// `names` holds spellings separated by line feeds; only its first 255 characters count. Returns the longest
/// spelling of at most `length` characters, the first one of several; an empty one is a spelling too. If none
/// fits: the first `length` characters of `names`, nothing for a length below 1. [any]
inline std::string_view NameOfLength(std::string_view names, int32_t length) {
    constexpr std::size_t kMaxNames = 255;
    if (length < 0) {
        return {};
    }
    const auto limit = static_cast<std::size_t>(length);
    const std::string_view spellings = names.substr(0, kMaxNames);
    std::optional<std::string_view> best;
    for (std::size_t begin = 0; begin <= spellings.size();) {
        const std::size_t end = std::min(spellings.find('\n', begin), spellings.size());
        const std::string_view candidate = spellings.substr(begin, end - begin);
        if (candidate.size() <= limit && (!best || candidate.size() > best->size())) {
            best = candidate;
        }
        begin = end + 1;
    }
    return best.value_or(names.substr(0, limit));
}

#endif
