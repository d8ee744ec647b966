#ifndef VARNO_APPS_VARNO_COMMANDS_PRESETREPORT_H
#define VARNO_APPS_VARNO_COMMANDS_PRESETREPORT_H

#include "FactoryPresets.h"
#include "Host/Instance.h"
#include "PresetFile.h"

#include <string>
#include <vector>

namespace varno {

/// A preset with what its file holds.
struct NamedPreset {
    std::string name;
    PresetFile file;
};

/// What the presets are called and for, as a table for people.
std::string presetsText(const std::vector<NamedPreset>& presets);

/// The same as a JSON array.
std::string presetsJson(const std::vector<NamedPreset>& presets);

/// The text of a preset, which is a preset again, and its values as the parameters show them.
/// @param instance brought to the preset
std::string presetReportText(const NamedPreset& preset, const Instance& instance);

/// The same as a JSON object.
std::string presetReportJson(const NamedPreset& preset, const Instance& instance);

} // namespace varno

#endif
