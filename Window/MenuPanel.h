#ifndef VARNO_WINDOW_MENUPANEL_H
#define VARNO_WINDOW_MENUPANEL_H

#include "Window/Geometry.h"
#include "Window/PanelStyle.h"
#include "Window/PanelText.h"

#include <cairo.h>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace varno {

/// An entry of a menu.
struct MenuItem {
    enum class Kind {
        kRow,      ///< Can be chosen where it is enabled.
        kHeading,  ///< Names the rows below.
        kSeparator ///< A line; has no text.
    };
    enum class Mark {
        kNone,
        kCheck,  ///< What is on.
        kBullet, ///< The one of several that is present.
        kDamaged ///< What cannot be used.
    };

    Kind kind = Kind::kRow;
    std::string text{};   ///< UTF-8, one line.
    std::string detail{}; ///< UTF-8, at the right: a shortcut or a value.
    Mark mark = Mark::kNone;
    bool isEnabled = true;
};

/// The entries of a menu one below the other, measured and drawn; no window. Places are pixels from the top
/// left corner of all entries. [main]
class MenuPanel {
public:
    /// @param mostWidth pixels; texts that have no room end in an ellipsis
    MenuPanel(std::vector<MenuItem> items, const PanelStyle& style, int mostWidth);

    /// Of all entries, with the edge around them.
    WindowSize size() const { return mSize; }
    std::size_t count() const { return mItems.size(); }
    WindowArea areaOf(std::size_t item) const;
    /// Whether an entry can be chosen.
    bool isChoosable(std::size_t item) const;
    /// The row at a place, if it can be chosen.
    std::optional<std::size_t> choosableAt(WindowPlace place) const;
    /// The next row that can be chosen after one, or before it, around the ends; the first or the last where
    /// there is none to start from. Nothing where none can be chosen.
    std::optional<std::size_t> next(std::optional<std::size_t> from, bool isForward) const;
    /// The next choosable row after one, around the end, whose text begins with a letter, whatever its case.
    /// @param letter Unicode
    std::optional<std::size_t> nextWith(std::optional<std::size_t> from, char32_t letter) const;

    /// Draws the entries, without the edge.
    /// @param highlighted the row that would be chosen
    void draw(cairo_t* context, std::optional<std::size_t> highlighted) const;

private:
    struct Entry {
        MenuItem item;
        std::optional<PanelText> text;
        std::optional<PanelText> detail;
        int y;
        int height;
    };

    void layOut(int mostWidth);
    void drawEntry(cairo_t* context, const Entry& entry, bool isHighlighted) const;
    void drawMark(cairo_t* context, const Entry& entry, std::uint32_t colour) const;

    PanelStyle mStyle;
    std::vector<Entry> mItems;
    WindowSize mSize;
};

} // namespace varno

#endif
