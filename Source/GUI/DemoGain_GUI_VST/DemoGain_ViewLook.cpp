#include "GUI/DemoGain_GUI_VST/DemoGain_ViewLook.h"

namespace {

constexpr char kFace[] = "Verdana";

VSTGUI::SharedPointer<VSTGUI::CFontDesc> Font(VSTGUI::CCoord points) {
    return VSTGUI::makeOwned<VSTGUI::CFontDesc>(kFace, points);
}

} // namespace

const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFontSmall = Font(11);
const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFont = Font(12);
const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFontBig = Font(14);
const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFontLogo = Font(28);
