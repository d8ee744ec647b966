/// Where the controls lie, as boxes.
#ifndef VARNO_RESOURCES_ARTWORK_PLACEMENT_H
#define VARNO_RESOURCES_ARTWORK_PLACEMENT_H

#include "Artwork/Geometry.h"
#include "DemoGain_ViewLayout.h"

#include <string_view>

namespace varno {

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

/// The control of this identifier, which must be one of the table. [any]
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
    return pictureBox(DemoGain_ViewLayout::Art::Background);
}

/// The line of text that the view draws itself. [any]
constexpr Box statusBox() {
    const auto& edges = DemoGain_ViewLayout::kStatusLabel;
    return {static_cast<double>(edges.mLeft), static_cast<double>(edges.mTop),
            static_cast<double>(edges.mRight - edges.mLeft), static_cast<double>(edges.mBottom - edges.mTop)};
}

} // namespace varno

#endif
