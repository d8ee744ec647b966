#include "GUI/AAX_CEffectGUI_VST.h"

#include "AAX_CAutoreleasePool.h"
#include "AAX_Guarded.h"
#include "Toolkit/FrameOpening.h"
#include "Toolkit/VSTGUI_Library.h"

#include "vstgui/lib/ccolor.h"

#include <cmath>
#include <utility>

namespace {

// The entry point of this name, told apart from the base's and the plug-in's own of the same name.
AAX_EntryPoint BridgeEntry(const char* name) {
    return {"AAX_CEffectGUI_VST", name};
}

} // namespace

AAX_CEffectGUI_VST::~AAX_CEffectGUI_VST() {
    // While this class can still delete its view.
    AAX_CEffectGUI_VST::Uninitialize();
    DropView();
}

// The host's calls.

AAX_Result AAX_CEffectGUI_VST::SetViewContainer(IACFUnknown* container) {
    const auto self = Hold();
    return AAX_Guarded(BridgeEntry(__func__), [&]() -> AAX_Result {
        const uint32_t before = GetContainerChange();
        if (container != nullptr) {
            DropView();
            if (before != GetContainerChange()) {
                return AAX_SUCCESS; // The host has set another one from within.
            }
            mDesktop = std::make_shared<varno::DesktopLink>(container);
        }
        const AAX_Result result = AAX_CEffectGUI::SetViewContainer(container);
        if (container == nullptr && before + 1 == GetContainerChange()) {
            mDesktop.reset();
        }
        return result;
    });
}

AAX_Result AAX_CEffectGUI_VST::GetViewSize(AAX_Point* outSize) const {
    if (outSize != nullptr && mView) {
        // The library's window has the whole pixels of the frame: a part of one at the far edges is not
        // drawn.
        const VSTGUI::CRect& size = mView->getFrame()->getViewSize();
        outSize->vert = static_cast<float>(std::trunc(size.getHeight()));
        outSize->horz = static_cast<float>(std::trunc(size.getWidth()));
    }
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectGUI_VST::Draw(AAX_Rect* rect) {
    return AAX_Guarded(BridgeEntry(__func__), [&] {
        if (rect != nullptr && mView) {
            VSTGUI::CRect region(VSTGUI::CPoint(rect->left, rect->top),
                                 VSTGUI::CPoint(rect->width, rect->height));
            // CFrame::drawRect draws nothing without a context, which only the frame's window has. The frame
            // counts in the view's own units, the host in pixels.
            VSTGUI::CFrame& drawn = *mView->getFrame();
            drawn.getTransform().inverse().transform(region);
            drawn.invalidRect(region);
        }
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectGUI_VST::TimerWakeup() {
    const auto self = Hold();
    return AAX_Guarded(BridgeEntry(__func__), [this] {
        // A handler may close this very view.
        if (const auto loop = mRunLoop) {
            loop->tick();
        }
        return AAX_SUCCESS;
    });
}

// The view.

void AAX_CEffectGUI_VST::CreateViewContainer() {
    const int32_t type = GetViewContainerType();
    const bool hasFrames = type == AAX_eViewContainerType_Cocoa || type == AAX_eViewContainerType_X11;
    if (void* nativeView = GetViewContainerPtr(); hasFrames && nativeView != nullptr) {
        mShownChange = GetContainerChange();
        CreateEffectView(nativeView);
    }
}

void AAX_CEffectGUI_VST::DeleteViewContainer() {
    DropView();
}

void AAX_CEffectGUI_VST::CreateEffectView(void* nativeView) {
    UseVSTGUI();
    auto* const view = new VSTGUI_ContentView(nativeView, VSTGUI::CRect(), this, GetEffectParameters());
    view->getFrame()->setBackgroundColor(VSTGUI::kGreyCColor);
    ShowView(view);
}

// Each call of the host in here may close the view or replace the container.
void AAX_CEffectGUI_VST::ShowView(VSTGUI_ContentView* view) {
    const auto shown = VSTGUI::owned(view);
    const uint32_t change = mShownChange;
    DropView();
    const auto desktop = mDesktop;
    const double scale = desktop ? desktop->scale() : 1.0;
    if (change != GetContainerChange()) {
        shown->Disconnect();
        return;
    }
    mView = shown;
    mRunLoop = varno::RunLoop::shared();
    auto opened = varno::openFrame(*view->getFrame(), view->getNativeView(), GetViewContainerType());
    if (!opened) {
        return;
    }
    view->SetOpened(std::move(*opened));
    if (desktop) {
        view->getFrame()->setZoom(scale);
        desktop->connect(mRunLoop);
    }
}

void AAX_CEffectGUI_VST::DropView() {
    // The host, and the end of a view, may call this object again: it has no view from here on.
    auto view = std::exchange(mView, VSTGUI::SharedPointer<VSTGUI_ContentView>());
    const auto loop = mRunLoop;
    if (const auto desktop = mDesktop) {
        desktop->disconnect();
    }
    if (!view) {
        return;
    }
    const AAX_CAutoreleasePool pool;
    view->Disconnect();
    if (loop->isTicking() || view->getNbReference() > 1) {
        view->LeaveNativeView();
    }
    loop->keepForTick(std::make_shared<VSTGUI::SharedPointer<VSTGUI_ContentView>>(std::move(view)));
}
