#include "VSTGUI_Resources.h"

#include "vstgui/lib/platform/linux/linuxfactory.h"
#include "vstgui/lib/platform/platformfactory.h"

/// The handle of a loaded module would only lead to the folder, which is told below.
VSTGUI::PlatformInstanceHandle VSTGUI_InstanceFor(const std::filesystem::path& /*resources*/) {
    return nullptr;
}

void VSTGUI_SetResources(const std::filesystem::path& resources) {
    // The library puts a file's name right behind the folder's; an empty last element ends it with a slash.
    VSTGUI::getPlatformFactory().asLinuxFactory()->setResourcePath((resources / "").string());
}
