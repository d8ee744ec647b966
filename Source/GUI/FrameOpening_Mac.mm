#include "FrameOpening.h"

#include "AAX_Enums.h"
#include "VSTGUI_ContentView.h"

namespace varno {

bool openFrame(VSTGUI_ContentView& view, int32_t containerType, void* nativeView) {
    return containerType == AAX_eViewContainerType_Cocoa && nativeView != nullptr &&
           view.open(nativeView, VSTGUI::PlatformType::kNSView);
}

} // namespace varno
