/// Small text files of the user's.
#ifndef VARNO_SURROUND_SETTINGS_TEXTFILE_H
#define VARNO_SURROUND_SETTINGS_TEXTFILE_H

#include "Files/AtomicFile.h"
#include "Surround/Settings/TextReading.h"

#include <filesystem>
#include <string>

namespace varno {

/// Writes a file whole; its folders are made where they are missing. @throws FileError [any]
void writeTextFile(const std::filesystem::path& path, const std::string& text, Overwrite overwrite);

} // namespace varno

#endif
