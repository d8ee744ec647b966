#include "Artwork/Switch.h"

#include "Artwork/Light.h"
#include "Artwork/Placement.h"

namespace varno {
namespace {

constexpr Box kPicture = pictureBox(DemoGain_ViewLayout::Art::Switch);
// Room for the shadow around the hollow, and between hollow and slider, in pixels.
constexpr double kMargin = 2.0;
constexpr double kGap = 2.0;
constexpr double kCorner = 4.0;
constexpr double kSliderCorner = 3.0;
constexpr double kSliderHeight = 3.0;
constexpr Box kHollow = kPicture.inset(kMargin);
constexpr double kSliderWidth = 16.0;

Box sliderBox(bool on) {
    const Box room = kHollow.inset(kGap);
    return {on ? room.right() - kSliderWidth : room.x, room.y, kSliderWidth, room.height};
}

// What the slider leaves free shows "I" when on and "O" when off.
void drawMark(Painter& painter, bool on) {
    constexpr double kStroke = 2.0;
    constexpr double kSize = 3.5;
    const Box slider = sliderBox(on);
    const double y = kHollow.center().y;
    const double x = on ? (kHollow.x + slider.x) / 2 : (slider.right() + kHollow.right()) / 2;
    if (on) {
        painter.line({{x, y - kSize}, {x, y + kSize}});
        painter.stroke(palette::kInkOnLit, kStroke);
    } else {
        painter.circle({x, y}, kSize - kStroke / 4);
        painter.stroke(palette::kLine, kStroke * 0.75);
    }
}

void drawSlider(Painter& painter, bool on) {
    constexpr int kGrips = 3;
    constexpr double kGripSpacing = 3.0;
    constexpr double kGripMargin = 5.0;
    constexpr double kGripAlpha = 0.35;
    const Box slider = sliderBox(on);
    castShadow(painter, slider, kSliderCorner, kSliderHeight);
    raised(painter, slider, kSliderCorner, palette::kMetalLight, palette::kMetalDark);
    for (int grip = 0; grip < kGrips; ++grip) {
        const double x = slider.center().x + (grip - (kGrips - 1) / 2.0) * kGripSpacing - 0.5;
        painter.box({x, slider.y + kGripMargin, 1, slider.height - 2 * kGripMargin});
        painter.fill(palette::kBlack, kGripAlpha);
    }
}

} // namespace

void drawSwitch(Painter& painter, int picture) {
    const bool on = picture == 1;
    recess(painter, kHollow, kCorner, on ? palette::kLit : palette::kRecess);
    drawMark(painter, on);
    drawSlider(painter, on);
}

} // namespace varno
