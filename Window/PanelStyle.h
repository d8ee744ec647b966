/// What menus and tips look like.
#ifndef VARNO_WINDOW_PANELSTYLE_H
#define VARNO_WINDOW_PANELSTYLE_H

#include <cstdint>
#include <string>

namespace varno {

/// Font, size and colours (0xRRGGBB) of a panel. The colours from the start are of a dark one.
struct PanelStyle {
    std::string font = "Arial"; ///< A family of fonts, or several with commas between.
    // NOLINTBEGIN(readability-magic-numbers): the members name what they are
    double textSize = 12.0; ///< Pixels of the letters' height, at scale 1.
    double scale = 1.0;     ///< More than 0.

    std::uint32_t panel = 0x26292D;
    std::uint32_t edge = 0x75787D; ///< Around the panel, and lines within.
    std::uint32_t text = 0xEFEBE4;
    std::uint32_t quietText = 0xC1BEB8; ///< Headings, details and explanations.
    std::uint32_t offText = 0x94979B;   ///< Of rows that cannot be chosen.
    std::uint32_t highlight = 0xFF9D33; ///< Behind the row that would be chosen.
    std::uint32_t highlightText = 0x221304;
    std::uint32_t warning = 0xFFB066; ///< The mark of what is damaged.
    // NOLINTEND(readability-magic-numbers)

    /// Whole pixels of a length at scale 1, at least 1. [any]
    int pixels(double length) const {
        constexpr double kHalf = 0.5;
        const int whole = static_cast<int>(length * scale + kHalf);
        return whole > 1 ? whole : 1;
    }
};

} // namespace varno

#endif
