/// The editor's view with the frame that it is drawn in.
#ifndef VARNO_SOURCE_GUI_VSTGUI_CONTENTVIEW_H
#define VARNO_SOURCE_GUI_VSTGUI_CONTENTVIEW_H

#include "AAX_IACFEffectParameters.h"

#include "vstgui/lib/cframe.h"
#include "vstgui/lib/crect.h"
#include "vstgui/lib/dragging.h"
#include "vstgui/lib/vstguibase.h"
#include "vstgui/lib/vstkeycode.h"

/// Owns a frame and holds the effect's parameters. It forwards to a frame instead of deriving from it: CFrame
/// is final from VSTGUI 4.10 on. Controls are added to getFrame().
///
/// Reference-counted as the library's objects are: made with `new` with one reference, which forget()
/// releases. The last release closes the frame and deletes its controls. [main]
class VSTGUI_ContentView : public VSTGUI::NonAtomicReferenceCounted {
public:
    /// `editor` and `parameters` (may be null) are borrowed and outlive the view.
    VSTGUI_ContentView(const VSTGUI::CRect& size, VSTGUI::VSTGUIEditorInterface* editor,
                       AAX_IACFEffectParameters* parameters);
    VSTGUI_ContentView(const VSTGUI_ContentView&) = delete;
    VSTGUI_ContentView& operator=(const VSTGUI_ContentView&) = delete;

    /// The parameters given at construction; borrowed, may be null. [main]
    AAX_IACFEffectParameters* getParameters() const { return mParameters; }
    /// The frame: never null, borrowed, the same for the view's life. [main]
    VSTGUI::CFrame* getFrame() const { return mFrame; }

    /// CFrame::open. An X11 frame counts its uses of the connection wrongly when it is opened without the
    /// configuration of its run loop: varno::openFrame does what each system needs. [main]
    bool open(void* nativeView, VSTGUI::PlatformType type, VSTGUI::IPlatformFrameConfig* config = nullptr);

    /// CFrame's own of that name. [main]
    virtual bool setPosition(VSTGUI::CCoord x, VSTGUI::CCoord y);
    virtual bool setSize(VSTGUI::CCoord width, VSTGUI::CCoord height);
    virtual bool getSize(VSTGUI::CRect& outSize) const;
    /// As above, but false also while the frame is not visible. [main]
    virtual bool getSize(VSTGUI::CRect* outSize) const;

    /// What the frame does when something is dragged over it and dropped. [main]
    virtual bool onDrop(VSTGUI::DragEventData data);
    virtual VSTGUI::DragOperation onDragEnter(VSTGUI::DragEventData data);
    virtual VSTGUI::DragOperation onDragMove(VSTGUI::DragEventData data);
    virtual void onDragLeave(VSTGUI::DragEventData data);
    /// Has the frame handle a key that was pressed; whether it did. [main]
    virtual bool platformOnKeyDown(VstKeyCode& code);

protected:
    ~VSTGUI_ContentView() noexcept override;

private:
    /// The side of the frame that its native view calls.
    VSTGUI::IPlatformFrameCallback& PlatformSide() const { return *mFrame; }
    /// The frame is asked for its size before a drag is handed on, as editors have always done.
    VSTGUI::IPlatformFrameCallback& PlatformSideForDrag() const;

    VSTGUI::CFrame* mFrame; ///< Owned; CFrame::close releases it.
    AAX_IACFEffectParameters* mParameters;
};

#endif
