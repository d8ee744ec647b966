// Bitmaps and fonts of the view.
#include "GUI/DemoGain_GUI_VST/DemoGain_ScaledBitmap.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_View.h"

#include "vstgui/lib/platform/iplatformbitmap.h"

namespace {

using DemoGain_ViewLayout::Art;
using DemoGain_ViewLayout::Bitmap;
using VSTGUI::CBitmap;
using VSTGUI::SharedPointer;

SharedPointer<CBitmap> Load(const Bitmap& row) {
    using Place = DemoGain_ScaledBitmap::Place;
    return VSTGUI::makeOwned<DemoGain_ScaledBitmap>(row, row.mArt == Art::kBackground ? Place::kFrame
                                                                                      : Place::kPart);
}

constexpr char kFace[] = "Verdana";

VSTGUI::SharedPointer<VSTGUI::CFontDesc> Font(VSTGUI::CCoord points) {
    return VSTGUI::makeOwned<VSTGUI::CFontDesc>(kFace, points);
}

} // namespace

const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFontSmall = Font(11);
const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFont = Font(12);
const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFontBig = Font(14);
const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFontLogo = Font(28);

SharedPointer<CBitmap> DemoGain_View::m_hPIBackground;
SharedPointer<CBitmap> DemoGain_View::m_hGain;
SharedPointer<CBitmap> DemoGain_View::m_hGR1On;
SharedPointer<CBitmap> DemoGain_View::m_hGR1Off;
SharedPointer<CBitmap> DemoGain_View::m_hSwitch;
SharedPointer<CBitmap> DemoGain_View::m_hRatio;
SharedPointer<CBitmap> DemoGain_View::m_hSwPr1;
SharedPointer<CBitmap> DemoGain_View::m_hSwPr2;

SharedPointer<CBitmap>& DemoGain_View::SharedBitmap(Art art) {
    switch (art) {
    case Art::kBackground:
        return m_hPIBackground;
    case Art::kKnob:
        return m_hGain;
    case Art::kMeterOff:
        return m_hGR1On;
    case Art::kMeterOn:
        return m_hGR1Off;
    case Art::kSwitch:
        return m_hSwitch;
    case Art::kRatio:
        return m_hRatio;
    case Art::kCopy:
        return m_hSwPr1;
    case Art::kPaste:
        break;
    }
    return m_hSwPr2;
}

SharedPointer<CBitmap> DemoGain_View::BitmapFor(Art art) {
    const SharedPointer<CBitmap>& bitmap = SharedBitmap(art);
    return bitmap ? bitmap : VSTGUI::makeOwned<CBitmap>(VSTGUI::PlatformBitmapPtr());
}

void DemoGain_View::LoadViewResources() {
    for (const Bitmap& row : DemoGain_ViewLayout::kBitmaps) {
        SharedPointer<CBitmap>& bitmap = SharedBitmap(row.mArt);
        if (!bitmap) {
            bitmap = Load(row);
        }
    }
}
