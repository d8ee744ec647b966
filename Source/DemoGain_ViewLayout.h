/// Where everything of the editor lies: the layout that the view, the artwork and the tests share. Lengths
/// are pixels at scale 1; the origin is the view's top left corner. What a control's parameter is called and
/// in which order the controls are added stands in DemoGain_ParameterTable.h.
#ifndef VARNO_SOURCE_DEMOGAIN_VIEWLAYOUT_H
#define VARNO_SOURCE_DEMOGAIN_VIEWLAYOUT_H

#include "DemoGain_ParameterTable.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>

namespace DemoGain_ViewLayout {

/// The drawn parts of the editor.
enum class Art { kBackground, kKnob, kMeterOff, kMeterOn, kSwitch, kRatio, kCopy, kPaste };

/// A bitmap in the bundle's resources: pictures of one size stacked vertically.
struct Bitmap {
    Art mArt;
    const char* mFile; ///< At scale 1; other scales carry their mark before the extension.
    int mWidth;        ///< Of one picture.
    int mHeight;       ///< Of one picture.
    int mPictures;
};

/// In the order in which they are loaded.
inline constexpr Bitmap kBitmaps[] = {
    {Art::kBackground, "Varno_simple_sfondo.png", 690, 390, 1},
    {Art::kKnob, "Varno_simple_knob.png", 62, 62, 131},
    {Art::kMeterOff, "Varno_GRmeter_off.png", 336, 16, 1},
    {Art::kMeterOn, "Varno_GRmeter_on.png", 336, 16, 1},
    {Art::kSwitch, "Varno_simple_switch.png", 36, 24, 2},
    {Art::kRatio, "Varno_simple_ratio.png", 232, 30, 8},
    {Art::kCopy, "Varno_PresetPulsCopy.png", 120, 20, 2},
    {Art::kPaste, "Varno_PresetPulsPaste.png", 120, 20, 2},
};

/// A size in which each bitmap is drawn: pixels to one of the view, and what marks its files.
struct ArtScale {
    double mFactor;
    const char* mMark;
};

/// The scales of the artwork; the first is that of the layout.
inline constexpr ArtScale kArtScales[] = {
    {1.0, ""}, {0.75, "#0.75x"}, {1.25, "#1.25x"}, {1.5, "#1.5x"}, {2.0, "#2.0x"}, {3.0, "#3.0x"},
};

/// Transparent rows of pixels after each picture of several at a scale other than 1: where it is drawn at a
/// size between the scales, no picture mixes with its neighbour.
inline constexpr int kSeparatorRows = 4;

/// Pixels that a length of the layout takes at a scale. [any]
constexpr int PixelsAt(double scale, int length) {
    const double exact = scale * length;
    const int whole = static_cast<int>(exact);
    return exact > whole ? whole + 1 : whole;
}

/// Rows of pixels from one picture of a bitmap to the next, at a scale of the artwork. [any]
constexpr int PictureRowsAt(double scale, const Bitmap& bitmap) {
    const bool isAlone = bitmap.mPictures == 1 || scale == kArtScales[0].mFactor;
    return PixelsAt(scale, bitmap.mHeight) + (isAlone ? 0 : kSeparatorRows);
}

/// The row of kBitmaps that holds `art`. [any]
constexpr const Bitmap& BitmapOf(Art art) {
    return kBitmaps[static_cast<int>(art)];
}

/// Steps of a meter.
inline constexpr int kMeterSteps = 16;

enum class Kind { kKnob, kOnOffButton, kRatioSwitch, kKickButton, kMeter };

/// The side of a control on which its name is lettered; nowhere for what carries its text itself.
enum class NameSide { kNone, kBelow, kLeft, kRight };

/// No tag: the control does not notify its listener.
inline constexpr int32_t kNoTag = -1;

/// A control: its size is that of one picture of its bitmap.
struct Control {
    Kind mKind;
    int mX;
    int mY;
    Art mArt;
    int32_t mTag;
    const char* mID; ///< The parameter, or the name under which the host knows the control.
    NameSide mNameSide;
};

/// The controls of parameters, in any order: the parameter's row decides when each is added.
inline constexpr Control kParameterControls[] = {
    {Kind::kKnob, 24, 56, Art::kKnob, 3, "Gain", NameSide::kBelow},
    {Kind::kOnOffButton, 161, 77, Art::kSwitch, 4, "HP", NameSide::kBelow},
    {Kind::kOnOffButton, 212, 77, Art::kSwitch, 5, "Band", NameSide::kBelow},
    {Kind::kKnob, 269, 56, Art::kKnob, 6, "Atk", NameSide::kBelow},
    {Kind::kKnob, 409, 56, Art::kKnob, 7, "Rls", NameSide::kBelow},
    {Kind::kOnOffButton, 549, 135, Art::kSwitch, 8, "UK", NameSide::kBelow},
    {Kind::kOnOffButton, 549, 72, Art::kSwitch, 9, "ASw", NameSide::kBelow},
    {Kind::kOnOffButton, 549, 224, Art::kSwitch, 10, "LinkSw", NameSide::kBelow},
    {Kind::kOnOffButton, 161, 132, Art::kSwitch, 11, "HSw", NameSide::kRight},
    {Kind::kKnob, 604, 56, Art::kKnob, 12, "Volume", NameSide::kBelow},
    {Kind::kKnob, 24, 208, Art::kKnob, 13, "Hot", NameSide::kBelow},
    {Kind::kRatioSwitch, 233, 233, Art::kRatio, 14, "Ratio", NameSide::kLeft},
    {Kind::kKnob, 604, 208, Art::kKnob, 15, "Mix", NameSide::kBelow},
};

/// The controls that are no parameters, in the order in which they are added, after the others.
inline constexpr Control kOtherControls[] = {
    {Kind::kKickButton, 193, 361, Art::kCopy, 18, "PR1K", NameSide::kNone},
    {Kind::kKickButton, 323, 361, Art::kPaste, 19, "PR2K", NameSide::kNone},
    {Kind::kMeter, 180, 278, Art::kMeterOff, kNoTag, "METERGR1", NameSide::kNone},
    {Kind::kMeter, 180, 303, Art::kMeterOff, kNoTag, "METERGR2", NameSide::kNone},
};

/// All controls in the order in which they are added. Does not compile where a parameter that has a place
/// among them has no row, or one that shows another number of pictures than the parameter has steps.
consteval auto AllControls() {
    static_assert(std::size(kParameterControls) == kDemoGain_ControlOrder.size(),
                  "one control to a parameter");
    std::array<Control, std::size(kParameterControls) + std::size(kOtherControls)> controls{};
    auto* next = controls.begin();
    for (const SDemoGain_Parameter* const parameter : kDemoGain_ControlOrder) {
        const auto isOfParameter = [&](const Control& control) {
            return std::string_view(control.mID) == parameter->mIdentifier;
        };
        const auto* const row =
            std::find_if(std::begin(kParameterControls), std::end(kParameterControls), isOfParameter);
        if (row == std::end(kParameterControls) ||
            BitmapOf(row->mArt).mPictures != static_cast<int>(parameter->mSteps)) {
            throw "a parameter without a control, or with the wrong one";
        }
        *next++ = *row;
    }
    std::copy(std::begin(kOtherControls), std::end(kOtherControls), next);
    return controls;
}

/// In the order in which they are added: later ones are drawn above earlier ones.
inline constexpr auto kControls = AllControls();

/// A rectangle by its edges.
struct Edges {
    int mLeft;
    int mTop;
    int mRight;
    int mBottom;
};

/// Where the name of a control is lettered, with some room around it: what people take for a part of the
/// control. Empty for a control without a name of its own. [any]
constexpr Edges LegendOf(const Control& control) {
    constexpr int kKnobReach = 27; // To either side of the control's middle.
    constexpr int kSwitchReach = 28;
    constexpr int kPairReach = 25; // Where two switches lie side by side, and their names in two lines.
    constexpr int kKnobAbove = 13; // From the control's edge to the room's upper edge and lower edge.
    constexpr int kKnobBelow = 27;
    constexpr int kSwitchBelow = 16;
    constexpr int kLine = 13; // Added by a second line.
    constexpr int kGap = 2;   // From the control's edge to the room beside it, and to the room's far edge.
    constexpr int kLeftWidth = 42;
    constexpr int kRightWidth = 60;
    constexpr int kHalfLine = 8;
    const Bitmap& picture = BitmapOf(control.mArt);
    const SDemoGain_Parameter* const parameter = DemoGain_FindParameter(control.mID);
    const bool hasTwoLines = parameter != nullptr && parameter->mLegend[1] != nullptr;
    const int middleX = control.mX + picture.mWidth / 2;
    const int middleY = control.mY + picture.mHeight / 2;
    const int right = control.mX + picture.mWidth;
    const int bottom = control.mY + picture.mHeight;
    const int halfHeight = kHalfLine + (hasTwoLines ? kLine / 2 : 0);
    switch (control.mNameSide) {
    case NameSide::kLeft:
        return {control.mX - kLeftWidth, middleY - halfHeight, control.mX - kGap, middleY + halfHeight};
    case NameSide::kRight:
        return {right + kGap, middleY - halfHeight, right + kRightWidth, middleY + halfHeight};
    case NameSide::kBelow:
        if (control.mKind == Kind::kKnob) {
            return {middleX - kKnobReach, bottom + kKnobAbove, middleX + kKnobReach, bottom + kKnobBelow};
        }
        return {middleX - (hasTwoLines ? kPairReach : kSwitchReach), bottom + 1,
                middleX + (hasTwoLines ? kPairReach : kSwitchReach),
                bottom + kSwitchBelow + (hasTwoLines ? kLine : 0)};
    case NameSide::kNone:
        break;
    }
    return {};
}

/// The part of the plate that the artwork leaves free.
inline constexpr Edges kFreeArea = {262, 166, 520, 214};

/// The line that names what was changed last.
inline constexpr Edges kStatusLabel = {10, 362, 150, 380};

} // namespace DemoGain_ViewLayout

#endif
