/// Reads small text files of the user's.
#ifndef VARNO_SURROUND_SETTINGS_TEXTREADING_H
#define VARNO_SURROUND_SETTINGS_TEXTREADING_H

#include <cstddef>
#include <filesystem>
#include <string>

namespace varno {

/// The content of a file, or why it has none for us.
struct TextFile {
    std::string text;
    std::string refusal; ///< "cannot be read: No such file or directory"; empty for none.
};

/// No preset and no preferences are longer, in bytes.
inline constexpr std::size_t kMostTextBytes = 64 * 1024;

/// Reads a regular file of at most kMostTextBytes; nothing else is read, and nothing is waited for. [any]
TextFile readTextFile(const std::filesystem::path& path);

} // namespace varno

#endif
