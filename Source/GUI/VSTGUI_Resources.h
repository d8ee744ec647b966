/// What VSTGUI needs of the system, and where it finds its bitmaps; every system has its own way.
#ifndef VARNO_SOURCE_GUI_VSTGUI_RESOURCES_H
#define VARNO_SOURCE_GUI_VSTGUI_RESOURCES_H

#include "vstgui/lib/platform/platformfwd.h"

#include <filesystem>

/// Puts in place what VSTGUI takes for granted of the system. Returns what VSTGUI::init is to be given for
/// the folder: of the system's, borrowed for the life of the module. [main]
VSTGUI::PlatformInstanceHandle VSTGUI_Prepare(const std::filesystem::path& resources);

/// Changes the folder after VSTGUI::init, where the system lets it be changed. [main]
void VSTGUI_SetResources(const std::filesystem::path& resources);

#endif
