#include "Toolkit/VSTGUI_Library.h"

#include "vstgui/lib/platform/linux/linuxfactory.h"
#include "vstgui/lib/platform/platformfactory.h"

#include <dlfcn.h>

namespace {

// VSTGUI draws text with this library, which depends on Pango and cairo.
constexpr char kTextLibrary[] = "libpangocairo-1.0.so.0";

// Pango registers its classes with GObject, which is never unloaded. If Pango were unloaded together with
// this module, GObject would keep invalid classes, and the next text drawn in the process would never return.
// Pixman, below cairo, allocates 12 KB whenever it is loaded, and never frees them. So both stay in memory
// once this module has been loaded.
[[maybe_unused]] const void* const kStaysInMemory =
    dlopen(kTextLibrary, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);

} // namespace

// The handle of a loaded module would only lead to the folder of the bitmaps, which is set below.
VSTGUI::PlatformInstanceHandle VSTGUI_Prepare(void* /*bundle*/) {
    return nullptr;
}

void VSTGUI_SetResources(const std::filesystem::path& resources) {
    // The library appends a file's name to the folder's; an empty last element makes it end with a slash.
    VSTGUI::getPlatformFactory().asLinuxFactory()->setResourcePath((resources / "").string());
}
