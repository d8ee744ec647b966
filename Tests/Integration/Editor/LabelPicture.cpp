#include "Tests/Integration/Editor/LabelPicture.h"

#include "Tests/Integration/Editor/EditorWindow.h"

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/coffscreencontext.h"
#include "vstgui/lib/controls/ctextlabel.h"
#include "vstgui/lib/vstguiinit.h"

namespace varno::test {

namespace {

// The drawing library as long as this program runs.
class Library {
public:
    Library() { VSTGUI::init(nullptr); }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() { VSTGUI::exit(); }
};

VSTGUI::SharedPointer<VSTGUI::CTextLabel> makeLabel(const VSTGUI::CRect& size, const std::string& text) {
    const VSTGUI::CColor kLightGrey(230, 230, 230, 255);
    auto label = VSTGUI::makeOwned<VSTGUI::CTextLabel>(size, text.c_str());
    label->setFont(VSTGUI::kNormalFont);
    label->setFontColor(kLightGrey);
    label->setBackColor(VSTGUI::kBlackCColor);
    label->setFrameColor(VSTGUI::kBlackCColor);
    label->setHoriAlign(VSTGUI::kLeftText);
    return label;
}

Picture pictureOf(VSTGUI::CBitmap& bitmap, const Area& area) {
    const auto access = VSTGUI::owned(VSTGUI::CBitmapPixelAccess::create(&bitmap));
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < area.height; ++y) {
        for (int x = 0; x < area.width; ++x) {
            VSTGUI::CColor colour;
            access->setPosition(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y));
            access->getColor(colour);
            pixels.push_back(std::uint32_t{colour.red} << 16U | std::uint32_t{colour.green} << 8U |
                             colour.blue);
        }
    }
    return {area.width, area.height, std::move(pixels)};
}

} // namespace

Picture labelPicture(const std::string& text) {
    static const Library library;
    const Area area = statusArea();
    const VSTGUI::CPoint size(area.width, area.height);
    const auto context = VSTGUI::COffscreenContext::create(size);
    context->beginDraw();
    makeLabel(VSTGUI::CRect(VSTGUI::CPoint(), size), text)->draw(context);
    context->endDraw();
    return pictureOf(*context->getBitmap(), area);
}

} // namespace varno::test
