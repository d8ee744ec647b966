#include "Toolkit/FrameOpening.h"

#include "AAX_Enums.h"

#include "vstgui/lib/cframe.h"

namespace varno {

std::optional<OpenedFrame> openFrame(VSTGUI::CFrame& frame, void* nativeView, int32_t containerType) {
    if (containerType != AAX_eViewContainerType_Cocoa || nativeView == nullptr ||
        !frame.open(nativeView, VSTGUI::PlatformType::kNSView)) {
        return std::nullopt;
    }
    return OpenedFrame();
}

} // namespace varno
