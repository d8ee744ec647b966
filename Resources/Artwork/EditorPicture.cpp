#include "Artwork/EditorPicture.h"

#include "Artwork/Artwork.h"
#include "Artwork/Controls.h"
#include "DemoGain_ValueText.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace varno {
namespace {

// The preview.

// A parameter's value in the preview, from 0 to 1; those that are not listed show 0.
struct Shown {
    std::string_view id;
    double value;
};

constexpr Shown kShown[] = {
    {"Gain", 0.62}, {"Volume", 0.45}, {"Atk", 0.3},    {"Rls", 0.5},   {"Hot", 0.78},
    {"HP", 1.0},    {"ASw", 1.0},     {"LinkSw", 1.0}, {"Ratio", 0.5},
};
static_assert(std::ranges::all_of(kShown,
                                  [](const Shown& shown) { return DemoGain_FindParameter(shown.id); }));
constexpr double kShownReductionDB = 7.0;

double shownValue(std::string_view id) {
    for (const Shown& shown : kShown) {
        if (shown.id == id) {
            return shown.value;
        }
    }
    return 0.0;
}

// As the editor's meter does it: whole steps, dark ones from the left.
void drawShownMeter(Painter& painter, const Box& meter) {
    constexpr int kSteps = DemoGain_ViewLayout::kMeterSteps;
    const double dark = std::floor(kSteps * (1.0 - litPart(kShownReductionDB)) + 0.5) / kSteps * meter.width;
    const SavedState saved(painter);
    drawPicture(painter, DemoGain_ViewLayout::Art::kMeterOff, 0);
    painter.box({dark, 0, meter.width - dark, meter.height});
    cairo_clip(painter.cairo());
    drawPicture(painter, DemoGain_ViewLayout::Art::kMeterOn, 0);
}

void drawShownControl(Painter& painter, const DemoGain_ViewLayout::Control& control) {
    const SavedState saved(painter);
    const Box box = controlBox(control);
    cairo_translate(painter.cairo(), box.x, box.y);
    if (control.mKind == DemoGain_ViewLayout::Kind::kMeter) {
        drawShownMeter(painter, box);
        return;
    }
    const int last = DemoGain_ViewLayout::BitmapOf(control.mArt).mPictures - 1;
    drawPicture(painter, control.mArt, static_cast<int>(std::lround(shownValue(control.mID) * last)));
}

void drawShownStatus(Painter& painter) {
    constexpr Color kStatusText = rgb(0xE6E6E6);
    constexpr TextStyle kStyle = {Weight::kRegular, 12.0, 0.0};
    constexpr double kMargin = 2.0;
    constexpr double kBaseline = 13.0;
    const SDemoGain_Parameter& changed = *DemoGain_FindParameter("Hot");
    const std::string status = DemoGain_ValueText::WriteStatus(changed.mStatus, changed.mStatusScale,
                                                               static_cast<float>(shownValue("Hot")));
    painter.box(statusBox());
    painter.fill(palette::kBlack);
    painter.text(status, kStyle, {statusBox().x + kMargin, statusBox().y + kBaseline}, Align::kLeft,
                 kStatusText);
}

// Numbers on a picture.

// No colour of the editor: a number is not taken for one of its lights.
constexpr Color kBadge = rgb(0x7FD4FF);
constexpr Color kBadgeRim = rgb(0x0B2A3A);
constexpr double kBadgeRadius = 8.0;
constexpr double kBadgeRimWidth = 1.5;
// From a control's corner to the middle of its number: on the edge, so that the control stays in sight.
constexpr double kBadgeInwards = 3.0;

class PngPicture {
public:
    explicit PngPicture(const std::filesystem::path& file)
        : mSurface(cairo_image_surface_create_from_png(file.c_str())) {
        if (cairo_surface_status(mSurface) != CAIRO_STATUS_SUCCESS) {
            cairo_surface_destroy(mSurface);
            // Cairo reports a file that is no PNG as lack of memory.
            throw std::runtime_error(file.string() + ": cannot be read as a PNG picture");
        }
    }
    PngPicture(const PngPicture&) = delete;
    PngPicture& operator=(const PngPicture&) = delete;
    ~PngPicture() { cairo_surface_destroy(mSurface); }

    cairo_surface_t* surface() const { return mSurface; }
    int width() const { return cairo_image_surface_get_width(mSurface); }
    int height() const { return cairo_image_surface_get_height(mSurface); }

private:
    cairo_surface_t* mSurface;
};

// Pixels of the picture to one of the view; 0 where it is not the view at a whole scale.
int editorScale(const PngPicture& picture) {
    const auto& view = DemoGain_ViewLayout::BitmapOf(DemoGain_ViewLayout::Art::kBackground);
    const int scale = picture.width() / view.mWidth;
    return picture.width() == scale * view.mWidth && picture.height() == scale * view.mHeight ? scale : 0;
}

void drawBadge(Painter& painter, const Box& control, std::size_t number) {
    const Point center = {control.x + kBadgeInwards, control.y + kBadgeInwards};
    painter.circle(center, kBadgeRadius);
    painter.fill(kBadge);
    painter.circle(center, kBadgeRadius);
    painter.stroke(kBadgeRim, kBadgeRimWidth);
    const TextStyle& style = lettering::kValue;
    painter.text(std::to_string(number), style, {center.x, center.y + lettering::halfCapitals(style)},
                 Align::kCenter, kBadgeRim);
}

} // namespace

Canvas drawPreview(const Typeface& typeface, int scale) {
    const Box view = viewBox();
    Canvas canvas(static_cast<int>(view.width), static_cast<int>(view.height), scale);
    Painter painter(canvas.cairo(), typeface);
    drawPicture(painter, DemoGain_ViewLayout::Art::kBackground, 0);
    drawShownStatus(painter);
    for (const DemoGain_ViewLayout::Control& control : DemoGain_ViewLayout::kControls) {
        drawShownControl(painter, control);
    }
    return canvas;
}

Canvas drawNumbered(const Typeface& typeface, const std::filesystem::path& file) {
    const PngPicture picture(file);
    const int scale = editorScale(picture);
    if (scale == 0) {
        throw std::runtime_error(file.string() + " is no picture of the whole editor: it has another size");
    }
    Canvas canvas(picture.width() / scale, picture.height() / scale, scale);
    Painter painter(canvas.cairo(), typeface);
    {
        const SavedState saved(painter);
        cairo_scale(canvas.cairo(), 1.0 / scale, 1.0 / scale);
        cairo_set_source_surface(canvas.cairo(), picture.surface(), 0, 0);
        cairo_paint(canvas.cairo());
    }
    for (std::size_t i = 0; i < std::size(DemoGain_ViewLayout::kControls); ++i) {
        drawBadge(painter, controlBox(DemoGain_ViewLayout::kControls[i]), i + 1);
    }
    return canvas;
}

} // namespace varno
