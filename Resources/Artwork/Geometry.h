/// Points and boxes, and where the controls are. Lengths are pixels at scale 1; x grows to the right, y
/// downwards.
#ifndef VARNO_RESOURCES_ARTWORK_GEOMETRY_H
#define VARNO_RESOURCES_ARTWORK_GEOMETRY_H

#include "DemoGain_ViewLayout.h"

#include <numbers>
#include <string_view>

namespace varno {

struct Point {
    double x;
    double y;
};

struct Box {
    double x;
    double y;
    double width;
    double height;

    constexpr double right() const { return x + width; }
    constexpr double bottom() const { return y + height; }
    constexpr Point center() const { return {x + width / 2, y + height / 2}; }
    /// Smaller by `margin` on every side; larger where it is negative.
    constexpr Box inset(double margin) const {
        return {x + margin, y + margin, width - 2 * margin, height - 2 * margin};
    }
    constexpr bool overlaps(const Box& other) const {
        return x < other.right() && other.x < right() && y < other.bottom() && other.y < bottom();
    }
    constexpr bool contains(const Box& other) const {
        return x <= other.x && y <= other.y && right() >= other.right() && bottom() >= other.bottom();
    }
};

/// Degrees as radians. [any]
constexpr double radians(double degrees) {
    return degrees * std::numbers::pi / 180.0;
}

/// The angle, in cairo's radians (clockwise from the right), of a dial's degrees (clockwise from the top).
/// [any]
constexpr double dialAngle(double degrees) {
    return radians(degrees - 90.0);
}

/// One picture of a bitmap, with its corner at the origin. [any]
constexpr Box pictureBox(DemoGain_ViewLayout::Art art) {
    const auto& bitmap = DemoGain_ViewLayout::BitmapOf(art);
    return {0, 0, static_cast<double>(bitmap.mWidth), static_cast<double>(bitmap.mHeight)};
}

/// A control in the view. [any]
constexpr Box controlBox(const DemoGain_ViewLayout::Control& control) {
    const Box picture = pictureBox(control.mArt);
    return {static_cast<double>(control.mX), static_cast<double>(control.mY), picture.width, picture.height};
}

/// The control of this identifier, which must be one of the layout's table. [any]
consteval Box controlBox(std::string_view id) {
    for (const auto& control : DemoGain_ViewLayout::kControls) {
        if (id == control.mID) {
            return controlBox(control);
        }
    }
    throw "no control has this identifier";
}

/// The whole view. [any]
constexpr Box viewBox() {
    return pictureBox(DemoGain_ViewLayout::Art::kBackground);
}

/// The line of text that the view draws itself. [any]
constexpr Box statusBox() {
    const auto& edges = DemoGain_ViewLayout::kStatusLabel;
    return {static_cast<double>(edges.mLeft), static_cast<double>(edges.mTop),
            static_cast<double>(edges.mRight - edges.mLeft), static_cast<double>(edges.mBottom - edges.mTop)};
}

} // namespace varno

#endif
