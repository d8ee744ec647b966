#include "Toolkit/VSTGUI_Library.h"

#include <CoreFoundation/CoreFoundation.h>

VSTGUI::PlatformInstanceHandle VSTGUI_Prepare(void* bundle) {
    return bundle != nullptr ? bundle : CFBundleGetMainBundle();
}

void VSTGUI_SetResources(const std::filesystem::path& /*resources*/) {
}
