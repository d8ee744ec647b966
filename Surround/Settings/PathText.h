/// Paths as hosts and people have them, in UTF-8 on every system.
#ifndef VARNO_SURROUND_SETTINGS_PATHTEXT_H
#define VARNO_SURROUND_SETTINGS_PATHTEXT_H

#include <filesystem>
#include <string>
#include <string_view>

namespace varno {

// A path's own conversions take the characters of Windows for those of its code page. Elsewhere paths are
// bytes, which these leave as they are.

/// The path that a text in UTF-8 names. [any]
inline std::filesystem::path pathFromText(std::string_view text) {
    return std::u8string(text.begin(), text.end());
}

/// A path as text in UTF-8. [any]
inline std::string textOfPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

} // namespace varno

#endif
