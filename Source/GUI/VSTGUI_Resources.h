/// Where VSTGUI finds its bitmaps, which every system tells it in its own way.
#ifndef VSTGUI_RESOURCES_H
#define VSTGUI_RESOURCES_H

#include "vstgui/lib/platform/platformfwd.h"

#include <filesystem>

/// What VSTGUI::init is to be given for the folder; of the system's, borrowed for the life of the module.
/// [main]
VSTGUI::PlatformInstanceHandle VSTGUI_InstanceFor(const std::filesystem::path& resources);

/// Changes the folder after VSTGUI::init, where the system lets it be changed. [main]
void VSTGUI_SetResources(const std::filesystem::path& resources);

#endif
