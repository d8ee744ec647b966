#include "Artwork/EditorPicture.h"

#include "Artwork/Artwork.h"
#include "Artwork/Controls.h"
#include "DemoGain_ValueText.h"

#include <cmath>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace varno {
namespace {

// The editor with its controls.

double shownValue(const ShownEditor& shown, std::string_view id) {
    const auto found = shown.values.find(id);
    return found != shown.values.end() ? found->second : 0.0;
}

// Draws one picture of a bitmap as it lies in the bitmap's file, between two columns in pixels of the editor.
void showPicture(Painter& painter, const Typeface& typeface, DemoGain_ViewLayout::Art art, int picture,
                 const Box& place, double left, double right) {
    const Canvas canvas = drawOne(DemoGain_ViewLayout::BitmapOf(art), typeface, painter.scale(), picture);
    const SavedState saved(painter);
    painter.box(
        {left, place.y, right - left, cairo_image_surface_get_height(canvas.surface()) / painter.scale()});
    cairo_clip(painter.cairo());
    cairo_translate(painter.cairo(), place.x, place.y);
    cairo_scale(painter.cairo(), 1 / painter.scale(), 1 / painter.scale());
    cairo_set_source_surface(painter.cairo(), canvas.surface(), 0, 0);
    cairo_paint(painter.cairo());
}

// As the editor's meter does it: whole steps, dark ones from the left.
void showMeter(Painter& painter, const Typeface& typeface, const Box& meter, double reductionDB) {
    constexpr int kSteps = DemoGain_ViewLayout::kMeterSteps;
    const double lit = std::floor(kSteps * (1.0 - litPart(reductionDB)) + 0.5) / kSteps * meter.width;
    const Box place = painter.placed(meter);
    const double border = painter.snapped(meter.x + lit);
    showPicture(painter, typeface, DemoGain_ViewLayout::Art::kMeterOff, 0, place, place.x, border);
    showPicture(painter, typeface, DemoGain_ViewLayout::Art::kMeterOn, 0, place, border,
                painter.snapped(meter.right()));
}

void showControl(Painter& painter, const Typeface& typeface, const DemoGain_ViewLayout::Control& control,
                 const ShownEditor& shown) {
    const Box box = controlBox(control);
    if (control.mKind == DemoGain_ViewLayout::Kind::kMeter) {
        showMeter(painter, typeface, box, shown.reductionDB);
        return;
    }
    const int last = DemoGain_ViewLayout::BitmapOf(control.mArt).mPictures - 1;
    const Box place = painter.placed(box);
    showPicture(painter, typeface, control.mArt,
                static_cast<int>(std::lround(shownValue(shown, control.mID) * last)), place, place.x,
                place.right() + 1);
}

void showStatus(Painter& painter, const std::string& status) {
    constexpr Color kStatusText = rgb(0xE6E6E6);
    constexpr TextStyle kStyle = {Weight::kRegular, 12.0, 0.0};
    constexpr double kMargin = 2.0;
    constexpr double kBaseline = 13.0;
    painter.box(statusBox());
    painter.fill(palette::kBlack);
    painter.text(status, kStyle, {statusBox().x + kMargin, statusBox().y + kBaseline}, Align::kLeft,
                 kStatusText);
}

// What the preview shows.
ShownEditor previewed() {
    constexpr double kHot = 0.78;
    const SDemoGain_Parameter& changed = *DemoGain_FindParameter("Hot");
    return {.values = {{"Gain", 0.62},
                       {"Volume", 0.45},
                       {"Atk", 0.3},
                       {"Rls", 0.5},
                       {"Hot", kHot},
                       {"HP", 1.0},
                       {"ASw", 1.0},
                       {"LinkSw", 1.0},
                       {"Ratio", 0.5}},
            .reductionDB = 7.0,
            .status = DemoGain_ValueText::WriteStatus(changed.mStatus, changed.mStatusScale,
                                                      static_cast<float>(kHot))};
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

Canvas drawEditor(const Typeface& typeface, double scale, const ShownEditor& shown) {
    const Box view = viewBox();
    Canvas canvas(view.width, view.height, scale);
    Painter painter(canvas.cairo(), typeface);
    drawPicture(painter, DemoGain_ViewLayout::Art::kBackground, 0);
    showStatus(painter, shown.status);
    for (const DemoGain_ViewLayout::Control& control : DemoGain_ViewLayout::kControls) {
        showControl(painter, typeface, control, shown);
    }
    return canvas;
}

Canvas drawPreview(const Typeface& typeface, double scale) {
    return drawEditor(typeface, scale, previewed());
}

Canvas drawNumbered(const Typeface& typeface, const std::filesystem::path& file) {
    const PngPicture picture(file);
    const int scale = editorScale(picture);
    if (scale == 0) {
        throw std::runtime_error(file.string() + " is no picture of the whole editor: it has another size");
    }
    Canvas canvas(viewBox().width, viewBox().height, scale);
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
