/// Fonts and colours that the editor's views share, defined once for the process.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_VIEWLOOK_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_VIEWLOOK_H

#include "vstgui/lib/ccolor.h"
#include "vstgui/lib/cfont.h"

/// Sizes in points.
extern const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFontSmall; ///< 11
extern const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFont;      ///< 12
extern const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFontBig;   ///< 14
extern const VSTGUI::SharedPointer<VSTGUI::CFontDesc> gMyFontLogo;  ///< 28

// The panel and what is raised above it or let into it.
inline constexpr VSTGUI::CColor kMyBGCColor(0x2D, 0x30, 0x34);
inline constexpr VSTGUI::CColor kMyLightCColor(0x55, 0x59, 0x5F);
inline constexpr VSTGUI::CColor kMyShadowCColor(0x14, 0x15, 0x17);

// Lettering, from the brightest to the darkest.
inline constexpr VSTGUI::CColor kMyWhiteCColor(0xFF, 0xFF, 0xFF);
inline constexpr VSTGUI::CColor kMyPaperCColor(0xEF, 0xEB, 0xE4);
inline constexpr VSTGUI::CColor kMyControlWhiteCColor(0xE6, 0xE6, 0xE6);
inline constexpr VSTGUI::CColor kMyGreyCColor(0xB4, 0xB1, 0xAB);
inline constexpr VSTGUI::CColor kMyMidGreyCColor(0x6C, 0x6F, 0x74);
inline constexpr VSTGUI::CColor kMyDarkGreyCColor(0x3A, 0x3D, 0x42);

// Accents.
inline constexpr VSTGUI::CColor kLogoColor(0xFF, 0x9D, 0x33);
inline constexpr VSTGUI::CColor kMyCyanCColor(0x4F, 0xB3, 0xBF);
inline constexpr VSTGUI::CColor kDarkGreenCColor(0x1F, 0x5A, 0x2E);
inline constexpr VSTGUI::CColor kDarkRedCColor(0x7A, 0x1F, 0x1A);

#endif
