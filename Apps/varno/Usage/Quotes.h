#pragma once

#include <string>
#include <string_view>

namespace varno {

/// What a user wrote, as messages show it: "text".
inline std::string inQuotes(std::string_view text) {
    return '"' + std::string(text) + '"';
}

} // namespace varno
