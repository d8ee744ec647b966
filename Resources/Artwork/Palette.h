/// The colours of the editor, each named after what it is the colour of.
#ifndef VARNO_RESOURCES_ARTWORK_PALETTE_H
#define VARNO_RESOURCES_ARTWORK_PALETTE_H

namespace varno {

/// A colour of the sRGB space; components run from 0 to 1.
struct Color {
    double red;
    double green;
    double blue;
};

/// The colour written 0xRRGGBB. [any]
constexpr Color rgb(unsigned code) {
    constexpr unsigned kByte = 0xFF;
    constexpr double kFull = 255.0;
    return {((code >> 16U) & kByte) / kFull, ((code >> 8U) & kByte) / kFull, (code & kByte) / kFull};
}

/// The colour at `share` of the way: `from` at 0, `to` at 1. [any]
constexpr Color between(Color from, Color to, double share) {
    return {from.red + (to.red - from.red) * share, from.green + (to.green - from.green) * share,
            from.blue + (to.blue - from.blue) * share};
}

namespace palette {

inline constexpr Color kWhite = rgb(0xFFFFFF);
inline constexpr Color kBlack = rgb(0x000000);

// The panel: a matte sheet, and the plate let into it.
inline constexpr Color kSheetTop = rgb(0x3A3D42);
inline constexpr Color kSheetBottom = rgb(0x2D3034);
inline constexpr Color kPlateTop = rgb(0x1F2124);
inline constexpr Color kPlateBottom = rgb(0x26292D);
inline constexpr Color kRecess = rgb(0x0E0F10);

// Lettering: what a control is called, and what explains it.
inline constexpr Color kName = rgb(0xEFEBE4);
inline constexpr Color kHint = rgb(0xCFCCC6);
inline constexpr Color kLine = rgb(0x8C8F94);

// Everything that is lit, from the faintest to the brightest.
inline constexpr Color kUnlit = rgb(0x2B2623);
inline constexpr Color kLit = rgb(0xFF9D33);
inline constexpr Color kLitHot = rgb(0xFF5A36);
inline constexpr Color kLitCore = rgb(0xFFD9A0);
inline constexpr Color kInkOnLit = rgb(0x221304);

// Metal and plastic of the controls.
inline constexpr Color kSkirtLight = rgb(0x4E5258);
inline constexpr Color kSkirtDark = rgb(0x141517);
inline constexpr Color kCapLight = rgb(0x575C63);
inline constexpr Color kCapDark = rgb(0x2A2D31);
inline constexpr Color kMetalLight = rgb(0xB8BBBE);
inline constexpr Color kMetalDark = rgb(0x6C7074);
inline constexpr Color kKeyLight = rgb(0x474B50);
inline constexpr Color kKeyDark = rgb(0x303338);

} // namespace palette
} // namespace varno

#endif
