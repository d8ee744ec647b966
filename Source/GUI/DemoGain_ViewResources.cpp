#include "DemoGain_View.h"

#include "vstgui/lib/cresourcedescription.h"
#include "vstgui/lib/platform/iplatformbitmap.h"
#include "vstgui/lib/platform/platformfactory.h"

namespace {

using DemoGain_ViewLayout::Art;
using DemoGain_ViewLayout::Bitmap;
using VSTGUI::CBitmap;
using VSTGUI::SharedPointer;

constexpr double kDoubleSize = 2.0;

/// The name of the double-size variant of a file.
std::string DoubleSizeName(const std::string& file) {
    std::string name = file;
    return name.insert(name.rfind('.'), DemoGain_ViewLayout::kDoubleSizeMark);
}

/// The library picks the variant that suits the screen, but does not look for it by itself.
void AddDoubleSize(CBitmap& bitmap, const std::string& file) {
    const std::string name = DoubleSizeName(file);
    const auto variant =
        VSTGUI::getPlatformFactory().createBitmap(VSTGUI::CResourceDescription(name.c_str()));
    if (variant) {
        variant->setScaleFactor(kDoubleSize);
        bitmap.addBitmap(variant);
    }
}

SharedPointer<CBitmap> Load(const char* file) {
    auto bitmap = VSTGUI::makeOwned<CBitmap>(VSTGUI::CResourceDescription(file));
    if (bitmap->isLoaded()) {
        AddDoubleSize(*bitmap, file);
    }
    return bitmap;
}

} // namespace

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
    case Art::Background:
        return m_hPIBackground;
    case Art::Knob:
        return m_hGain;
    case Art::MeterOff:
        return m_hGR1On;
    case Art::MeterOn:
        return m_hGR1Off;
    case Art::Switch:
        return m_hSwitch;
    case Art::Ratio:
        return m_hRatio;
    case Art::Copy:
        return m_hSwPr1;
    case Art::Paste:
        break;
    }
    return m_hSwPr2;
}

void DemoGain_View::LoadViewResources() {
    for (const Bitmap& row : DemoGain_ViewLayout::kBitmaps) {
        SharedPointer<CBitmap>& bitmap = SharedBitmap(row.mArt);
        if (!bitmap) {
            bitmap = Load(row.mFile);
        }
    }
}
