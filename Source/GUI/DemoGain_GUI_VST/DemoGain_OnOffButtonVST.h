/// The editor's on/off button.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_ONOFFBUTTONVST_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_ONOFFBUTTONVST_H

#include "GUI/DemoGain_GUI_VST/DemoGain_HostGestures.h"

#include "vstgui/lib/controls/cbuttons.h"

/// Made from rectangle, listener, tag, bitmap (the off picture above the on picture) and style. Its default
/// value is the library's, half way between off and on, until it is given one.
class DemoGain_OnOffButtonVST final : public DemoGain_HostGestures<VSTGUI::COnOffButton> {
public:
    using DemoGain_HostGestures::DemoGain_HostGestures;

protected:
    ~DemoGain_OnOffButtonVST() noexcept override = default;
};

#endif
