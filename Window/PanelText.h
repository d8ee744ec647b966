/// Text on a panel.
#ifndef VARNO_WINDOW_PANELTEXT_H
#define VARNO_WINDOW_PANELTEXT_H

#include "Window/Geometry.h"
#include "Window/PanelStyle.h"

#include <cairo.h>
#include <cstdint>
#include <memory>
#include <pango/pangocairo.h>
#include <string>

namespace varno {

/// A text in one font, measured and drawn the same at every place. [main]
class PanelText {
public:
    enum class Weight { kPlain, kBold };
    enum class Overlong {
        kCut, ///< One line, which ends in an ellipsis where it is too wide.
        kWrap ///< As many lines as are needed.
    };

    /// @param text UTF-8; what is none of it is shown as replacement characters
    /// @param size of the letters, pixels at scale 1
    PanelText(const PanelStyle& style, const std::string& text, double size, Weight weight = Weight::kPlain);

    /// Keeps it within a width. @param width pixels
    void limit(int width, Overlong overlong);
    /// Pixels, as limited.
    WindowSize size() const;
    /// Draws it. @param place of its top left corner @param colour 0xRRGGBB
    void draw(cairo_t* context, WindowPlace place, std::uint32_t colour) const;

private:
    struct Unref {
        void operator()(PangoLayout* layout) const { g_object_unref(layout); }
    };

    std::unique_ptr<PangoLayout, Unref> mLayout;
};

/// Sets the colour that is drawn with. @param colour 0xRRGGBB
void setPanelColour(cairo_t* context, std::uint32_t colour);

/// Fills a rectangle with a colour, 0xRRGGBB.
void fillPanel(cairo_t* context, const WindowArea& area, std::uint32_t colour);

/// Draws a panel's background with its edge.
void drawPanel(cairo_t* context, WindowSize size, const PanelStyle& style);

} // namespace varno

#endif
