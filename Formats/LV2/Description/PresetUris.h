/// What the presets of the bundle are called.
#ifndef PRESETURIS_H
#define PRESETURIS_H

#include "FactoryPreset.h"
#include "PluginUris.h"

#include <string>

namespace varno {

/// A preset belongs to one plug-in, so each is there for either.
inline std::string presetUri(const PluginUri& plugin, const FactoryPreset& preset) {
    return std::string(plugin.uri) + '-' + preset.name;
}

} // namespace varno

#endif
