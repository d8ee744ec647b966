/// The colours of the editor as the artwork is drawn with them.
#ifndef VARNO_RESOURCES_ARTWORK_PALETTE_H
#define VARNO_RESOURCES_ARTWORK_PALETTE_H

#include "DemoGain_Palette.h"

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

inline constexpr Color kWhite = rgb(DemoGain_Palette::kWhite);
inline constexpr Color kBlack = rgb(DemoGain_Palette::kBlack);

inline constexpr Color kSheetTop = rgb(DemoGain_Palette::kSheetTop);
inline constexpr Color kSheetBottom = rgb(DemoGain_Palette::kSheetBottom);
inline constexpr Color kPlateTop = rgb(DemoGain_Palette::kPlateTop);
inline constexpr Color kPlateBottom = rgb(DemoGain_Palette::kPlateBottom);
inline constexpr Color kRecess = rgb(DemoGain_Palette::kRecess);

inline constexpr Color kName = rgb(DemoGain_Palette::kName);
inline constexpr Color kHint = rgb(DemoGain_Palette::kHint);
inline constexpr Color kLine = rgb(DemoGain_Palette::kLine);

inline constexpr Color kUnlit = rgb(DemoGain_Palette::kUnlit);
inline constexpr Color kLit = rgb(DemoGain_Palette::kLit);
inline constexpr Color kLitHot = rgb(DemoGain_Palette::kLitHot);
inline constexpr Color kLitCore = rgb(DemoGain_Palette::kLitCore);
inline constexpr Color kInkOnLit = rgb(DemoGain_Palette::kInkOnLit);

inline constexpr Color kSkirtLight = rgb(DemoGain_Palette::kSkirtLight);
inline constexpr Color kSkirtDark = rgb(DemoGain_Palette::kSkirtDark);
inline constexpr Color kCapLight = rgb(DemoGain_Palette::kCapLight);
inline constexpr Color kCapDark = rgb(DemoGain_Palette::kCapDark);
inline constexpr Color kMetalLight = rgb(DemoGain_Palette::kMetalLight);
inline constexpr Color kMetalDark = rgb(DemoGain_Palette::kMetalDark);
inline constexpr Color kKeyLight = rgb(DemoGain_Palette::kKeyLight);
inline constexpr Color kKeyDark = rgb(DemoGain_Palette::kKeyDark);

} // namespace palette
} // namespace varno

#endif
