/// Small text files of the user's.
#ifndef VARNO_SURROUND_SETTINGS_TEXTFILE_H
#define VARNO_SURROUND_SETTINGS_TEXTFILE_H

#include "Files/AtomicFile.h"

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

/// Writes a file whole; its folders are made where they are missing. @throws FileError [any]
void writeTextFile(const std::filesystem::path& path, const std::string& text, Overwrite overwrite);

} // namespace varno

#endif
