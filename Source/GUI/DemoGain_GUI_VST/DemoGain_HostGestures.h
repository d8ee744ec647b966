/// How the mouse works on every control of the editor.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_HOSTGESTURES_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_HOSTGESTURES_H

#include "GUI/AAX_CVSTGUIButtonState.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_HostedControl.h"

#include "vstgui/lib/controls/ccontrol.h"

/// `Base`, a VSTGUI control, with every gesture offered to the host before Base sees it, so that the host's
/// own clicks (automation, assignment of controllers) work on it, and with a click that sets the default
/// value. Without a container or an identifier only that click is new. Constructors are Base's.
///
/// The library (4.13) turns its mouse events into the three handlers below, for all the bases used here; its
/// X11 layer swaps the middle and the right button in what it reports while the mouse moves, which matters to
/// nobody here, since only drags with the left button are looked at. Base's own handler of a press ends in
/// the handler of a move: a press that the host leaves to the control is offered to it once more as a drag.
template<class Base>
class DemoGain_HostGestures : public Base, public DemoGain_HostedControl {
public:
    using Base::Base;

    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint& where,
                                          const VSTGUI::CButtonState& buttons) override {
        const AAX_CVSTGUIButtonState state(buttons, ViewContainer());
        if (IsTakenByHost(&AAX_IViewContainer::HandleParameterMouseDown, state.GetModifiers())) {
            return VSTGUI::kMouseEventHandled;
        }
        if (checkDefaultValue(state.GetButtonState())) {
            return VSTGUI::kMouseDownEventHandledButDontNeedMovedOrUpEvents;
        }
        return Base::onMouseDown(where, state.GetButtonState());
    }

    /// A gesture that Base began ends also where the host takes the release: the host would otherwise see the
    /// parameter touched for ever.
    VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint& where, const VSTGUI::CButtonState& buttons) override {
        const AAX_CVSTGUIButtonState state(buttons, ViewContainer());
        if (IsTakenByHost(&AAX_IViewContainer::HandleParameterMouseUp, state.GetModifiers())) {
            this->endEdit();
            return VSTGUI::kMouseEventHandled;
        }
        return Base::onMouseUp(where, state.GetButtonState());
    }

    /// The Control key works like the Shift key, which makes the knob's linear drag finer.
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint& where,
                                           const VSTGUI::CButtonState& buttons) override {
        const AAX_CVSTGUIButtonState state(buttons, ViewContainer());
        VSTGUI::CButtonState moved = state.GetButtonState();
        if ((moved & VSTGUI::kLButton) != 0 &&
            IsTakenByHost(&AAX_IViewContainer::HandleParameterMouseDrag, state.GetModifiers())) {
            return VSTGUI::kMouseEventHandled;
        }
        if (moved.isControlSet()) {
            moved |= VSTGUI::kShift;
        }
        return Base::onMouseMoved(where, moved);
    }

    /// Sets the default value for a click with exactly the left button and the Alt (Option) key, between a
    /// touch and a release, and tells the listener if that changed the value. Whether it was such a click.
    /// [main]
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
};

#endif
