/// What a gesture on a control does besides setting its parameter: the text that it shows and whether the
/// volume is matched anew. Places, tags and identifiers are those of DemoGain_ViewLayout.h.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_GESTURES_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_GESTURES_H

#include "DemoGain_ViewLayout.h"

#include <optional>
#include <string>
#include <string_view>

namespace DemoGain_Gestures {

/// What a control's value of 0 and of 1 is shown as.
struct Scale {
    double mLow;
    double mHigh;
};

struct Gesture {
    const char* mID;             ///< The control's identifier.
    const char* mText;           ///< What the status line shows.
    std::optional<Scale> mScale; ///< If there is one, the value follows the text.
    bool mRestartsMatching;      ///< With automatic gain on, the volume is matched anew.
};

/// Of what can be lowered as well as raised, and of what is only added.
inline constexpr Scale kBipolar = {-100.0, 100.0};
inline constexpr Scale kPercent = {0.0, 100.0};

/// One per control that tells its listener something.
inline constexpr Gesture kGestures[] = {
    {"Gain", "Gain", kBipolar, true},
    {"Volume", "Volume", kBipolar, false},
    {"Atk", "Attack", kPercent, true},
    {"Rls", "Release", kPercent, true},
    {"Hot", "Hottitude", kPercent, true},
    {"Mix", "Mix", kPercent, true},
    {"HP", "Hi Pass", std::nullopt, true},
    {"Band", "Band Pass", std::nullopt, true},
    {"UK", "UK Mode", std::nullopt, true},
    {"ASw", "Auto Gain", std::nullopt, false},
    {"LinkSw", "Stereo Link", std::nullopt, false},
    {"HSw", "Harmonic select", std::nullopt, false},
    {"Ratio", "Ratio", std::nullopt, true},
    {"PR1K", "Preset to Clipboard", std::nullopt, false},
    {"PR2K", "Preset From Clipboard", std::nullopt, true},
};

/// What the status line shows when the clipboard's text is no preset.
inline constexpr char kFailedText[] = "Failed From Clipboard";
/// What the status line shows before the first gesture.
inline constexpr char kInitialText[] = "---";

/// Whether the control's identifier is that of a parameter. [any]
constexpr bool HoldsParameter(const DemoGain_ViewLayout::Control& control) {
    using DemoGain_ViewLayout::Kind;
    return control.mKind != Kind::KickButton && control.mKind != Kind::Meter;
}

/// The control with this identifier, or null. [any]
constexpr const DemoGain_ViewLayout::Control* ControlOf(std::string_view id) {
    for (const DemoGain_ViewLayout::Control& control : DemoGain_ViewLayout::kControls) {
        if (id == control.mID) {
            return &control;
        }
    }
    return nullptr;
}

/// The control with this tag, or null: also for the tag of those that tell nothing. [any]
constexpr const DemoGain_ViewLayout::Control* ControlOf(int32_t tag) {
    for (const DemoGain_ViewLayout::Control& control : DemoGain_ViewLayout::kControls) {
        if (tag == control.mTag && tag != DemoGain_ViewLayout::kNoTag) {
            return &control;
        }
    }
    return nullptr;
}

/// The gesture of a control that has a tag. [any]
constexpr const Gesture& GestureOf(const DemoGain_ViewLayout::Control& control) {
    const Gesture* gesture = kGestures;
    while (std::string_view(gesture->mID) != control.mID) {
        ++gesture;
    }
    return *gesture;
}

/// What the status line shows after a gesture that left the control at `value`, 0 to 1. The point is a point
/// in every locale. [main]
std::string StatusText(const Gesture& gesture, float value);

} // namespace DemoGain_Gestures

#endif
