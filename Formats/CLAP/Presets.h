/// The presets of the plug-ins, for a host's browser: those of the factory and the user's.
#ifndef VARNO_FORMATS_CLAP_PRESETS_H
#define VARNO_FORMATS_CLAP_PRESETS_H

#include "CLAP/Clap/Presets.h"

#include <string_view>

namespace varno {

/// The factory of the one provider. [any]
const clap_preset_discovery_factory_t& presetFactory() noexcept;

/// The table of the extension that loads presets; null for another name. [any]
const void* presetExtension(std::string_view id) noexcept;

} // namespace varno

#endif
