#include "GUI/VSTGUI_Library.h"

#include "vstgui/lib/platform/linux/linuxfactory.h"
#include "vstgui/lib/platform/platformfactory.h"

#include <dlfcn.h>

namespace {

// Through which VSTGUI writes text; it keeps the libraries that it uses itself, Pango and cairo, with it.
constexpr char kTextLibrary[] = "libpangocairo-1.0.so.0";

// Pango enters its classes with GObject, which stays in memory for ever and would be left with their remains
// if Pango were unloaded together with this module: the next text that anybody writes then waits for ever.
// Pixman, below cairo, allocates 12 KB whenever it is loaded, and never frees them. So both stay from the
// moment on when this module is loaded.
[[maybe_unused]] const void* const kStaysInMemory =
    dlopen(kTextLibrary, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);

} // namespace

// The handle of a loaded module would only lead to the folder, which is told below.
VSTGUI::PlatformInstanceHandle VSTGUI_Prepare(const std::filesystem::path& /*resources*/) {
    return nullptr;
}

void VSTGUI_SetResources(const std::filesystem::path& resources) {
    // The library puts a file's name right behind the folder's; an empty last element ends it with a slash.
    VSTGUI::getPlatformFactory().asLinuxFactory()->setResourcePath((resources / "").string());
}
