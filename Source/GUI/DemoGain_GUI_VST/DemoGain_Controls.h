/// The editor's controls: the VSTGUI ones, which offer each gesture to the host first.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_CONTROLS_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_CONTROLS_H

#include "AAX_IViewContainer.h"
#include "GUI/AAX_CVSTGUIButtonState.h"

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/cframe.h"
#include "vstgui/lib/controls/cbuttons.h"
#include "vstgui/lib/controls/ccontrol.h"
#include "vstgui/lib/controls/cknob.h"
#include "vstgui/lib/controls/cswitch.h"
#include "vstgui/lib/controls/cvumeter.h"

#include <optional>

/// The part of a control that refers to the host, a second base beside the VSTGUI one. [main]
class DemoGain_HostedControl {
public:
    DemoGain_HostedControl(const DemoGain_HostedControl&) = delete;
    DemoGain_HostedControl& operator=(const DemoGain_HostedControl&) = delete;

    /// `container` is borrowed until the next call and outlives the control otherwise; null until set. [main]
    void SetViewContainer(AAX_IViewContainer* container) { mViewContainer = container; }
    /// `paramID` is a literal; null until set. [main]
    void SetParamID(AAX_CParamID paramID) { mParamID = paramID; }

    /// For a view that the host closes: events that are still under way have no effect from here on. [main]
    void Close() { mIsClosed = true; }
    /// Ends a press that was offered to the host and not released: offers the release, and ends the edit at
    /// the present value. Does nothing otherwise. [main]
    virtual void EndOffer() {}

protected:
    using Gesture = AAX_Result (AAX_IViewContainer::*)(AAX_CParamID paramID, uint32_t modifiers);

    DemoGain_HostedControl() = default;
    ~DemoGain_HostedControl() = default;

    AAX_IViewContainer* ViewContainer() const { return mViewContainer; }
    bool IsClosed() const { return mIsClosed; }
    /// Offers a gesture on the control's parameter to the host; returns whether the host has handled it.
    /// False without a container or an identifier.
    bool IsTakenByHost(Gesture gesture, uint32_t modifiers) const {
        return mViewContainer != nullptr && mParamID != nullptr &&
               (mViewContainer->*gesture)(mParamID, modifiers) == AAX_SUCCESS;
    }

private:
    AAX_IViewContainer* mViewContainer = nullptr;
    AAX_CParamID mParamID = nullptr;
    bool mIsClosed = false;
};

/// `Base`, a VSTGUI control, with every gesture offered to the host before Base sees it, so that the host's
/// own clicks (automation, assignment of controllers) work on it, and with a click that sets the default
/// value. Without a container or an identifier only that click is new. Constructors are Base's.
///
/// The library (4.13) turns its mouse events into the handlers below, for all the bases used here; its X11
/// layer swaps the middle and the right button while the mouse moves, which has no effect here, since only
/// drags with the left button are used. Base's handler of a press calls the handler of a move: a press that
/// the host does not handle is offered to it once more as a drag.
///
/// Each press that is offered to the host has one release: that of the button, or, where the library brings
/// none to the control, one that follows at once. Only a view that the host closes in between leaves it out.
///
/// The host may close the view in each of its calls. The control exists until the library's event is over,
/// and does nothing more.
template<class Base>
class DemoGain_HostGestures : public Base, public DemoGain_HostedControl {
public:
    using Base::Base;

    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override {
        const AAX_CVSTGUIButtonState state(buttons, ViewContainer());
        mIsOffered = ViewContainer() != nullptr;
        const bool isTaken =
            IsTakenByHost(&AAX_IViewContainer::HandleParameterMouseDown, state.GetModifiers());
        if (IsClosed()) {
            return VSTGUI::kMouseEventNotHandled;
        }
        const auto result = isTaken ? VSTGUI::kMouseEventHandled : Press(where, state.GetButtonState());
        if (IsClosed()) {
            DiscardPress();
            return VSTGUI::kMouseEventNotHandled;
        }
        if (result != VSTGUI::kMouseEventHandled) {
            OfferRelease(buttons);
        }
        return result;
    }

    /// A gesture that Base began ends also where the host takes the release: otherwise the
    /// parameter would stay touched.
    VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons) override {
        const AAX_CVSTGUIButtonState state(buttons, ViewContainer());
        mIsOffered = false;
        const bool isTaken = IsTakenByHost(&AAX_IViewContainer::HandleParameterMouseUp, state.GetModifiers());
        if (IsClosed()) {
            return VSTGUI::kMouseEventNotHandled;
        }
        if (isTaken) {
            this->endEdit();
            return VSTGUI::kMouseEventHandled;
        }
        return Base::onMouseUp(where, state.GetButtonState());
    }

    /// The Control key works like the Shift key, which makes the knob's linear drag finer.
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where,
                                           const VSTGUI::CButtonState& buttons) override {
        if (IsClosed()) {
            return VSTGUI::kMouseEventNotHandled;
        }
        const AAX_CVSTGUIButtonState state(buttons, ViewContainer());
        VSTGUI::CButtonState moved = state.GetButtonState();
        const bool isTaken =
            (moved & VSTGUI::kLButton) != 0 &&
            IsTakenByHost(&AAX_IViewContainer::HandleParameterMouseDrag, state.GetModifiers());
        if (IsClosed()) {
            return VSTGUI::kMouseEventNotHandled;
        }
        if (isTaken) {
            return VSTGUI::kMouseEventHandled;
        }
        if (moved.isControlSet()) {
            moved |= VSTGUI::kShift;
        }
        return Base::onMouseMoved(where, moved);
    }

    VSTGUI::CMouseEventResult onMouseCancel() override {
        OfferRelease({});
        return IsClosed() ? VSTGUI::kMouseEventNotHandled : Base::onMouseCancel();
    }

    void EndOffer() override {
        if (mIsOffered) {
            OfferRelease({});
            this->endEdit();
        }
    }

    /// Sets the default value for a click with exactly the left button and the Alt (Option) key, between a
    /// touch and a release, and notifies the listener if that changed the value. Returns whether it was such
    /// a click. [main]
    virtual bool checkDefaultValue(const VSTGUI::CButtonState& buttons) {
        if (buttons != VSTGUI::CButtonState(VSTGUI::kLButton | VSTGUI::kAlt)) {
            return false;
        }
        this->beginEdit();
        const float before = this->getValue();
        this->setValue(this->getDefaultValue());
        if (this->getValue() != before) {
            this->valueChanged();
            this->invalid();
        }
        this->endEdit();
        return true;
    }

protected:
    ~DemoGain_HostGestures() noexcept override = default;

    /// For a control whose Base keeps something of a press that came to nothing.
    virtual void DiscardPress() {}

private:
    /// The press is not the host's. Where knobs follow a line, the Alt key would make Base's knob turn to the
    /// mouse: it is left out, so that no press but the click for the default value changes a value.
    VSTGUI::CMouseEventResult Press(VSTGUI::CPoint& where, VSTGUI::CButtonState buttons) {
        if (checkDefaultValue(buttons)) {
            return VSTGUI::kMouseDownEventHandledButDontNeedMovedOrUpEvents;
        }
        const VSTGUI::CFrame* const frame = this->getFrame();
        if (frame != nullptr && frame->getKnobMode() == VSTGUI::kLinearMode) {
            buttons &= ~VSTGUI::kAlt;
        }
        return Base::onMouseDown(where, buttons);
    }

    /// For a press whose release does not come from the library.
    void OfferRelease(const VSTGUI::CButtonState& buttons) {
        if (mIsOffered) {
            mIsOffered = false;
            const AAX_CVSTGUIButtonState state(buttons, ViewContainer());
            IsTakenByHost(&AAX_IViewContainer::HandleParameterMouseUp, state.GetModifiers());
        }
    }

    bool mIsOffered = false; ///< A press whose release the host has not received.
};

/// Made from rectangle, listener, tag, number of pictures, height of one picture, bitmap and offset. Shows
/// the host's highlight as a ring around the picture: CAnimKnob has had no corona of its own since
/// VSTGUI 4.12.
class DemoGain_AnimKnobVST final : public DemoGain_HostGestures<VSTGUI::CAnimKnob> {
public:
    using DemoGain_HostGestures::DemoGain_HostGestures;

    /// Whether the ring is drawn. [main]
    void setHighLite(bool isHighLit) { mIsHighLit = isHighLit; }
    bool getHighLite() const { return mIsHighLit; }
    /// The ring's colour; transparent until set. [main]
    void setCoronaColor(const VSTGUI::CColor& colour) { mCoronaColor = colour; }
    const VSTGUI::CColor& getCoronaColor() const { return mCoronaColor; }

    void draw(VSTGUI::CDrawContext* context) override;
    /// Also ends the press that began the edit.
    void endEdit() override;

protected:
    ~DemoGain_AnimKnobVST() noexcept override = default;
    void DiscardPress() override;

private:
    bool mIsHighLit = false;
    bool mIsReleasing = false;
    VSTGUI::CColor mCoronaColor = VSTGUI::kTransparentCColor;
};

/// Made from rectangle, listener, tag, bitmap (the off picture above the on picture) and style. Its default
/// value is the library's, half way between off and on, until it is given one.
class DemoGain_OnOffButtonVST final : public DemoGain_HostGestures<VSTGUI::COnOffButton> {
public:
    using DemoGain_HostGestures::DemoGain_HostGestures;

protected:
    ~DemoGain_OnOffButtonVST() noexcept override = default;
};

/// Made from rectangle, listener, tag, number of pictures, height of one picture, number of positions, bitmap
/// and offset.
class DemoGain_SwitchHorVST final : public DemoGain_HostGestures<VSTGUI::CHorizontalSwitch> {
public:
    using DemoGain_HostGestures::DemoGain_HostGestures;

protected:
    ~DemoGain_SwitchHorVST() noexcept override = default;
};

/// Made from rectangle, listener, tag, height of one picture, bitmap and offset.
///
/// The library calls its listener's valueChanged, in one click, not on the press but on the release: first
/// with the value 1, if the mouse is still on the button, and then in any case with 0. With the Return key
/// the press brings 1 and the release 0. Between controlBeginEdit and controlEndEdit there is thus exactly
/// one call with 1 for each completed click and none for an abandoned one: a listener that acts once per
/// click acts on 1.
class DemoGain_KickButtonVST final : public DemoGain_HostGestures<VSTGUI::CKickButton> {
public:
    using DemoGain_HostGestures::DemoGain_HostGestures;

    /// Puts the button up again, also where the host has handled the release.
    void endEdit() override;

protected:
    ~DemoGain_KickButtonVST() noexcept override = default;
};

/// Made from rectangle, on bitmap, off bitmap, number of steps and style. Display only: it does not react to
/// the mouse.
class DemoGain_VuMeterVST final : public VSTGUI::CVuMeter, public DemoGain_HostedControl {
public:
    using CVuMeter::CVuMeter;

    /// Keeps the value unlimited, also a little below 0 or above 1, which a meter's scale may yield; drawing
    /// limits it to 0 to 1. The library's setter would limit it here already.
    void setValue(float newValue) override { value = newValue; }

    /// Does nothing while what was drawn last still holds: the view requests it on every tick of its timer.
    void invalid() override;
    void draw(VSTGUI::CDrawContext* context) override;

protected:
    ~DemoGain_VuMeterVST() noexcept override = default;

private:
    /// The value that was drawn twice in the same place; nothing while the display moves towards its value.
    std::optional<float> mShown;
};

#endif
