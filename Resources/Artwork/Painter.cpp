#include "Artwork/Painter.h"

#include <cmath>
#include <memory>
#include <numbers>

namespace varno {
namespace {

struct PatternDestroyer {
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};
using Pattern = std::unique_ptr<cairo_pattern_t, PatternDestroyer>;

Pattern downwards(double fromY, double toY, Color top, Color bottom) {
    Pattern pattern(cairo_pattern_create_linear(0, fromY, 0, toY));
    cairo_pattern_add_color_stop_rgb(pattern.get(), 0, top.red, top.green, top.blue);
    cairo_pattern_add_color_stop_rgb(pattern.get(), 1, bottom.red, bottom.green, bottom.blue);
    return pattern;
}

} // namespace

double Painter::scale() const {
    double x = 1.0;
    double y = 0.0;
    cairo_user_to_device_distance(mCairo, &x, &y);
    return x;
}

double Painter::snapped(double length) const {
    return std::round(length * scale()) / scale();
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
    const Pattern pattern(cairo_pattern_create_radial(center.x, center.y, inner, center.x, center.y, outer));
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

} // namespace varno
