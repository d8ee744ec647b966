/// The files of the bundle that hosts read before they load anything of it, as text.
#ifndef VARNO_FORMATS_LV2_DESCRIPTION_BUNDLEFILES_H
#define VARNO_FORMATS_LV2_DESCRIPTION_BUNDLEFILES_H

#include "Host/Module.h"
#include "LV2/Description/Presets.h"

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

/// manifest.ttl: what the bundle has and where it is described.
std::string manifestText(const BundleContent& content);
/// varno-s.ttl: the plug-ins and their ports.
std::string pluginsText(const BundleContent& content);
/// ui.ttl: the window and its notifications.
std::string windowText(const BundleContent& content);
/// presets.ttl: the values of the presets.
std::string presetsText(const BundleContent& content);

} // namespace varno

#endif
