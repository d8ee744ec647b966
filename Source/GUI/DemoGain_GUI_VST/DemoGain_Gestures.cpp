#include "GUI/DemoGain_GUI_VST/DemoGain_Gestures.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace DemoGain_Gestures {
namespace {

using DemoGain_ViewLayout::Control;

constexpr bool NotifiesListener(const Control& control) {
    return control.mTag != DemoGain_ViewLayout::kNoTag;
}

// A tagged control without a gesture would not compile, for the look-up would leave the table.
static_assert(std::ranges::all_of(DemoGain_ViewLayout::kControls, [](const Control& control) {
    return !NotifiesListener(control) || std::string_view(GestureOf(control).mID) == control.mID;
}));
static_assert(std::ranges::count_if(DemoGain_ViewLayout::kControls, NotifiesListener) ==
                  std::ssize(kGestures),
              "every gesture is that of one control");

constexpr int kDecimals = 2;

} // namespace

std::string StatusText(const Gesture& gesture, float value) {
    std::string text = gesture.mText;
    if (gesture.mScale) {
        const double shown = value * gesture.mScale->mFactor + gesture.mScale->mOffset;
        char digits[64];
        const auto written =
            std::to_chars(std::begin(digits), std::end(digits), shown, std::chars_format::fixed, kDecimals);
        text.append(" ").append(std::begin(digits), written.ptr);
    }
    return text;
}

} // namespace DemoGain_Gestures
