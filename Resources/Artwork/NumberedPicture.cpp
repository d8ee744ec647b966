#include "Artwork/NumberedPicture.h"

#include "Artwork/Lettering.h"
#include "Artwork/Painter.h"
#include "Artwork/Placement.h"

#include <iterator>
#include <stdexcept>

namespace varno {
namespace {

// No colour of the editor: a number is not taken for one of its lights.
constexpr Color kBadge = rgb(0x7FD4FF);
constexpr Color kBadgeRim = rgb(0x0B2A3A);
constexpr double kBadgeRadius = 8.0;
constexpr double kRimWidth = 1.5;
// From a control's corner to the middle of its number: on the edge, so that the control stays in sight.
constexpr double kInwards = 3.0;

class Picture {
public:
    explicit Picture(const std::filesystem::path& file)
        : mSurface(cairo_image_surface_create_from_png(file.c_str())) {
        if (cairo_surface_status(mSurface) != CAIRO_STATUS_SUCCESS) {
            cairo_surface_destroy(mSurface);
            // Cairo calls what is no PNG lack of memory.
            throw std::runtime_error(file.string() + ": cannot be read as a PNG picture");
        }
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    ~Picture() { cairo_surface_destroy(mSurface); }

    cairo_surface_t* surface() const { return mSurface; }
    int width() const { return cairo_image_surface_get_width(mSurface); }
    int height() const { return cairo_image_surface_get_height(mSurface); }

private:
    cairo_surface_t* mSurface;
};

// Pixels of the picture to one of the view; 0 where it is not the view at a whole scale.
int scaleOf(const Picture& picture) {
    const auto& view = DemoGain_ViewLayout::BitmapOf(DemoGain_ViewLayout::Art::Background);
    const int scale = picture.width() / view.mWidth;
    return picture.width() == scale * view.mWidth && picture.height() == scale * view.mHeight ? scale : 0;
}

void drawNumber(Painter& painter, const Box& control, std::size_t number) {
    const Point center = {control.x + kInwards, control.y + kInwards};
    painter.circle(center, kBadgeRadius);
    painter.fill(kBadge);
    painter.circle(center, kBadgeRadius);
    painter.stroke(kBadgeRim, kRimWidth);
    const TextStyle& style = lettering::kValue;
    painter.text(std::to_string(number), style, {center.x, center.y + lettering::halfCapitals(style)},
                 Align::Center, kBadgeRim);
}

} // namespace

Canvas drawNumbered(const Typeface& typeface, const std::filesystem::path& file) {
    const Picture picture(file);
    const int scale = scaleOf(picture);
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
        drawNumber(painter, controlBox(DemoGain_ViewLayout::kControls[i]), i + 1);
    }
    return canvas;
}

} // namespace varno
