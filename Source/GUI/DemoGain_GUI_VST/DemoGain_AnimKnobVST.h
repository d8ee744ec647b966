/// The editor's knob.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_ANIMKNOBVST_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_ANIMKNOBVST_H

#include "GUI/DemoGain_GUI_VST/DemoGain_HostGestures.h"

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/controls/cknob.h"

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
    /// Forgets the press that began the edit, whoever ends it.
    void endEdit() override;

protected:
    ~DemoGain_AnimKnobVST() noexcept override = default;

private:
    bool mIsHighLit = false;
    bool mIsLettingGo = false;
    VSTGUI::CColor mCoronaColor = VSTGUI::kTransparentCColor;
};

#endif
