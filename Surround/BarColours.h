/// The colours of what the surround draws with the widget library: those of the editor's panel.
#ifndef VARNO_SURROUND_BARCOLOURS_H
#define VARNO_SURROUND_BARCOLOURS_H

#include "vstgui/lib/ccolor.h"

namespace varno::BarColours {

using VSTGUI::CColor;

inline constexpr CColor kSheet(0x25, 0x27, 0x2A);
inline constexpr CColor kKeyTop(0x47, 0x4B, 0x50);
inline constexpr CColor kKeyBottom(0x30, 0x33, 0x38);
inline constexpr CColor kLitTop(0xFF, 0xC2, 0x70);
inline constexpr CColor kLit(0xFF, 0x9D, 0x33);
inline constexpr CColor kEdge(0x14, 0x15, 0x17);
inline constexpr CColor kName(0xEF, 0xEB, 0xE4);
inline constexpr CColor kHint(0xC1, 0xBE, 0xB8);
inline constexpr CColor kPale(0x7C, 0x7D, 0x80);
inline constexpr CColor kInkOnLit(0x22, 0x13, 0x04);
inline constexpr CColor kRecess(0x0E, 0x0F, 0x10);
inline constexpr CColor kTooLoud(0xFF, 0x5A, 0x36);

// The curve's picture.
inline constexpr CColor kPlate(0x1F, 0x21, 0x24);
inline constexpr CColor kGrid(0x3A, 0x3D, 0x42);
inline constexpr CColor kUnity(0x6C, 0x6F, 0x74);

} // namespace varno::BarColours

#endif
