#ifndef VARNO_APPS_VARNO_COMMANDS_SMALLFILE_H
#define VARNO_APPS_VARNO_COMMANDS_SMALLFILE_H

#include <cstddef>
#include <string>

namespace varno {

/// The content of a file that is known to be small, such as a preset.
/// @param mostBytes of the content; more is refused, so that a file of another kind is not read whole
/// @param expected what the file should be ("a preset"), for messages
/// @throws AudioFileError where the file cannot be read or is a folder; WorkError where it is empty or too
/// large
std::string readSmallFile(const std::string& path, std::size_t mostBytes, const std::string& expected);

} // namespace varno

#endif
