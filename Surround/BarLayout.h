/// What the bar above the editor consists of, and where. Lengths are pixels at scale 1 from the bar's upper
/// left corner. Plain data.
#ifndef VARNO_SURROUND_BARLAYOUT_H
#define VARNO_SURROUND_BARLAYOUT_H

#include <array>
#include <cstddef>

namespace varno {

/// A rectangle.
struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    /// Whether a point lies within.
    constexpr bool contains(int left, int top) const {
        return left >= x && left < x + width && top >= y && top < y + height;
    }
};

namespace BarLayout {

/// As wide as the editor.
inline constexpr int kWidth = 690;
inline constexpr int kHeight = 64; ///< Whole pixels at every size of a window.

/// What is pressed in the bar, in reading order.
enum class Button {
    kBypass,
    kSlotA,
    kSlotB,
    kCopySlot,
    kUndo,
    kRedo,
    kPreviousPreset,
    kPresets,
    kNextPreset,
    kQuality,
    kCurve,
    kSize,
};

/// How a button behaves.
enum class Kind {
    kPush,   ///< Does something at once.
    kToggle, ///< Shows a state, which a press changes.
    kMenu,   ///< Opens a menu.
};

struct ButtonRow {
    Button button{};
    Kind kind{};
    Box place;
    const char* text = ""; ///< On the button; empty where it changes.
    const char* name = ""; ///< For people who do not see it.
    const char* help = ""; ///< One sentence.
};

inline constexpr int kRow = 6;     ///< Top of the buttons.
inline constexpr int kTall = 24;   ///< Their height.
inline constexpr int kSecond = 39; ///< Top of the line of meters and messages.
inline constexpr int kLine = 18;   ///< Its height.

inline constexpr ButtonRow kButtons[] = {
    {Button::kBypass,
     Kind::kToggle,
     {8, kRow, 74, kTall},
     "Bypass",
     "Bypass",
     "Lets the sound pass unchanged, at the same delay."},
    {Button::kSlotA,
     Kind::kToggle,
     {92, kRow, 26, kTall},
     "A",
     "Settings A",
     "Uses the first of the two settings that can be compared."},
    {Button::kSlotB,
     Kind::kToggle,
     {118, kRow, 26, kTall},
     "B",
     "Settings B",
     "Uses the second of the two settings that can be compared."},
    {Button::kCopySlot,
     Kind::kPush,
     {148, kRow, 50, kTall},
     "",
     "Copy to the other settings",
     "Copies the present settings to the other slot."},
    {Button::kUndo, Kind::kPush, {208, kRow, 48, kTall}, "Undo", "Undo", "Takes back the last change."},
    {Button::kRedo,
     Kind::kPush,
     {258, kRow, 48, kTall},
     "Redo",
     "Redo",
     "Makes a change again that was taken back."},
    {Button::kPreviousPreset,
     Kind::kPush,
     {316, kRow, 22, kTall},
     "\u25C4",
     "Previous preset",
     "Loads the preset before the present one."},
    {Button::kPresets,
     Kind::kMenu,
     {340, kRow, 154, kTall},
     "",
     "Presets",
     "Loads, saves, renames and deletes presets."},
    {Button::kNextPreset,
     Kind::kPush,
     {496, kRow, 22, kTall},
     "\u25BA",
     "Next preset",
     "Loads the preset after the present one."},
    {Button::kQuality,
     Kind::kMenu,
     {526, kRow, 40, kTall},
     "",
     "Quality",
     "Chooses at how many times the sample rate the effect computes."},
    {Button::kCurve,
     Kind::kToggle,
     {570, kRow, 50, kTall},
     "Curve",
     "Curve",
     "Shows a picture of the present curve and of the level on it."},
    {Button::kSize, Kind::kMenu, {624, kRow, 58, kTall}, "", "Size", "Chooses the size of the window."},
};

/// The row of a button. [any]
constexpr const ButtonRow& row(Button button) {
    return kButtons[static_cast<std::size_t>(button)];
}

/// The meters of levels.
inline constexpr int kLevelMeters = 2;
/// What the ends of their scales mean.
inline constexpr double kLowestDB = -60.0;
inline constexpr double kHighestDB = 6.0;
struct MeterRow {
    const char* text = ""; ///< Before it.
    const char* name = "";
    Box label;
    Box meter;
    Box number;
};
inline constexpr MeterRow kMeters[kLevelMeters] = {
    {"In", "Input level", {8, kSecond, 24, kLine}, {32, kSecond + 5, 90, 8}, {124, kSecond, 44, kLine}},
    {"Out", "Output level", {176, kSecond, 28, kLine}, {204, kSecond + 5, 90, 8}, {296, kSecond, 44, kLine}},
};
inline constexpr Box kReductionLabel = {352, kSecond, 24, kLine};
inline constexpr Box kReduction = {376, kSecond, 60, kLine};
inline constexpr Box kMessage = {446, kSecond, 236, kLine};

} // namespace BarLayout
} // namespace varno

#endif
