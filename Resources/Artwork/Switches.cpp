// Switches that slide, the keys of the ratio switch and the preset buttons.
#include "Artwork/Controls.h"

#include "DemoGain_Coefficients.h"

#include <iterator>

namespace varno {
namespace {

// The switch.

constexpr Box kSwitchPicture = pictureBox(DemoGain_ViewLayout::Art::kSwitch);
// Room for the shadow around the hollow, and between hollow and slider, in pixels.
constexpr double kSwitchMargin = 2.0;
constexpr double kSliderGap = 2.0;
constexpr double kSwitchCorner = 4.0;
constexpr double kSliderCorner = 3.0;
constexpr double kSliderHeight = 3.0;
constexpr Box kSwitchHollow = kSwitchPicture.inset(kSwitchMargin);
constexpr double kSliderWidth = 16.0;

Box sliderBox(bool on) {
    const Box room = kSwitchHollow.inset(kSliderGap);
    return {on ? room.right() - kSliderWidth : room.x, room.y, kSliderWidth, room.height};
}

// What the slider leaves free shows "I" when on and "O" when off.
void drawMark(Painter& painter, bool on) {
    constexpr double kStroke = 2.0;
    constexpr double kSize = 3.5;
    const Box slider = sliderBox(on);
    const double y = kSwitchHollow.center().y;
    const double x = on ? (kSwitchHollow.x + slider.x) / 2 : (slider.right() + kSwitchHollow.right()) / 2;
    if (on) {
        painter.line({{x, y - kSize}, {x, y + kSize}});
        painter.stroke(palette::kInkOnLit, kStroke);
    } else {
        painter.circle({x, y}, kSize - kStroke / 4);
        painter.stroke(palette::kLine, kStroke * 0.75);
    }
}

// Whatever the hollow's colour, a dark edge keeps the slider apart from it.
void drawSlider(Painter& painter, bool on) {
    constexpr double kRim = 1.0;
    constexpr int kGrips = 3;
    constexpr double kGripSpacing = 3.0;
    constexpr double kGripMargin = 5.0;
    constexpr double kGripAlpha = 0.35;
    const Box slider = sliderBox(on);
    castShadow(painter, slider, kSliderCorner, kSliderHeight);
    painter.roundedBox(slider.inset(-kRim), kSliderCorner + kRim);
    painter.fill(palette::kRecess);
    raised(painter, slider, kSliderCorner, palette::kMetalLight, palette::kMetalDark);
    for (int grip = 0; grip < kGrips; ++grip) {
        const double x = slider.center().x + (grip - (kGrips - 1) / 2.0) * kGripSpacing - 0.5;
        painter.box({x, slider.y + kGripMargin, 1, slider.height - 2 * kGripMargin});
        painter.fill(palette::kBlack, kGripAlpha);
    }
}

// The ratio switch.

constexpr auto kRatioArt = DemoGain_ViewLayout::Art::kRatio;
constexpr Box kRatioPicture = pictureBox(kRatioArt);
constexpr int kRatioPositions = DemoGain_ViewLayout::BitmapOf(kRatioArt).mPictures;
static_assert(kRatioPositions == std::ssize(kDemoGain_CurveTexts), "each key has its text");
// The mouse chooses by equal parts of the whole width, so the keys divide it so too.
constexpr double kRatioKeyWidth = kRatioPicture.width / kRatioPositions;
constexpr double kRatioCorner = 4.0;
constexpr double kRatioKeyCorner = 3.0;
constexpr double kRatioKeyGap = 2.0;
// From a key's edges to its number and to its curve.
constexpr double kNumberMargin = 3.5;
constexpr double kTransferMargin = 4.0;

Box ratioKeyBox(int position) {
    const Box cell{kRatioKeyWidth * position, 0, kRatioKeyWidth, kRatioPicture.height};
    return {cell.x + kRatioKeyGap / 2, cell.y + kRatioKeyGap, cell.width - kRatioKeyGap,
            cell.height - 2 * kRatioKeyGap};
}

// The curve of a key: how loud a level that lasts comes out of the gain reduction. Attack and Release have
// their defaults.
void drawTransfer(Painter& painter, const Box& area, int position, Color ink) {
    constexpr float kFromDB = -24.0F;
    constexpr float kToDB = 3.0F;
    constexpr float kLeastDB = -27.0F;
    constexpr float kMostDB = -3.0F;
    constexpr int kSteps = 30;
    constexpr double kWidth = 1.5;
    const DemoGain::GainCurve curve = DemoGain_ComputeCurve(
        {.mAttack = DemoGain_FindParameter(cDemoGain_AttackID)->mDefault,
         .mRelease = DemoGain_FindParameter(cDemoGain_ReleaseID)->mDefault,
         .mUK = 0.0F,
         .mRatio = static_cast<float>(position) / static_cast<float>(kRatioPositions - 1)});
    cairo_new_path(painter.cairo());
    for (int step = 0; step <= kSteps; ++step) {
        const double share = static_cast<double>(step) / kSteps;
        const float level = kFromDB + (kToDB - kFromDB) * static_cast<float>(share);
        const double height =
            static_cast<double>((curve.settledLevel(level) - kLeastDB) / (kMostDB - kLeastDB));
        cairo_line_to(painter.cairo(), area.x + area.width * share, area.bottom() - area.height * height);
    }
    painter.stroke(ink, kWidth);
}

void drawRatioKey(Painter& painter, int position, bool chosen) {
    const Box key = ratioKeyBox(position);
    if (chosen) {
        painter.roundedBox(key, kRatioKeyCorner);
        painter.fillDown(key.y, key.bottom(), palette::kLitCore, palette::kLit);
    } else {
        raised(painter, key, kRatioKeyCorner, palette::kKeyLight, palette::kKeyDark);
    }
    const Color ink = chosen ? palette::kInkOnLit : palette::kName;
    drawTransfer(painter, key.inset(kTransferMargin), position, ink);
    painter.text(
        kDemoGain_CurveTexts[position], lettering::kKeyNumber,
        {key.x + kNumberMargin, key.y + kNumberMargin + 2 * lettering::halfCapitals(lettering::kKeyNumber)},
        Align::kLeft, ink);
}

// The preset buttons.

constexpr Box kButtonPicture = pictureBox(DemoGain_ViewLayout::Art::kCopy);
constexpr double kButtonCorner = 4.0;
// How far a pressed key sinks, in pixels.
constexpr double kButtonTravel = 1.0;

void drawButton(Painter& painter, const char* text, bool pressed) {
    const Box hollow{0, 0, kButtonPicture.width, kButtonPicture.height - 1};
    Box key = hollow.inset(1);
    recess(painter, hollow, kButtonCorner, palette::kRecess);
    if (pressed) {
        key.y += kButtonTravel;
        painter.roundedBox(key, kButtonCorner - 1);
        painter.fill(palette::kPlateTop);
    } else {
        raised(painter, key, kButtonCorner - 1, palette::kKeyLight, palette::kKeyDark);
    }
    painter.text(text, lettering::kKeyText,
                 {key.center().x, key.center().y + lettering::halfCapitals(lettering::kKeyText)},
                 Align::kCenter, pressed ? palette::kLit : palette::kName);
}

} // namespace

void drawSwitch(Painter& painter, int picture) {
    const bool on = picture == 1;
    recess(painter, kSwitchHollow, kSwitchCorner, on ? palette::kLit : palette::kRecess);
    drawMark(painter, on);
    drawSlider(painter, on);
}

void drawRatioSwitch(Painter& painter, int picture) {
    recess(painter, {0, 0, kRatioPicture.width, kRatioPicture.height - 1}, kRatioCorner, palette::kRecess);
    for (int position = 0; position < kRatioPositions; ++position) {
        drawRatioKey(painter, position, position == picture);
    }
}

void drawCopyButton(Painter& painter, int picture) {
    drawButton(painter, "Copy Preset", picture == 1);
}

void drawPasteButton(Painter& painter, int picture) {
    drawButton(painter, "Paste Preset", picture == 1);
}

} // namespace varno
