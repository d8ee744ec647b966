#ifndef VARNO_APPS_VARNO_COMMANDS_SETTINGSKEEPING_H
#define VARNO_APPS_VARNO_COMMANDS_SETTINGSKEEPING_H

#include "SettingsKeeper.h"
#include "WindowOptions.h"

#include <functional>
#include <string>

namespace varno {

/// Names the file that --save-state, else --state says; the one that was loaded may be saved over.
/// @throws AudioFileError where it could not be written
void chooseSettingsFile(SettingsKeeper& settings, const WindowOptions& options);

/// Saves, and tells on standard error where to, or why not: the settings are still there then.
void saveAndTell(SettingsKeeper& settings);

/// Runs a session and then warns of settings that are not saved, with the command line that brings them back,
/// also where the session ends by an exception. @param command that runs it: "edit"
void runAndTellUnsaved(const SettingsKeeper& settings, const std::string& command,
                       const std::function<void()>& run);

} // namespace varno

#endif
