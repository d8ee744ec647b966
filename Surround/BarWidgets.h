/// The widgets of the bar, in its colours.
#ifndef VARNO_SURROUND_BARWIDGETS_H
#define VARNO_SURROUND_BARWIDGETS_H

#include "Surround/BarLayout.h"
#include "Surround/BarState.h"

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/cfont.h"
#include "vstgui/lib/controls/cbuttons.h"
#include "vstgui/lib/controls/ctextlabel.h"
#include "vstgui/lib/cview.h"

#include <string>

namespace varno {

/// The rectangle in the widget library's terms.
VSTGUI::CRect rectOf(const Box& box);

/// A button whose state is set from outside.
class BarButton : public VSTGUI::CTextButton {
public:
    BarButton(const BarLayout::ButtonRow& row, VSTGUI::IControlListener& reportsTo);

    void setText(const std::string& text);
    /// Shows whether it is on, by lightness as well as by colour.
    void setOn(bool isOn);
    /// One that cannot be pressed is paler, and ignores the mouse.
    void setCanPress(bool canPress);

private:
    void showColours();

    bool mIsOn = false;
    bool mCanPress = true;
};

/// A text on the bar.
class BarLabel : public VSTGUI::CTextLabel {
public:
    enum class Tone { kName, kValue };

    BarLabel(const Box& box, Tone tone, VSTGUI::CHoriTxtAlign align);

    /// Draws only where the text is another one. What does not fit is cut at the end.
    void show(const std::string& shown);
};

/// A horizontal meter of a level with its held peak.
class LevelMeter : public VSTGUI::CView {
public:
    explicit LevelMeter(const Box& box);

    /// Draws only where the picture is another one.
    void show(const LevelReading& reading);
    void draw(VSTGUI::CDrawContext* context) override;

private:
    /// Steps of the display, one to a pixel at scale 1.
    int stepsOf(const std::optional<double>& levelDB) const;

    int mLevel = 0;
    int mPeak = 0;
};

} // namespace varno

#endif
