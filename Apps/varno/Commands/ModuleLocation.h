#ifndef VARNO_APPS_VARNO_COMMANDS_MODULELOCATION_H
#define VARNO_APPS_VARNO_COMMANDS_MODULELOCATION_H

#include <filesystem>
#include <optional>
#include <string>

namespace varno {

/// Name of the bundle's folder.
inline constexpr const char* kBundleName = "Varno-S.aaxplugin";

/// The bundle to use: the first of what the user asked for, what the environment names, and the bundle at one
/// of the places where this project's build and installation put it, seen from the program's own folder.
/// @param asked value of --module
/// @param fromEnvironment value of VARNO_MODULE; empty counts as none
/// @param programFolder folder of the running program
/// @throws WorkError where none was named and none is at those places
std::filesystem::path moduleLocation(const std::optional<std::string>& asked,
                                     const std::optional<std::string>& fromEnvironment,
                                     const std::filesystem::path& programFolder);

/// The folder of the running program. @throws WorkError where the system does not tell it
std::filesystem::path programFolder();

} // namespace varno

#endif
