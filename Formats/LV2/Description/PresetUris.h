/// What the presets of the bundle are called.
#ifndef VARNO_FORMATS_LV2_DESCRIPTION_PRESETURIS_H
#define VARNO_FORMATS_LV2_DESCRIPTION_PRESETURIS_H

#include "LV2/Description/FactoryPreset.h"
#include "LV2/PluginUris.h"

#include <string>

namespace varno {

/// A preset belongs to one plug-in, so each is there for either.
inline std::string presetUri(const PluginUri& plugin, const FactoryPreset& preset) {
    return std::string(plugin.uri) + '-' + preset.name;
}

} // namespace varno

#endif
