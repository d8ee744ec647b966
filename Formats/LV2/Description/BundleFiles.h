/// The files of the bundle that hosts read before they load anything of it, as text.
#ifndef VARNO_FORMATS_LV2_DESCRIPTION_BUNDLEFILES_H
#define VARNO_FORMATS_LV2_DESCRIPTION_BUNDLEFILES_H

#include "Host/Module.h"
#include "LV2/Description/FactoryPreset.h"

#include <memory>
#include <span>
#include <string>

namespace varno {

/// What the bundle holds.
struct BundleContent {
    std::shared_ptr<Module> module;
    std::span<const FactoryPreset> presets;
    bool hasWindow = false; ///< Whether the window's binary and its ui.ttl are part of it.
};

/// manifest.ttl: what there is and where it is told.
std::string manifestText(const BundleContent& content);
/// varno-s.ttl: the plug-ins and their ports.
std::string pluginsText(const BundleContent& content);
/// ui.ttl: the window, and what it wants to be told.
std::string windowText(const BundleContent& content);
/// presets.ttl: the values of the presets.
std::string presetsText(const BundleContent& content);

} // namespace varno

#endif
