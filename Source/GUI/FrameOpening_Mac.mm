#include "GUI/FrameOpening.h"

#include "AAX_Enums.h"
#include "GUI/VSTGUI_ContentView.h"

namespace varno {

bool openFrame(VSTGUI_ContentView& view, int32_t containerType) {
    return containerType == AAX_eViewContainerType_Cocoa && view.getNativeView() != nullptr &&
           view.open(view.getNativeView(), VSTGUI::PlatformType::kNSView);
}

} // namespace varno
