#ifndef VARNO_SURROUND_SETTINGS_USERFOLDERS_H
#define VARNO_SURROUND_SETTINGS_USERFOLDERS_H

#include <filesystem>

namespace varno {

/// The folder of the user's presets: varno-s/presets in $XDG_DATA_HOME, else in ~/.local/share. A variable
/// that is empty or no absolute path counts as not set. Empty where HOME is not set either. Need not exist.
/// On Windows varno-s/presets in %APPDATA%. [main]
std::filesystem::path userPresetFolder();

/// The file of the user's preferences: varno-s/window.txt in $XDG_CONFIG_HOME, else in ~/.config; else as
/// above. On Windows varno-s/window.txt in %APPDATA%. [main]
std::filesystem::path userPreferencesFile();

} // namespace varno

#endif
