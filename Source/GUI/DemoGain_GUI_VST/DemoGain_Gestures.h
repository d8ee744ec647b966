/// What a gesture on a control does besides setting its parameter: the text that it shows and whether the
/// volume is matched anew. Identifiers and tags are those of DemoGain_ViewLayout.h.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_GESTURES_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_GESTURES_H

#include "DemoGain_ParameterTable.h"
#include "DemoGain_ValueText.h"
#include "DemoGain_ViewLayout.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace DemoGain_Gestures {

struct Gesture {
    const char* mID;                             ///< The control's identifier.
    const char* mText;                           ///< What the status line shows.
    std::optional<SDemoGain_StatusScale> mScale; ///< If there is one, the value follows the text.
    bool mRestartsMatching;                      ///< With automatic gain on, the volume is matched anew.
};

/// The buttons, which are no parameters.
inline constexpr Gesture kButtonGestures[] = {
    {"PR1K", "Preset to Clipboard", std::nullopt, false},
    {"PR2K", "Preset From Clipboard", std::nullopt, true},
};

/// One per control that notifies its listener: those of the parameters, then the buttons.
inline constexpr auto kGestures = [] {
    std::array<Gesture, kDemoGain_ControlOrder.size() + std::size(kButtonGestures)> gestures{};
    auto* const buttons =
        std::ranges::transform(kDemoGain_ControlOrder, gestures.begin(), [](const SDemoGain_Parameter* row) {
            return Gesture{row->mIdentifier, row->mStatus, row->mStatusScale, row->mRestartsMatching};
        }).out;
    std::ranges::copy(kButtonGestures, buttons);
    return gestures;
}();

/// What the status line shows when the clipboard's text is no preset.
inline constexpr char kFailedText[] = "Failed From Clipboard";
/// What the status line shows before the first gesture.
inline constexpr char kInitialText[] = "---";

/// Whether the control's identifier is that of a parameter. [any]
constexpr bool HoldsParameter(const DemoGain_ViewLayout::Control& control) {
    return DemoGain_FindParameter(control.mID) != nullptr;
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

/// The control with this tag, or null: also for the tag of those that notify nobody. [any]
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
    const Gesture* gesture = kGestures.data();
    while (std::string_view(gesture->mID) != control.mID) {
        ++gesture;
    }
    return *gesture;
}

/// What the status line shows after a gesture that left the control at `value`, 0 to 1. [any]
inline std::string StatusText(const Gesture& gesture, float value) {
    return DemoGain_ValueText::WriteStatus(gesture.mText, gesture.mScale, value);
}

/// Whether the control notifies its listener of gestures. [any]
constexpr bool NotifiesListener(const DemoGain_ViewLayout::Control& control) {
    return control.mTag != DemoGain_ViewLayout::kNoTag;
}

// A control with a tag and without a gesture does not compile: the look-up would leave the table.
static_assert(std::ranges::all_of(DemoGain_ViewLayout::kControls,
                                  [](const DemoGain_ViewLayout::Control& control) {
                                      return !NotifiesListener(control) ||
                                             std::string_view(GestureOf(control).mID) == control.mID;
                                  }));
static_assert(std::ranges::count_if(DemoGain_ViewLayout::kControls, NotifiesListener) ==
                  std::ssize(kGestures),
              "every gesture is that of one control");

} // namespace DemoGain_Gestures

#endif
