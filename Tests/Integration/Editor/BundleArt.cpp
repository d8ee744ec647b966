#include "Tests/Integration/Editor/BundleArt.h"

#include "Tests/Integration/Editor/EditorWindow.h"
#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/coffscreencontext.h"
#include "vstgui/lib/controls/ctextlabel.h"
#include "vstgui/lib/vstguiinit.h"

#include <cairo.h>
#include <cstring>
#include <memory>
#include <stdexcept>

namespace varno::test {

namespace layout = DemoGain_ViewLayout;

namespace {

struct DestroySurface {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
using Surface = std::unique_ptr<cairo_surface_t, DestroySurface>;

Surface openBitmap(const std::filesystem::path& resources, const layout::Bitmap& bitmap) {
    const std::filesystem::path file = resources / bitmap.mFile;
    Surface surface(cairo_image_surface_create_from_png(file.c_str()));
    if (cairo_surface_status(surface.get()) != CAIRO_STATUS_SUCCESS ||
        cairo_image_surface_get_width(surface.get()) != bitmap.mWidth ||
        cairo_image_surface_get_height(surface.get()) != bitmap.mHeight * bitmap.mPictures) {
        throw std::runtime_error(file.string() + ": missing, or of another size than the layout says");
    }
    return surface;
}

// The upper colour, premultiplied, over an opaque lower one.
std::uint32_t blend(std::uint32_t upper, std::uint32_t lower) {
    constexpr std::uint32_t kOpaque = 0xFF;
    constexpr std::uint32_t kHalf = kOpaque / 2;
    const std::uint32_t clear = kOpaque - (upper >> 24U);
    std::uint32_t colour = 0;
    for (const std::uint32_t shift : {0U, 8U, 16U}) {
        const std::uint32_t behind = (((lower >> shift) & kOpaque) * clear + kHalf) / kOpaque;
        colour |= (((upper >> shift) & kOpaque) + behind) << shift;
    }
    return colour;
}

} // namespace

BundleArt::BundleArt(const std::filesystem::path& resources) {
    for (const layout::Bitmap& bitmap : layout::kBitmaps) {
        const Surface surface = openBitmap(resources, bitmap);
        const int height = bitmap.mHeight * bitmap.mPictures;
        const bool hasAlpha = cairo_image_surface_get_format(surface.get()) == CAIRO_FORMAT_ARGB32;
        std::vector<Pixel>& pixels = mBitmaps[bitmap.mArt];
        for (int y = 0; y < height; ++y) {
            const unsigned char* const row =
                cairo_image_surface_get_data(surface.get()) +
                static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(surface.get());
            for (int x = 0; x < bitmap.mWidth; ++x) {
                constexpr std::uint32_t kOpaque = 0xFF000000;
                std::uint32_t value = 0;
                std::memcpy(&value, row + static_cast<std::ptrdiff_t>(x) * 4, sizeof value);
                pixels.push_back({hasAlpha ? value : value | kOpaque});
            }
        }
    }
}

Picture BundleArt::background(const Area& area) const {
    const layout::Bitmap& bitmap = layout::BitmapOf(layout::Art::kBackground);
    std::vector<std::uint32_t> pixels;
    for (const Pixel& pixel : mBitmaps.at(layout::Art::kBackground)) {
        pixels.push_back(blend(pixel.premultiplied, 0));
    }
    return Picture(bitmap.mWidth, bitmap.mHeight, std::move(pixels)).part(area);
}

Picture BundleArt::control(const layout::Control& control, int picture) const {
    return this->control(control, control.mArt, picture);
}

Picture BundleArt::control(const layout::Control& control, layout::Art art, int picture) const {
    const Area area = areaOf(control);
    const Picture behind = background(area);
    const std::vector<Pixel>& bitmap = mBitmaps.at(art);
    const int firstRow = picture * area.height;
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < area.height; ++y) {
        for (int x = 0; x < area.width; ++x) {
            const auto at = static_cast<std::size_t>((firstRow + y) * area.width + x);
            pixels.push_back(blend(bitmap.at(at).premultiplied, behind.at({x, y})));
        }
    }
    return {area.width, area.height, std::move(pixels)};
}

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
