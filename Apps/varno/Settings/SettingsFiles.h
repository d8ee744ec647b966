#ifndef VARNO_APPS_VARNO_SETTINGS_SETTINGSFILES_H
#define VARNO_APPS_VARNO_SETTINGS_SETTINGSFILES_H

#include "DemoGain_PresetText.h"
#include "Host/Instance.h"

#include <string>

namespace varno {

/// The content of a preset file.
struct PresetFile {
    std::string text;    ///< The whole file.
    std::string purpose; ///< The line after the settings, which states what a factory preset is for.
    DemoGain_PresetText::Values values{};
};

/// @throws FileError where the file cannot be read; WorkError where it holds no preset
PresetFile readPresetFile(const std::string& path);

/// The record of a state file.
/// @throws FileError where the file cannot be read; WorkError where it holds no state
StoredChunk readState(const std::string& path);

/// The settings of an instance as the text of a preset file.
std::string presetText(Instance& instance);

/// The settings of an instance as the bytes of a state file.
std::string stateBytes(Instance& instance);

} // namespace varno

#endif
