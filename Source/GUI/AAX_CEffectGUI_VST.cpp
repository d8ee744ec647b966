#include "GUI/AAX_CEffectGUI_VST.h"

#include "AAX_CAutoreleasePool.h"
#include "AAX_Guarded.h"
#include "GUI/FrameOpening.h"

#include "vstgui/lib/ccolor.h"

#include <utility>

AAX_CEffectGUI_VST::~AAX_CEffectGUI_VST() {
    // While this class can still delete its view.
    AAX_CEffectGUI_VST::Uninitialize();
    DropView();
}

// The host's calls.

AAX_Result AAX_CEffectGUI_VST::SetViewContainer(IACFUnknown* container) {
    return AAX_Guarded(__func__, [&] {
        if (container != nullptr) {
            DropView();
            mDesktop = std::make_unique<varno::DesktopLink>(container);
        }
        const AAX_Result result = AAX_CEffectGUI::SetViewContainer(container);
        if (container == nullptr) {
            mDesktop.reset();
        }
        return result;
    });
}

AAX_Result AAX_CEffectGUI_VST::GetViewSize(AAX_Point* outSize) const {
    if (outSize != nullptr && mView) {
        const VSTGUI::CRect& size = mView->getFrame()->getViewSize();
        outSize->vert = static_cast<float>(size.getHeight());
        outSize->horz = static_cast<float>(size.getWidth());
    }
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectGUI_VST::Draw(AAX_Rect* rect) {
    return AAX_Guarded(__func__, [&] {
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
    return AAX_Guarded(__func__, [this] {
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
        CreateEffectView(nativeView);
    }
}

void AAX_CEffectGUI_VST::DeleteViewContainer() {
    DropView();
}

void AAX_CEffectGUI_VST::CreateEffectView(void* nativeView) {
    ShowView(new VSTGUI_ContentView(VSTGUI::CRect(), this, GetEffectParameters()), nativeView);
    GetView()->getFrame()->setBackgroundColor(VSTGUI::kGreyCColor);
}

void AAX_CEffectGUI_VST::ShowView(VSTGUI_ContentView* view, void* nativeView) {
    DropView();
    mView = VSTGUI::owned(view);
    mRunLoop = varno::RunLoop::shared();
    auto opened = varno::openFrame(*view, GetViewContainerType(), nativeView);
    if (!opened) {
        return;
    }
    mOpened = std::move(*opened);
    if (mDesktop) {
        view->getFrame()->setZoom(mDesktop->scale());
        mDesktop->connect(mRunLoop);
    }
}

void AAX_CEffectGUI_VST::DropView() {
    if (mDesktop) {
        mDesktop->disconnect();
    }
    const AAX_CAutoreleasePool pool;
    mView = nullptr;
    mOpened.reset();
    mRunLoop.reset();
}
