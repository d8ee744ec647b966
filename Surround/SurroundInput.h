/// Pointer and keys over a surround.
#ifndef VARNO_SURROUND_SURROUNDINPUT_H
#define VARNO_SURROUND_SURROUNDINPUT_H

#include "Host/ViewContainer.h"
#include "Surround/ControlActions.h"
#include "Surround/FocusList.h"
#include "Surround/MouseGestures.h"
#include "Surround/SurroundMenus.h"
#include "Surround/SurroundPlace.h"
#include "Surround/ValueTips.h"
#include "Window/InputArea.h"
#include "Window/KeyFocus.h"
#include "Window/KeyText.h"
#include "Window/OverlayWindow.h"
#include "Window/PointerQuery.h"
#include "Window/TipWindow.h"
#include "Window/WheelGrabs.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace varno {

/// What input acts on; everything outlives it.
struct InputSubject {
    EditedSettings& edited;
    ControlActions& controls;
    EditorInput& editor;
    SurroundMenus& menus;
    std::function<void(BarLayout::Button)> pressBar;
    std::function<std::string(BarLayout::Button)>
        barTip; ///< What undo and others would do; empty for nothing.
    std::function<std::string(const FocusItem&)> hostText; ///< What the host shows; empty for nothing.
    std::function<void(int direction)> changeSize;
    std::function<void()> save;
};

/// Takes the keys, the wheel, and what the editor offers of the mouse; shows tips, and a mark around what the
/// keyboard has chosen. [main]
class SurroundInput {
public:
    /// @param place outlives this object @param holder the editor's window @param container the editor's,
    /// whose mouse offers are answered until this object ends
    SurroundInput(const SurroundPlace& place, xcb_window_t holder, ViewContainer& container,
                  InputSubject subject, bool hasBar);
    SurroundInput(const SurroundInput&) = delete;
    SurroundInput& operator=(const SurroundInput&) = delete;
    ~SurroundInput();

    /// The window that has the input focus in the place of everything in the surround.
    xcb_window_t focusWindow() const { return mKeys.id(); }
    /// Closes what is open, or ends a drag and gives the old value back, or takes the mark away.
    /// @return false where there is nothing of that
    bool escape();
    /// To be called some 30 times a second.
    void tick();
    /// The place has another scale.
    void arrange();
    /// What the keyboard has chosen; null for nothing.
    const FocusItem* chosen() const { return mFocus.present(); }
    /// Chooses something. @return whether it is there
    bool choose(const std::function<bool(const FocusItem&)>& isIt);
    /// Whether the keys go to the surround.
    bool hasKeys() const { return mKeys.hasFocus(); }

private:
    void keyCame(const xcb_key_press_event_t& event);
    bool shortcut(const xcb_key_press_event_t& event, const TypedKey& key);
    bool move(const TypedKey& key);
    void control(const FaceLayout::Control& control, const TypedKey& key);
    const FaceLayout::Control* typedControl();
    const FocusItem* pointedAt(const std::optional<PointerState>& pointer) const;
    AAX_Result offered(const MouseOffer& offer);
    void wheelCame(const WheelStep& step);
    std::uint32_t heldKeys();
    void addLegends();
    void placeLegends();
    void legendPressed(const FaceLayout::Control& control, const ButtonEvent& event);
    void showMark();
    void showTip(ValueTips::TimePoint now);
    const FocusItem* itemAt(WindowPlace place) const;
    WindowArea areaOf(const FocusItem& item) const;
    void later(std::function<void()> action) { mLater.push_back(std::move(action)); }

    const SurroundPlace& mPlace;
    ViewContainer& mContainer;
    InputSubject mSubject;
    FocusList mFocus;
    MouseGestures mGestures;
    ValueTips mTips;
    PointerQuery mHover;
    PointerQuery mPointer;
    KeyText mText;
    KeyFocus mKeys;
    WheelGrabs mWheel;
    OverlayWindow mMark;
    TipWindow mTip;
    std::vector<std::unique_ptr<InputArea>> mLegends; ///< Over the names of switches.
    const FocusItem* mHovered = nullptr;
    std::vector<std::function<void()>> mLater; ///< Run at the next tick.
};

} // namespace varno

#endif
