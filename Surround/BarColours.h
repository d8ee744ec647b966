/// The colours of what the surround draws with the widget library: those of the editor's palette, and between
/// them.
#ifndef VARNO_SURROUND_BARCOLOURS_H
#define VARNO_SURROUND_BARCOLOURS_H

#include "DemoGain_Palette.h"

#include "vstgui/lib/ccolor.h"

#include <cstdint>

namespace varno::BarColours {

using VSTGUI::CColor;

/// A colour written 0xRRGGBB. [any]
constexpr CColor colour(std::uint32_t code) {
    return {static_cast<std::uint8_t>(code >> 16U), static_cast<std::uint8_t>(code >> 8U),
            static_cast<std::uint8_t>(code)};
}

inline constexpr CColor kSheet = colour(0x25272A);
inline constexpr CColor kKeyTop = colour(DemoGain_Palette::kKeyLight);
inline constexpr CColor kKeyBottom = colour(DemoGain_Palette::kKeyDark);
inline constexpr CColor kLitTop = colour(0xFFC270);
inline constexpr CColor kLit = colour(DemoGain_Palette::kLit);
inline constexpr CColor kEdge = colour(DemoGain_Palette::kSkirtDark);
inline constexpr CColor kName = colour(DemoGain_Palette::kName);
inline constexpr CColor kHint = colour(0xC1BEB8);
inline constexpr CColor kPale = colour(0x7C7D80);
inline constexpr CColor kInkOnLit = colour(DemoGain_Palette::kInkOnLit);
inline constexpr CColor kRecess = colour(DemoGain_Palette::kRecess);
inline constexpr CColor kTooLoud = colour(DemoGain_Palette::kLitHot);

// The curve's picture.
inline constexpr CColor kPlate = colour(DemoGain_Palette::kPlateTop);
inline constexpr CColor kGrid = colour(DemoGain_Palette::kSheetTop);
inline constexpr CColor kUnity = colour(0x6C6F74);

} // namespace varno::BarColours

#endif
