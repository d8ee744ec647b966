/// What can be done with a control of the editor, by whatever means.
#ifndef VARNO_SURROUND_CONTROLACTIONS_H
#define VARNO_SURROUND_CONTROLACTIONS_H

#include "Host/Instance.h"
#include "Surround/EditorInput.h"
#include "Surround/FaceLayout.h"
#include "Surround/Settings/EditedSettings.h"

#include <chrono>
#include <string>

namespace varno {

/// Steps, ends, default, press and values in units of the editor's controls. What the editor can do itself,
/// it does, so that its reactions are those to a mouse. [main]
class ControlActions {
public:
    using Control = FaceLayout::Control;

    /// @param instance, edited, input outlive this object
    ControlActions(Instance& instance, EditedSettings& edited, EditorInput& input)
        : mInstance(instance),
          mEdited(edited),
          mInput(input) {}

    /// Moves a knob by steps of the wheel, the ratio by curves, a switch to on or off.
    void step(const Control& control, int steps, bool isFine);
    /// Sets a control of a parameter to its lowest or highest value.
    void toEnd(const Control& control, bool isHighest);
    /// Sets a control of a parameter to its default.
    void reset(const Control& control);
    /// Changes a switch, presses a button; nothing with a knob.
    void press(const Control& control);

    /// The value as people say it: "+3.0 dB", "curve 5"; empty for what is no parameter.
    std::string value(const Control& control) const;
    /// What a value that was typed is refused for, as a sentence; empty where it was set.
    std::string type(const Control& control, const std::string& text);

private:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// A click that was sent, until the editor has had time to follow it.
    struct Sent {
        const Control* control = nullptr;
        double normalized = 0.0; ///< What it leads to.
        TimePoint until;
    };

    double normalized(const Control& control) const;
    void clickAt(const Control& control, int x, double leadsTo);
    void clickCurve(const Control& control, int curve);

    Instance& mInstance;
    EditedSettings& mEdited;
    EditorInput& mInput;
    Sent mSent;
};

} // namespace varno

#endif
