/// The editor's button that is down only while it is pressed.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_KICKBUTTONVST_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_KICKBUTTONVST_H

#include "GUI/DemoGain_GUI_VST/DemoGain_HostGestures.h"

#include "vstgui/lib/controls/cbuttons.h"

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

    /// Up again, also where the host has taken the release.
    void endEdit() override;

protected:
    ~DemoGain_KickButtonVST() noexcept override = default;
};

#endif
