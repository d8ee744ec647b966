/// Points and boxes, in pixels at scale 1; x runs to the right, y downwards.
#ifndef VARNO_RESOURCES_ARTWORK_GEOMETRY_H
#define VARNO_RESOURCES_ARTWORK_GEOMETRY_H

#include <numbers>

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

} // namespace varno

#endif
