/// The editor's level meter.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_VUMETERVST_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_VUMETERVST_H

#include "GUI/DemoGain_GUI_VST/DemoGain_HostedControl.h"

#include "vstgui/lib/controls/cvumeter.h"

/// Made from rectangle, on bitmap, off bitmap, number of steps and style. Only shows: the mouse does nothing.
class DemoGain_VuMeterVST final : public VSTGUI::CVuMeter, public DemoGain_HostedControl {
public:
    using CVuMeter::CVuMeter;

    /// Keeps the value as it is told, also a little below 0 or above 1 as a meter's law may give it, until it
    /// is drawn: drawing limits it to 0 to 1. The library's own would limit it here already.
    void setValue(float newValue) override { value = newValue; }

protected:
    ~DemoGain_VuMeterVST() noexcept override = default;
};

#endif
