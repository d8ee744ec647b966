/// Base of a plug-in's editor that is drawn with VSTGUI.
#ifndef VARNO_SOURCE_GUI_AAX_CEFFECTGUI_VST_H
#define VARNO_SOURCE_GUI_AAX_CEFFECTGUI_VST_H

#include "AAX_CEffectGUI.h"
#include "GUI/DesktopLink.h"
#include "GUI/VSTGUI_ContentView.h"
#include "Platform/RunLoop.h"

#include "vstgui/lib/cframe.h"

#include <memory>

/// Places a content view in the host's native view and keeps it for as long as the host's container is there.
/// A derived class overrides CreateEffectView, which ends in ShowView.
///
/// Where the system has no event loop (X11), the view uses the loop that all editors of the module share:
/// every TimerWakeup drives it, and so does the host's event loop where the container implements
/// AAX_IACFDesktop. An override of TimerWakeup calls this one first.
class AAX_CEffectGUI_VST : public AAX_CEffectGUI, public VSTGUI::VSTGUIEditorInterface {
public:
    AAX_CEffectGUI_VST() = default;

    /// As the base; a container that replaces another closes the view in that one first. [main]
    AAX_Result SetViewContainer(IACFUnknown* container) override;
    /// In pixels of the native view, the desktop's scale included. [main]
    AAX_Result GetViewSize(AAX_Point* outSize) const override;
    /// Invalidates that part of the view; does nothing for a null rectangle or without a view. [main]
    AAX_Result Draw(AAX_Rect* rect) override;
    AAX_Result TimerWakeup() override;

    /// What the desktop around the container asks for, else the library's own (-1). [main]
    int32_t GetDesktopKnobMode() const { return mDesktop ? mDesktop->knobMode() : -1; }

protected:
    ~AAX_CEffectGUI_VST() override;

    /// Calls CreateEffectView for a native view that frames support: an NSView or an X11 window. [main]
    void CreateViewContainer() override;
    void DeleteViewContainer() override;
    /// Where a derived class makes its view for the host's native view. This class shows an empty grey view.
    /// [main]
    virtual void CreateEffectView(void* nativeView);

    /// Takes over the caller's reference to `view`, which replaces the one there is, and opens its frame in
    /// its native view, at the desktop's scale. Where that fails, as without a display, the view has no
    /// window and everything else works. Where the host has closed or replaced the container meanwhile, the
    /// view is released. [main]
    void ShowView(VSTGUI_ContentView* view);
    /// The view; borrowed, null while there is none. [main]
    VSTGUI_ContentView* GetView() const { return mView; }

private:
    /// Disconnects the desktop and the view, and releases it. Where the host calls this from within an
    /// operation of the view, the view exists until that operation returns, out of the native view.
    void DropView();

    VSTGUI::SharedPointer<VSTGUI_ContentView> mView;
    std::shared_ptr<varno::RunLoop> mRunLoop;     ///< Driven from the first view on.
    std::shared_ptr<varno::DesktopLink> mDesktop; ///< Exists as long as the host's container.
    uint32_t mShownChange = 0;                    ///< Of the container that the view is made for.
};

#endif
