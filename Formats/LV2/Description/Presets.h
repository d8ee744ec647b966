/// The factory presets of the bundle.
#ifndef VARNO_FORMATS_LV2_DESCRIPTION_PRESETS_H
#define VARNO_FORMATS_LV2_DESCRIPTION_PRESETS_H

#include "DemoGain_PresetText.h"
#include "LV2/Ports.h"

#include <filesystem>
#include <string>

namespace varno {

/// One preset.
struct FactoryPreset {
    std::string name;    ///< The file's name without its ending, such as "drum-bus".
    std::string label;   ///< For people: "Drum bus".
    std::string comment; ///< What stands below the values; may be empty.
    DemoGain_PresetText::Values values{};
};

/// Reads a text preset. Throws std::runtime_error, naming the file, where there is none in it or where a
/// value lies beyond 0 to 1.
FactoryPreset readFactoryPreset(const std::filesystem::path& file);

/// A preset belongs to one plug-in, so each is there for either.
inline std::string presetUri(const PluginUri& plugin, const FactoryPreset& preset) {
    return std::string(plugin.uri) + '-' + preset.name;
}

} // namespace varno

#endif
