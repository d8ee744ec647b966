#include "GUI/FrameOpening.h"

#include "AAX_Enums.h"
#include "GUI/VSTGUI_ContentView.h"

namespace varno {

std::optional<Registration> openFrame(VSTGUI_ContentView& view, int32_t containerType, void* nativeView) {
    if (containerType != AAX_eViewContainerType_Cocoa || nativeView == nullptr ||
        !view.open(nativeView, VSTGUI::PlatformType::kNSView)) {
        return std::nullopt;
    }
    return Registration();
}

} // namespace varno
