#ifndef VARNO_APPS_VARNO_USAGE_QUOTES_H
#define VARNO_APPS_VARNO_USAGE_QUOTES_H

#include <string>
#include <string_view>

namespace varno {

/// What a user wrote, as messages show it: "text".
inline std::string inQuotes(std::string_view text) {
    return '"' + std::string(text) + '"';
}

} // namespace varno

#endif
