#ifndef VARNO_APPS_VARNO_SETTINGS_INSTALLEDFILES_H
#define VARNO_APPS_VARNO_SETTINGS_INSTALLEDFILES_H

#include <filesystem>
#include <optional>
#include <string>

namespace varno {

/// The folder of the running program. @throws WorkError where the system does not name it
std::filesystem::path programFolder();

/// A file or folder that comes with the program, at one of the places where this project's build or
/// installation puts it, relative to the program's own folder; nothing where it is at none of them.
std::optional<std::filesystem::path> installedFile(const std::filesystem::path& programFolder,
                                                   const std::string& name);

} // namespace varno

#endif
