/// VSTGUI set up for the module.
#ifndef VARNO_SOURCE_GUI_VSTGUI_LIBRARY_H
#define VARNO_SOURCE_GUI_VSTGUI_LIBRARY_H

#include "vstgui/lib/platform/platformfwd.h"

#include <filesystem>

/// Makes VSTGUI ready, once for as long as the module is loaded; it is shut down when the module is unloaded.
/// To be called before anything of the library is made. No frame may be open when the module goes; shared
/// bitmaps, fonts and the like may go before or after.
///
/// The library's own rule, by which a click with the Control key sets a control to its default value before
/// anybody is asked, is switched off: the controls here have their own. A host that does not say how knobs
/// turn gets linear ones: they do not jump to where they are clicked, and a fine drag is known to them alone.
/// @param resources the folder in which bitmaps are looked up by their file names: on Linux that of the last
/// call, on macOS that of the first, inside its bundle; empty where there is none [main]
void UseVSTGUI(const std::filesystem::path& resources);

// What differs by system; called by UseVSTGUI.

/// Puts in place what VSTGUI takes for granted of the system. Returns what VSTGUI::init is to be given for
/// the folder: of the system's, borrowed for the life of the module. [main]
VSTGUI::PlatformInstanceHandle VSTGUI_Prepare(const std::filesystem::path& resources);

/// Changes the folder after VSTGUI::init, where the system lets it be changed. [main]
void VSTGUI_SetResources(const std::filesystem::path& resources);

#endif
