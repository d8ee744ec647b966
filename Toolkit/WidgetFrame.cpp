#include "Toolkit/WidgetFrame.h"

#include "AAX_Enums.h"
#include "Platform/RunLoop.h"
#include "Toolkit/FrameOpening.h"
#include "Toolkit/VSTGUI_Library.h"

#include "vstgui/lib/cframe.h"
#include "vstgui/lib/platform/platform_x11.h"

#include <utility>

namespace varno {

// The frame's members end in this order: first the frame, then what remains of it in the window.
struct WidgetFrame::Opened {
    explicit Opened(VSTGUI::CFrame* owned)
        : frame(owned) {}
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;
    ~Opened() { frame->close(); }

    OpenedFrame window;
    std::shared_ptr<RunLoop> loop = RunLoop::shared();
    VSTGUI::CFrame* frame;
};

WidgetFrame::WidgetFrame(int width, int height)
    : mFrame(nullptr) {
    UseVSTGUI();
    mFrame = new VSTGUI::CFrame(VSTGUI::CRect(0, 0, width, height), nullptr);
    mOpened = std::make_shared<Opened>(mFrame);
}

WidgetFrame::~WidgetFrame() {
    const auto loop = mOpened->loop;
    if (loop->isTicking() && mOpened->window.leave) {
        mOpened->window.leave();
    }
    loop->keepForTick(std::move(mOpened));
}

bool WidgetFrame::open(std::uint32_t window, double scale) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): native views are pointers, and X11 has numbers
    void* const view = reinterpret_cast<void*>(static_cast<std::uintptr_t>(window));
    auto opened = openFrame(*mFrame, view, AAX_eViewContainerType_X11);
    if (!opened) {
        return false;
    }
    mOpened->window = std::move(*opened);
    mFrame->setZoom(scale);
    return true;
}

void WidgetFrame::setScale(double scale) {
    mFrame->setZoom(scale);
}

std::uint32_t WidgetFrame::window() const {
    const auto* const native = dynamic_cast<const VSTGUI::X11::IX11Frame*>(mFrame->getPlatformFrame());
    return native != nullptr ? native->getX11WindowID() : 0;
}

} // namespace varno
