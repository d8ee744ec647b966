/// Of the parts of the effect: which are installed, where, and whether they belong to this program. Needs
/// nothing of X.
#ifndef VARNO_APPS_VARNO_DOCTOR_INSTALLEDPARTS_H
#define VARNO_APPS_VARNO_DOCTOR_INSTALLEDPARTS_H

#include "CommandLine/CommandLine.h"
#include "Doctor/Finding.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// Whether the effect processes: a tone through each of its variants. The only part that nothing works
/// without. [main]
Finding effectFinding(const CommandLine& line);

/// The instruction set that signals are processed with, as VARNO_SIMD names it. [main]
Finding instructionSetFinding();

/// The module that hosts and the editor's window load, and the factory presets. [main]
Finding moduleFinding(const CommandLine& line);
Finding presetsFinding(const CommandLine& line);

/// The bundle in one of the folders where LV2 hosts look. [main]
/// @param lv2Path what LV2_PATH holds, folders with a colon between them; empty where it is not set
/// @param home the user's folder; empty where it is not known
Finding lv2Finding(const std::string& lv2Path, const std::string& home);

/// The folders where LV2 hosts look, the first one first. [any]
std::vector<std::filesystem::path> lv2Folders(const std::string& lv2Path, const std::string& home);

/// The same for CLAP hosts, which look where CLAP_PATH says and in their usual folders too. [main]
Finding clapFinding(const std::string& clapPath, const std::string& home);
/// [any]
std::vector<std::filesystem::path> clapFolders(const std::string& clapPath, const std::string& home);

/// gnuplot, which draws for varno plot. [main] @param path what PATH holds, folders with a colon between them
Finding gnuplotFinding(const std::string& path);

} // namespace varno

#endif
