/// A look at a binary before it is loaded.
#ifndef VARNO_HOST_BINARYCHECK_H
#define VARNO_HOST_BINARYCHECK_H

#include <filesystem>
#include <optional>
#include <string>

namespace varno {

/// What makes a binary unfit to be loaded: no binary of this system and machine at all, or one that is cut
/// short. The loader maps a file as its headers say, and a program that touches what lies beyond the file's
/// end is killed, so this has to be found before. Nothing when no such defect is found; other damage is left
/// to the loader. [any]
std::optional<std::string> binaryDefect(const std::filesystem::path& file);

} // namespace varno

#endif
