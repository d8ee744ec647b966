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
enum class Art { Background, Knob, MeterOff, MeterOn, Switch, Ratio, Copy, Paste };

/// A bitmap in the bundle's resources: pictures of one size stacked vertically.
struct Bitmap {
    Art mArt;
    const char* mFile; ///< Its double-size variant carries kDoubleSizeMark before the extension.
    int mWidth;        ///< Of one picture.
    int mHeight;       ///< Of one picture.
    int mPictures;
};

/// In the order in which they are loaded.
inline constexpr Bitmap kBitmaps[] = {
    {Art::Background, "Varno_simple_sfondo.png", 690, 390, 1},
    {Art::Knob, "Varno_simple_knob.png", 62, 62, 131},
    {Art::MeterOff, "Varno_GRmeter_off.png", 336, 16, 1},
    {Art::MeterOn, "Varno_GRmeter_on.png", 336, 16, 1},
    {Art::Switch, "Varno_simple_switch.png", 36, 24, 2},
    {Art::Ratio, "Varno_simple_ratio.png", 232, 30, 8},
    {Art::Copy, "Varno_PresetPulsCopy.png", 120, 20, 2},
    {Art::Paste, "Varno_PresetPulsPaste.png", 120, 20, 2},
};

/// What a file of twice the size is marked with: name#2.0x.png.
inline constexpr char kDoubleSizeMark[] = "#2.0x";

/// The row of kBitmaps that holds `art`. [any]
constexpr const Bitmap& BitmapOf(Art art) {
    return kBitmaps[static_cast<int>(art)];
}

/// Steps of a meter.
inline constexpr int kMeterSteps = 16;

enum class Kind { Knob, OnOffButton, RatioSwitch, KickButton, Meter };

/// The side of a control on which its name is lettered; nowhere for what carries its text itself.
enum class NameSide { None, Below, Left, Right };

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
    {Kind::Knob, 24, 56, Art::Knob, 3, "Gain", NameSide::Below},
    {Kind::OnOffButton, 161, 77, Art::Switch, 4, "HP", NameSide::Below},
    {Kind::OnOffButton, 212, 77, Art::Switch, 5, "Band", NameSide::Below},
    {Kind::Knob, 269, 56, Art::Knob, 6, "Atk", NameSide::Below},
    {Kind::Knob, 409, 56, Art::Knob, 7, "Rls", NameSide::Below},
    {Kind::OnOffButton, 549, 135, Art::Switch, 8, "UK", NameSide::Below},
    {Kind::OnOffButton, 549, 72, Art::Switch, 9, "ASw", NameSide::Below},
    {Kind::OnOffButton, 549, 224, Art::Switch, 10, "LinkSw", NameSide::Below},
    {Kind::OnOffButton, 161, 132, Art::Switch, 11, "HSw", NameSide::Right},
    {Kind::Knob, 604, 56, Art::Knob, 12, "Volume", NameSide::Below},
    {Kind::Knob, 24, 208, Art::Knob, 13, "Hot", NameSide::Below},
    {Kind::RatioSwitch, 233, 233, Art::Ratio, 14, "Ratio", NameSide::Left},
    {Kind::Knob, 604, 208, Art::Knob, 15, "Mix", NameSide::Below},
};

/// The controls that are no parameters, in the order in which they are added, after the others.
inline constexpr Control kOtherControls[] = {
    {Kind::KickButton, 193, 361, Art::Copy, 18, "PR1K", NameSide::None},
    {Kind::KickButton, 323, 361, Art::Paste, 19, "PR2K", NameSide::None},
    {Kind::Meter, 180, 278, Art::MeterOff, kNoTag, "METERGR1", NameSide::None},
    {Kind::Meter, 180, 303, Art::MeterOff, kNoTag, "METERGR2", NameSide::None},
};

/// All controls in the order in which they are added. Does not compile where a parameter that has a place
/// among them has no row, or one that shows another number of pictures than the parameter has steps.
consteval auto AllControls() {
    static_assert(std::size(kParameterControls) == kDemoGain_ControlOrder.size(),
                  "one control to a parameter");
    std::array<Control, std::size(kParameterControls) + std::size(kOtherControls)> controls{};
    auto* next = controls.begin();
    for (const SDemoGain_Parameter* const parameter : kDemoGain_ControlOrder) {
        const auto* const row = std::ranges::find_if(kParameterControls, [&](const Control& control) {
            return std::string_view(control.mID) == parameter->mIdentifier;
        });
        if (row == std::end(kParameterControls) ||
            BitmapOf(row->mArt).mPictures != static_cast<int>(parameter->mSteps)) {
            throw "a parameter without a control, or with the wrong one";
        }
        *next++ = *row;
    }
    std::ranges::copy(kOtherControls, next);
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

/// The line that names what was changed last.
inline constexpr Edges kStatusLabel = {10, 362, 150, 380};

} // namespace DemoGain_ViewLayout

#endif
