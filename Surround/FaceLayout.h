/// The controls of the editor's face, as places for gestures. Pure functions over the view's layout; lengths
/// are pixels at scale 1 from the face's upper left corner.
#ifndef VARNO_SURROUND_FACELAYOUT_H
#define VARNO_SURROUND_FACELAYOUT_H

#include "DemoGain_ViewLayout.h"
#include "Surround/BarLayout.h"

#include <algorithm>
#include <string_view>

namespace varno::FaceLayout {

using DemoGain_ViewLayout::Control;
using DemoGain_ViewLayout::Kind;

/// The size of the face.
inline constexpr int kWidth = DemoGain_ViewLayout::BitmapOf(DemoGain_ViewLayout::Art::kBackground).mWidth;
inline constexpr int kHeight = DemoGain_ViewLayout::BitmapOf(DemoGain_ViewLayout::Art::kBackground).mHeight;

/// The rectangle of a control. [any]
constexpr Box boxOf(const Control& control) {
    const auto& picture = DemoGain_ViewLayout::BitmapOf(control.mArt);
    return {control.mX, control.mY, picture.mWidth, picture.mHeight};
}

/// Where its name is lettered; empty where it has none. [any]
constexpr Box legendOf(const Control& control) {
    const auto edges = DemoGain_ViewLayout::LegendOf(control);
    return {edges.mLeft, edges.mTop, edges.mRight - edges.mLeft, edges.mBottom - edges.mTop};
}

/// Whether a control changes a parameter. [any]
constexpr bool isOfParameter(const Control& control) {
    return control.mKind == Kind::kKnob || control.mKind == Kind::kOnOffButton ||
           control.mKind == Kind::kRatioSwitch;
}

/// The control of a parameter or, by the name that hosts know it by, another one; null where there is none.
/// [any]
constexpr const Control* controlOf(std::string_view id) {
    const auto* const found = std::ranges::find_if(DemoGain_ViewLayout::kControls,
                                                   [&](const Control& control) { return id == control.mID; });
    return found == DemoGain_ViewLayout::kControls.end() ? nullptr : found;
}

/// The control of a parameter at a point; null where there is none. [any]
constexpr const Control* parameterControlAt(int x, int y) {
    const auto* const found =
        std::ranges::find_if(DemoGain_ViewLayout::kControls, [&](const Control& control) {
            return isOfParameter(control) && boxOf(control).contains(x, y);
        });
    return found == DemoGain_ViewLayout::kControls.end() ? nullptr : found;
}

} // namespace varno::FaceLayout

#endif
