/// The editor's view with the frame that it is drawn in.
#ifndef VARNO_SOURCE_GUI_VSTGUI_CONTENTVIEW_H
#define VARNO_SOURCE_GUI_VSTGUI_CONTENTVIEW_H

#include "AAX_IACFEffectParameters.h"
#include "Toolkit/OpenedFrame.h"

#include "vstgui/lib/cframe.h"
#include "vstgui/lib/crect.h"
#include "vstgui/lib/dragging.h"
#include "vstgui/lib/vstguibase.h"
#include "vstgui/lib/vstkeycode.h"

#include <utility>

/// Owns a frame and holds the effect's parameters. It forwards to a frame instead of deriving from it: CFrame
/// is final from VSTGUI 4.10 on. Controls are added to getFrame().
///
/// Reference-counted as the library's objects are: made with `new` with one reference, which forget()
/// releases. The last release closes the frame and deletes its controls. [main]
class VSTGUI_ContentView : public VSTGUI::NonAtomicReferenceCounted {
public:
    /// All pointers are borrowed until Disconnect, and may be null. `nativeView` is the host's native view in
    /// which the frame is to be opened.
    VSTGUI_ContentView(void* nativeView, const VSTGUI::CRect& size, VSTGUI::VSTGUIEditorInterface* editor,
                       AAX_IACFEffectParameters* parameters);
    VSTGUI_ContentView(const VSTGUI_ContentView&) = delete;
    VSTGUI_ContentView& operator=(const VSTGUI_ContentView&) = delete;

    /// The host's native view; null once the view is disconnected. [main]
    void* getNativeView() const { return mNativeView; }
    /// The parameters given at construction; borrowed, may be null, null once the view is disconnected.
    /// [main]
    AAX_IACFEffectParameters* getParameters() const { return mParameters; }
    /// The frame: never null, borrowed, the same for the view's life. [main]
    VSTGUI::CFrame* getFrame() const { return mFrame; }

    /// Ends every use of the host and of the editor, for a view that is closed while one of its own calls, or
    /// the library's, is still under way: the view and its frame exist until that call has returned, without
    /// effect on anything else. Does nothing the second time. [main]
    virtual void Disconnect();

    /// What to do when the frame has left the host's native view: at once, while it is still open, and after
    /// it was closed. [main]
    void SetOpened(varno::OpenedFrame opened) { mOpened = std::move(opened); }
    /// Takes the frame's window out of the host's native view. The frame stays open. [main]
    void LeaveNativeView();

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
    /// The editor as the frame sees it: the frame keeps its pointer to the end, the editor may end before.
    class EditorLink final : public VSTGUI::VSTGUIEditorInterface {
    public:
        explicit EditorLink(VSTGUI::VSTGUIEditorInterface* editor)
            : mEditor(editor) {}
        void Cut() { mEditor = nullptr; }

        int32_t getKnobMode() const override;
        void beginEdit(int32_t index) override;
        void endEdit(int32_t index) override;
        bool beforeSizeChange(const VSTGUI::CRect& newSize, const VSTGUI::CRect& oldSize) override;

    private:
        VSTGUI::VSTGUIEditorInterface* mEditor;
    };

    /// The side of the frame that its native view calls.
    VSTGUI::IPlatformFrameCallback& PlatformSide() const { return *mFrame; }
    /// The frame is asked for its size before a drag is handed on, as editors have always done.
    VSTGUI::IPlatformFrameCallback& PlatformSideForDrag() const;

    varno::OpenedFrame mOpened; ///< Ends after the frame.
    EditorLink mEditor;
    VSTGUI::CFrame* mFrame; ///< Owned; CFrame::close releases it.
    void* mNativeView;
    AAX_IACFEffectParameters* mParameters;
};

#endif
