#include "Artwork/Painter.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace varno {
namespace {

void checkCairo(cairo_status_t status, const std::string& what) {
    if (status != CAIRO_STATUS_SUCCESS) {
        throw std::runtime_error(what + ": " + cairo_status_to_string(status));
    }
}

struct GradientDestroyer {
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};
using Gradient = std::unique_ptr<cairo_pattern_t, GradientDestroyer>;

Gradient downwards(double fromY, double toY, Color top, Color bottom) {
    Gradient pattern(cairo_pattern_create_linear(0, fromY, 0, toY));
    cairo_pattern_add_color_stop_rgb(pattern.get(), 0, top.red, top.green, top.blue);
    cairo_pattern_add_color_stop_rgb(pattern.get(), 1, bottom.red, bottom.green, bottom.blue);
    return pattern;
}

// The pixels that a length in pixels touches; what a division leaves beyond a whole number does not count.
int wholePixels(double length) {
    constexpr double kRest = 1e-6;
    return static_cast<int>(std::ceil(length - kRest));
}

// Share of the light that a full shadow takes, and that an edge towards the light adds.
constexpr double kShadowStrength = 0.55;
constexpr double kShineStrength = 0.14;
// Pixels that a shadow lies below its body, for each pixel of the body's height.
constexpr double kShadowFall = 0.6;
// Width of an edge, in pixels.
constexpr double kEdgeWidth = 1.0;

} // namespace

// Images.

Canvas::Canvas(double width, double height, double scale)
    : mSurface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, wholePixels(width * scale),
                                          wholePixels(height * scale))),
      mCairo(cairo_create(mSurface.get())) {
    checkCairo(cairo_status(mCairo.get()), "cannot make an image");
    cairo_scale(mCairo.get(), scale, scale);
}

void Canvas::write(const std::filesystem::path& file) const {
    checkCairo(cairo_status(mCairo.get()), "cannot draw " + file.string());
    checkCairo(cairo_surface_write_to_png(mSurface.get(), file.c_str()), "cannot write " + file.string());
}

// Shapes and lettering.

double Painter::scale() const {
    double x = 1.0;
    double y = 0.0;
    cairo_user_to_device_distance(mCairo, &x, &y);
    return x;
}

double Painter::snapped(double length) const {
    return std::round(length * scale()) / scale();
}

Box Painter::placed(const Box& box) const {
    return {snapped(box.x), snapped(box.y), box.width, box.height};
}

Box Painter::covered(const Box& box) const {
    return {box.x, box.y, wholePixels(box.width * scale()) / scale(),
            wholePixels(box.height * scale()) / scale()};
}

void Painter::box(const Box& box) {
    cairo_new_path(mCairo);
    cairo_rectangle(mCairo, box.x, box.y, box.width, box.height);
}

void Painter::roundedBox(const Box& box, double radius) {
    cairo_new_path(mCairo);
    cairo_arc(mCairo, box.right() - radius, box.y + radius, radius, dialAngle(0), dialAngle(90));
    cairo_arc(mCairo, box.right() - radius, box.bottom() - radius, radius, dialAngle(90), dialAngle(180));
    cairo_arc(mCairo, box.x + radius, box.bottom() - radius, radius, dialAngle(180), dialAngle(270));
    cairo_arc(mCairo, box.x + radius, box.y + radius, radius, dialAngle(270), dialAngle(360));
    cairo_close_path(mCairo);
}

void Painter::circle(Point center, double radius) {
    cairo_new_path(mCairo);
    cairo_arc(mCairo, center.x, center.y, radius, 0, 2 * std::numbers::pi);
}

void Painter::dialArc(Point center, double radius, double fromDegrees, double toDegrees) {
    cairo_new_path(mCairo);
    cairo_arc(mCairo, center.x, center.y, radius, dialAngle(fromDegrees), dialAngle(toDegrees));
}

void Painter::dialRay(Point center, double inner, double outer, double degrees) {
    const SavedState saved(*this);
    cairo_translate(mCairo, center.x, center.y);
    cairo_rotate(mCairo, radians(degrees));
    line({{0, -inner}, {0, -outer}});
}

void Painter::line(const std::vector<Point>& points) {
    cairo_new_path(mCairo);
    for (const Point& point : points) {
        cairo_line_to(mCairo, point.x, point.y);
    }
}

void Painter::crispLine(const std::vector<Point>& points, double width, Color color) {
    const double pixels = std::max(1.0, std::round(width * scale()));
    // The middle of an odd width lies within a pixel, that of an even one between two.
    const double shift = std::fmod(pixels, 2.0) / 2 / scale();
    const SavedState saved(*this);
    cairo_set_line_cap(mCairo, CAIRO_LINE_CAP_SQUARE);
    cairo_new_path(mCairo);
    for (const Point& point : points) {
        cairo_line_to(mCairo, snapped(point.x - shift) + shift, snapped(point.y - shift) + shift);
    }
    stroke(color, pixels / scale());
}

void Painter::fill(Color color, double alpha) {
    cairo_set_source_rgba(mCairo, color.red, color.green, color.blue, alpha);
    cairo_fill(mCairo);
}

void Painter::stroke(Color color, double width, double alpha) {
    cairo_set_source_rgba(mCairo, color.red, color.green, color.blue, alpha);
    cairo_set_line_width(mCairo, width);
    cairo_stroke(mCairo);
}

void Painter::fillDown(double fromY, double toY, Color top, Color bottom) {
    cairo_set_source(mCairo, downwards(fromY, toY, top, bottom).get());
    cairo_fill(mCairo);
}

void Painter::fillSoftly(Point center, double inner, double outer, Color color, double alpha) {
    const Gradient pattern(cairo_pattern_create_radial(center.x, center.y, inner, center.x, center.y, outer));
    cairo_pattern_add_color_stop_rgba(pattern.get(), 0, color.red, color.green, color.blue, alpha);
    cairo_pattern_add_color_stop_rgba(pattern.get(), 1, color.red, color.green, color.blue, 0);
    circle(center, outer);
    cairo_set_source(mCairo, pattern.get());
    cairo_fill(mCairo);
}

void Painter::text(const std::string& text, const TextStyle& style, Point anchor, Align align, Color color) {
    TextLine line(mCairo, mTypeface, style, text);
    line.place(anchor, align);
    mTexts.push_back({text, line.ink(), color});
    if (mLettering) {
        line.addPath();
        fill(color);
    }
}

// Light.

void castShadow(Painter& painter, Point center, double radius, double height) {
    const Point fallen{center.x, center.y + height * kShadowFall};
    painter.fillSoftly(fallen, radius - height, radius + height, palette::kBlack, kShadowStrength);
}

void castShadow(Painter& painter, const Box& body, double cornerRadius, double height) {
    constexpr int kLayers = 6;
    for (int layer = 0; layer < kLayers; ++layer) {
        const double spread = height * (1.0 - 2.0 * layer / (kLayers - 1)) / 2;
        Box fallen = body.inset(-spread);
        fallen.y += height * kShadowFall;
        painter.roundedBox(fallen, cornerRadius + spread);
        painter.fill(palette::kBlack, kShadowStrength / kLayers);
    }
}

void recess(Painter& painter, const Box& hollow, double cornerRadius, Color floor) {
    painter.roundedBox({hollow.x, hollow.y + kEdgeWidth, hollow.width, hollow.height}, cornerRadius);
    painter.fill(palette::kWhite, kShineStrength);
    painter.roundedBox(hollow, cornerRadius);
    painter.fill(between(floor, palette::kBlack, kShadowStrength));
    painter.roundedBox({hollow.x, hollow.y + kEdgeWidth, hollow.width, hollow.height - kEdgeWidth},
                       cornerRadius);
    painter.fill(floor);
}

void raised(Painter& painter, const Box& body, double cornerRadius, Color top, Color bottom) {
    painter.roundedBox(body, cornerRadius);
    painter.fill(between(top, palette::kWhite, kShineStrength * 2));
    painter.roundedBox({body.x, body.y + kEdgeWidth, body.width, body.height - kEdgeWidth}, cornerRadius);
    painter.fillDown(body.y, body.bottom(), top, bottom);
}

} // namespace varno
