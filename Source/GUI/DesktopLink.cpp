#include "GUI/DesktopLink.h"

#include "AAX_Guarded.h"

#include "vstgui/lib/cframe.h"

#include <cmath>
#include <utility>

namespace varno {

namespace {

// About 60 times a second, the refresh rate of a usual display.
constexpr uint32_t kFramePeriodMs = 16;

} // namespace

DesktopLink::DesktopLink(IACFUnknown* container)
    : mDesktop(ACFPtr<AAX_IACFDesktop>::Query(container, IID_IVarnoDesktopV1)) {
}

DesktopLink::~DesktopLink() {
    disconnect();
}

double DesktopLink::scale() const {
    double scale = 1.0;
    const bool isKnown = mDesktop && mDesktop->GetScale(&scale) == AAX_SUCCESS;
    return isKnown && std::isfinite(scale) && scale > 0.0 ? scale : 1.0;
}

int32_t DesktopLink::knobMode() const {
    int32_t mode = AAX_eKnobMode_Default;
    if (!mDesktop || mDesktop->GetKnobMode(&mode) != AAX_SUCCESS) {
        return -1;
    }
    return mode == AAX_eKnobMode_Line ? VSTGUI::kLinearMode : -1;
}

void DesktopLink::connect(const std::shared_ptr<RunLoop>& loop) {
    disconnect();
    if (!mDesktop) {
        return;
    }
    mLoop = loop;
    const std::shared_ptr<RunLoop> driven = mLoop; // the caller's and the member may end meanwhile
    Registration watcher = driven->addWatcher(
        {[this](int descriptor) { mDesktop->WatchDescriptor(descriptor, &DesktopLink::wake, this); },
         [this](int descriptor) { mDesktop->UnwatchDescriptor(descriptor, this); }});
    if (mLoop != driven) {
        return;
    }
    mWatcher = std::move(watcher);
    mDesktop->StartTimer(kFramePeriodMs, &DesktopLink::wake, this);
}

void DesktopLink::disconnect() {
    if (!std::exchange(mLoop, nullptr)) {
        return;
    }
    mDesktop->StopTimer(this);
    mWatcher.reset();
}

void DesktopLink::wake(void* context) {
    AAX_Guarded("DesktopLink", [context] {
        // A handler may destroy the link, so nothing of it is used afterwards.
        if (const auto loop = static_cast<DesktopLink*>(context)->mLoop) {
            loop->tick();
        }
        return AAX_SUCCESS;
    });
}

} // namespace varno
