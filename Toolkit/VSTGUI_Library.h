/// Initialises VSTGUI for the module.
#ifndef VARNO_TOOLKIT_VSTGUI_LIBRARY_H
#define VARNO_TOOLKIT_VSTGUI_LIBRARY_H

#include "vstgui/lib/platform/platformfwd.h"

#include <filesystem>

/// Makes VSTGUI ready, once for as long as the module is loaded; it is shut down when the module is unloaded.
/// To be called before any object of the library is made. No frame may be open when the module is unloaded;
/// shared bitmaps, fonts and the like may be deleted before or after.
///
/// The library's rule that a click with the Control key sets a control to its default value is switched off:
/// the controls here have a rule of their own. Switches of several positions show the one whose value is
/// nearest, as the effect chooses.
void UseVSTGUI();

/// UseVSTGUI, with a folder for bitmaps.
/// @param resources the folder in which bitmaps are looked up by their file names, on Linux that of the last
/// call; empty where there is none
/// @param bundle the system's own reference to the bundle in which they are looked up on macOS, that of the
/// first call; borrowed for the lifetime of the module, null for the program's own bundle [main]
void UseVSTGUI(const std::filesystem::path& resources, void* bundle = nullptr);

// What differs by system; called by UseVSTGUI.

/// Prepares the system for VSTGUI. Returns the argument of VSTGUI::init. [main]
VSTGUI::PlatformInstanceHandle VSTGUI_Prepare(void* bundle);

/// Changes the folder after VSTGUI::init, where the system allows it. [main]
void VSTGUI_SetResources(const std::filesystem::path& resources);

#endif
