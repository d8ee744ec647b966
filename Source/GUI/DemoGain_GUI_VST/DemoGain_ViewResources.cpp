// Bitmaps and fonts of the view.
#include "GUI/DemoGain_GUI_VST/DemoGain_View.h"

#include "vstgui/lib/cdrawcontext.h"
#include "vstgui/lib/cresourcedescription.h"
#include "vstgui/lib/platform/iplatformbitmap.h"
#include "vstgui/lib/platform/platformfactory.h"

namespace {

using DemoGain_ViewLayout::Art;
using DemoGain_ViewLayout::Bitmap;
using VSTGUI::CBitmap;
using VSTGUI::SharedPointer;

constexpr double kDoubleSize = 2.0;

// Fills the rectangle that it is drawn in. The library scales the content of a frame by the frame's zoom, but
// not the frame's background.
class Backdrop : public CBitmap {
public:
    using CBitmap::CBitmap;

    void draw(VSTGUI::CDrawContext* context, const VSTGUI::CRect& rect, const VSTGUI::CPoint& offset,
              float alpha) override {
        if (!isLoaded()) {
            return;
        }
        const auto stretch =
            VSTGUI::CGraphicsTransform().scale(rect.getWidth() / getWidth(), rect.getHeight() / getHeight());
        VSTGUI::CRect place = rect;
        stretch.inverse().transform(place);
        const VSTGUI::CDrawContext::Transform scope(*context, stretch);
        CBitmap::draw(context, place, offset, alpha);
    }
};

// The name of the double-size variant of a file.
std::string DoubleSizeName(const std::string& file) {
    std::string name = file;
    return name.insert(name.rfind('.'), DemoGain_ViewLayout::kDoubleSizeMark);
}

// The library selects the variant that fits the screen, but does not load it.
void AddDoubleSize(CBitmap& bitmap, const std::string& file) {
    const std::string name = DoubleSizeName(file);
    const auto variant =
        VSTGUI::getPlatformFactory().createBitmap(VSTGUI::CResourceDescription(name.c_str()));
    if (variant) {
        variant->setScaleFactor(kDoubleSize);
        bitmap.addBitmap(variant);
    }
}

SharedPointer<CBitmap> Load(const Bitmap& row) {
    const VSTGUI::CResourceDescription file(row.mFile);
    SharedPointer<CBitmap> bitmap =
        VSTGUI::owned(row.mArt == Art::kBackground ? new Backdrop(file) : new CBitmap(file));
    if (bitmap->isLoaded()) {
        AddDoubleSize(*bitmap, row.mFile);
    }
    return bitmap;
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
