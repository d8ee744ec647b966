#include "GUI/VSTGUI_ContentView.h"

#include "vstgui/lib/events.h"

namespace {

VSTGUI::Modifiers ModifiersOf(const VstKeyCode& code) {
    VSTGUI::Modifiers modifiers;
    const auto add = [&](int bit, VSTGUI::ModifierKey key) {
        if ((code.modifier & bit) != 0) {
            modifiers.add(key);
        }
    };
    add(MODIFIER_SHIFT, VSTGUI::ModifierKey::Shift);
    add(MODIFIER_ALTERNATE, VSTGUI::ModifierKey::Alt);
    add(MODIFIER_CONTROL, VSTGUI::ModifierKey::Control);
    add(MODIFIER_COMMAND, VSTGUI::ModifierKey::Super);
    return modifiers;
}

} // namespace

VSTGUI_ContentView::VSTGUI_ContentView(void* nativeView, const VSTGUI::CRect& size,
                                       VSTGUI::VSTGUIEditorInterface* editor,
                                       AAX_IACFEffectParameters* parameters)
    : mEditor(editor),
      mFrame(new VSTGUI::CFrame(size, &mEditor)),
      mNativeView(nativeView),
      mParameters(parameters) {
}

VSTGUI_ContentView::~VSTGUI_ContentView() noexcept {
    mFrame->close();
}

void VSTGUI_ContentView::Disconnect() {
    mNativeView = nullptr;
    mParameters = nullptr;
    mEditor.Cut();
}

void VSTGUI_ContentView::LeaveNativeView() {
    if (const auto leave = std::exchange(mOpened.leave, nullptr)) {
        leave();
    }
}

bool VSTGUI_ContentView::setPosition(VSTGUI::CCoord x, VSTGUI::CCoord y) {
    return mFrame->setPosition(x, y);
}

bool VSTGUI_ContentView::setSize(VSTGUI::CCoord width, VSTGUI::CCoord height) {
    return mFrame->setSize(width, height);
}

bool VSTGUI_ContentView::getSize(VSTGUI::CRect& outSize) const {
    return mFrame->getSize(outSize);
}

bool VSTGUI_ContentView::getSize(VSTGUI::CRect* outSize) const {
    return mFrame->isVisible() && mFrame->getSize(outSize);
}

VSTGUI::IPlatformFrameCallback& VSTGUI_ContentView::PlatformSideForDrag() const {
    VSTGUI::CRect size;
    getSize(size);
    return PlatformSide();
}

bool VSTGUI_ContentView::onDrop(VSTGUI::DragEventData data) {
    return PlatformSideForDrag().platformOnDrop(data);
}

VSTGUI::DragOperation VSTGUI_ContentView::onDragEnter(VSTGUI::DragEventData data) {
    return PlatformSideForDrag().platformOnDragEnter(data);
}

VSTGUI::DragOperation VSTGUI_ContentView::onDragMove(VSTGUI::DragEventData data) {
    return PlatformSideForDrag().platformOnDragMove(data);
}

void VSTGUI_ContentView::onDragLeave(VSTGUI::DragEventData data) {
    PlatformSideForDrag().platformOnDragLeave(data);
}

bool VSTGUI_ContentView::platformOnKeyDown(VstKeyCode& code) {
    VSTGUI::KeyboardEvent event;
    event.type = VSTGUI::EventType::KeyDown;
    event.character = static_cast<uint32_t>(code.character);
    event.virt = VSTGUI::fromVstVirtualKey(code.virt);
    event.modifiers = ModifiersOf(code);
    PlatformSide().platformOnEvent(event);
    return event.consumed;
}

// The editor as the frame sees it. (-1: the library's own knob mode.)

int32_t VSTGUI_ContentView::EditorLink::getKnobMode() const {
    return mEditor != nullptr ? mEditor->getKnobMode() : -1;
}

void VSTGUI_ContentView::EditorLink::beginEdit(int32_t index) {
    if (mEditor != nullptr) {
        mEditor->beginEdit(index);
    }
}

void VSTGUI_ContentView::EditorLink::endEdit(int32_t index) {
    if (mEditor != nullptr) {
        mEditor->endEdit(index);
    }
}

bool VSTGUI_ContentView::EditorLink::beforeSizeChange(const VSTGUI::CRect& newSize,
                                                      const VSTGUI::CRect& oldSize) {
    return mEditor == nullptr || mEditor->beforeSizeChange(newSize, oldSize);
}
