#ifndef VARNO_APPS_VARNO_COMMANDS_PRESETFILE_H
#define VARNO_APPS_VARNO_COMMANDS_PRESETFILE_H

#include "DemoGain_PresetText.h"

#include <string>

namespace varno {

/// A preset as it lies in a file.
struct PresetFile {
    std::string text;    // the whole file
    std::string purpose; // the line behind the settings, where a factory preset says what it is for
    DemoGain_PresetText::Values values;
};

/// @throws AudioFileError where the file cannot be read; WorkError where it holds no preset
PresetFile readPresetFile(const std::string& path);

} // namespace varno

#endif
