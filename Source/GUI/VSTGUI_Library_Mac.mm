#include "GUI/VSTGUI_Library.h"

#include <CoreFoundation/CoreFoundation.h>

VSTGUI::PlatformInstanceHandle VSTGUI_Prepare(const std::filesystem::path& resources) {
    // Contents/Resources of the bundle. The library reads the bundle for as long as it runs, so the reference
    // is never released.
    const std::string folder = resources.parent_path().parent_path().string();
    CFURLRef url = CFURLCreateFromFileSystemRepresentation(kCFAllocatorDefault,
                                                           reinterpret_cast<const UInt8*>(folder.data()),
                                                           static_cast<CFIndex>(folder.size()), true);
    CFBundleRef bundle = url != nullptr ? CFBundleCreate(kCFAllocatorDefault, url) : nullptr;
    if (url != nullptr) {
        CFRelease(url);
    }
    return bundle != nullptr ? bundle : CFBundleGetMainBundle();
}

void VSTGUI_SetResources(const std::filesystem::path& /*resources*/) {
}
