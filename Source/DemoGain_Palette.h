/// The colours of the editor, each named after what it is the colour of: 0xRRGGBB of the sRGB space. Plain
/// data.
#ifndef VARNO_SOURCE_DEMOGAIN_PALETTE_H
#define VARNO_SOURCE_DEMOGAIN_PALETTE_H

#include <cstdint>

namespace DemoGain_Palette {

inline constexpr uint32_t kWhite = 0xFFFFFF;
inline constexpr uint32_t kBlack = 0x000000;

// The panel: a matte sheet, and the plate let into it.
inline constexpr uint32_t kSheetTop = 0x3A3D42;
inline constexpr uint32_t kSheetBottom = 0x2D3034;
inline constexpr uint32_t kPlateTop = 0x1F2124;
inline constexpr uint32_t kPlateBottom = 0x26292D;
inline constexpr uint32_t kRecess = 0x0E0F10;

// Lettering: what a control is called, and what explains it.
inline constexpr uint32_t kName = 0xEFEBE4;
inline constexpr uint32_t kHint = 0xCFCCC6;
inline constexpr uint32_t kLine = 0x8C8F94;

// Everything that is lit, from the faintest to the brightest.
inline constexpr uint32_t kUnlit = 0x2B2623;
inline constexpr uint32_t kLit = 0xFF9D33;
inline constexpr uint32_t kLitHot = 0xFF5A36;
inline constexpr uint32_t kLitCore = 0xFFD9A0;
inline constexpr uint32_t kInkOnLit = 0x221304;

// Metal and plastic of the controls.
inline constexpr uint32_t kSkirtLight = 0x4E5258;
inline constexpr uint32_t kSkirtDark = 0x141517;
inline constexpr uint32_t kCapLight = 0x575C63;
inline constexpr uint32_t kCapDark = 0x2A2D31;
inline constexpr uint32_t kMetalLight = 0xB8BBBE;
inline constexpr uint32_t kMetalDark = 0x6C7074;
inline constexpr uint32_t kKeyLight = 0x474B50;
inline constexpr uint32_t kKeyDark = 0x303338;

} // namespace DemoGain_Palette

#endif
