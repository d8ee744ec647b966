#ifndef VARNO_APPS_VARNO_COMMANDS_WINDOWOPTIONS_H
#define VARNO_APPS_VARNO_COMMANDS_WINDOWOPTIONS_H

#include "AudioFile/AtomicFile.h"
#include "CommandLine.h"

#include <optional>
#include <string>

namespace varno {

/// How an editor's window is shown, and where the settings go that are made in it.
struct WindowOptions {
    std::string command;         // that shows it: "edit"
    std::string subject;         // what the effect hears, for the title; empty for nothing worth a name
    std::optional<double> scale; // nothing: the desktop's
    std::optional<std::string> state;
    std::optional<std::string> saveState; // paths
    std::optional<std::string> screenshot;
    double afterS = 0.5; // until the screenshot
    Overwrite overwrite = Overwrite::kRefuse;
};

/// Those of any command with a window: all but subject and screenshot. @param command its name
/// @throws UsageError where a value is out of range
WindowOptions windowOptions(const CommandLine& line, const std::string& command);

} // namespace varno

#endif
