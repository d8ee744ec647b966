#ifndef VARNO_APPS_VARNO_SETTINGS_MODULELOADING_H
#define VARNO_APPS_VARNO_SETTINGS_MODULELOADING_H

#include "AudioFile/Reader.h"
#include "CommandLine/CommandLine.h"
#include "Host/Module.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace varno {

/// Environment variable with the module to use where --module is not given.
inline constexpr const char* kModuleVariable = "VARNO_MODULE";

inline constexpr OptionEntry kModuleOption = {
    .name = "--module",
    .value = "BUNDLE",
    .kind = ValueKind::kDirectory,
    .group = "General",
    .help = "Use the effect of this bundle (Varno-S.aaxplugin). Default: what "
            "VARNO_MODULE names, else the effect that came with the program."};

/// Of the commands that read an audio file.
inline constexpr OptionEntry kTruncatedOption = {
    .name = "--truncated",
    .group = "Input",
    .help = "Accept a file that is shorter than its header states, with a warning. It ends where its last "
            "whole frame does."};

/// Name of the bundle's folder.
inline constexpr const char* kBundleName = "Varno-S.aaxplugin";

/// The bundle to use: that of --module, else that of the environment, else one at a place where this
/// project's build or installation puts it, relative to the program's own folder.
/// @param asked value of --module
/// @param fromEnvironment value of VARNO_MODULE; empty counts as none
/// @param programFolder folder of the running program
/// @throws WorkError where none was named and none is at those places
std::filesystem::path moduleLocation(const std::optional<std::string>& asked,
                                     const std::optional<std::string>& fromEnvironment,
                                     const std::filesystem::path& programFolder);

/// The bundle that the user has named, by --module or the environment; nothing where none is named.
std::optional<std::filesystem::path> namedModule(const CommandLine& line);

/// The bundle for a command line: by --module, the environment or by default. Whether a named one exists is
/// not checked. @throws WorkError where none is named and none came with the program
std::filesystem::path moduleBundle(const CommandLine& line);

/// Loads the module for a command line: by --module, the environment or by default.
/// @throws WorkError where it is missing or damaged
std::shared_ptr<Module> loadModule(const CommandLine& line);

/// The effect for a command without the editor: the module that --module or the environment names, else the
/// effect that the program is linked with, which needs nothing of X. Both give the same sound to the bit.
/// @throws WorkError where a named module is missing or damaged
std::shared_ptr<Module> loadEffect(const CommandLine& line);

/// Ends the use of a module and warns on standard error if it has broken a contract with its host.
/// @param module the last one that holds it
void unloadModule(std::shared_ptr<Module> module);

/// Checks that the module's effect has a variant for a file's channels and accepts its sample rate. [any]
/// @param otherwise what the message for too many channels ends with @throws WorkError where it does not
void requireVariantFor(const Module& module, const AudioReader& reader, const std::string& otherwise = {});

/// Checks that alone which requireVariantFor() checks of the sample rate. @throws WorkError [any]
void requireRateFor(const Module& module, const AudioReader& reader);

} // namespace varno

#endif
