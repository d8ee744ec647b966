/// The editor's switch with positions side by side.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_SWITCHHORVST_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_SWITCHHORVST_H

#include "GUI/DemoGain_GUI_VST/DemoGain_HostGestures.h"

#include "vstgui/lib/controls/cswitch.h"

/// Made from rectangle, listener, tag, number of pictures, height of one picture, number of positions, bitmap
/// and offset.
class DemoGain_SwitchHorVST final : public DemoGain_HostGestures<VSTGUI::CHorizontalSwitch> {
public:
    using DemoGain_HostGestures::DemoGain_HostGestures;

protected:
    ~DemoGain_SwitchHorVST() noexcept override = default;
};

#endif
