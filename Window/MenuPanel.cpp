#include "Window/MenuPanel.h"

#include <algorithm>
#include <utility>

namespace varno {
namespace {

// Lengths at scale 1.
constexpr double kTextMargin = 3; // above and below a text
constexpr double kSide = 10;      // from the panel's sides
constexpr double kMarkWidth = 18; // left of the texts
constexpr double kDetailGap = 24; // between text and detail
constexpr double kLeastWidth = 120;
constexpr double kEnds = 4; // above the first entry and below the last
constexpr double kSeparatorHeight = 9;
constexpr double kLine = 1;
constexpr double kMarkSize = 8;
constexpr double kMarkLine = 1.6;
constexpr double kHeadingSize = 0.9; // of the size of the texts

char32_t lower(char32_t letter) {
    return g_unichar_tolower(letter);
}

} // namespace

MenuPanel::MenuPanel(std::vector<MenuItem> items, const PanelStyle& style, int mostWidth)
    : mStyle(style) {
    for (MenuItem& item : items) {
        Entry entry{std::move(item), {}, {}, 0, 0};
        if (entry.item.kind == MenuItem::Kind::kHeading) {
            entry.text.emplace(style, entry.item.text, style.textSize * kHeadingSize,
                               PanelText::Weight::kBold);
        } else if (entry.item.kind == MenuItem::Kind::kRow) {
            entry.text.emplace(style, entry.item.text, style.textSize);
            if (!entry.item.detail.empty()) {
                entry.detail.emplace(style, entry.item.detail, style.textSize);
            }
        }
        mItems.push_back(std::move(entry));
    }
    layOut(mostWidth);
}

void MenuPanel::layOut(int mostWidth) {
    const int fixed = 2 * mStyle.pixels(kSide) + mStyle.pixels(kMarkWidth);
    const int gap = mStyle.pixels(kDetailGap);
    int width = mStyle.pixels(kLeastWidth);
    for (const Entry& entry : mItems) {
        const int text = entry.text ? entry.text->size().width : 0;
        const int detail = entry.detail ? entry.detail->size().width + gap : 0;
        width = std::max(width, fixed + text + detail);
    }
    mSize.width = std::max(std::min(width, mostWidth), 1);

    int y = mStyle.pixels(kEnds);
    for (Entry& entry : mItems) {
        if (entry.text) {
            // The detail has what the text leaves, and half of the room at least.
            const int room = std::max(mSize.width - fixed, 1);
            int detail = 0;
            if (entry.detail) {
                const int left = std::max(room - gap - entry.text->size().width, room / 2);
                entry.detail->limit(std::min(entry.detail->size().width, left), PanelText::Overlong::kCut);
                detail = entry.detail->size().width + gap;
            }
            entry.text->limit(std::max(room - detail, 1), PanelText::Overlong::kCut);
            entry.height = entry.text->size().height + 2 * mStyle.pixels(kTextMargin);
        } else {
            entry.height = mStyle.pixels(kSeparatorHeight);
        }
        entry.y = y;
        y += entry.height;
    }
    mSize.height = y + mStyle.pixels(kEnds);
}

WindowArea MenuPanel::areaOf(std::size_t item) const {
    return {0, mItems[item].y, mSize.width, mItems[item].height};
}

bool MenuPanel::isChoosable(std::size_t item) const {
    return mItems[item].item.kind == MenuItem::Kind::kRow && mItems[item].item.isEnabled;
}

std::optional<std::size_t> MenuPanel::choosableAt(WindowPlace place) const {
    for (std::size_t i = 0; i < mItems.size(); ++i) {
        if (areaOf(i).contains(place) && isChoosable(i)) {
            return i;
        }
    }
    return {};
}

std::optional<std::size_t> MenuPanel::next(std::optional<std::size_t> from, bool isForward) const {
    const std::size_t count = mItems.size();
    const std::size_t start = from.value_or(isForward ? count - 1 : 0);
    for (std::size_t step = 1; step <= count; ++step) {
        const std::size_t i = (start + (isForward ? step : count - step)) % count;
        if (isChoosable(i)) {
            return i;
        }
    }
    return {};
}

std::optional<std::size_t> MenuPanel::nextWith(std::optional<std::size_t> from, char32_t letter) const {
    std::optional<std::size_t> row = from;
    for (std::size_t i = 0; i < mItems.size(); ++i) {
        row = next(row, true);
        const auto& text = row ? mItems[*row].item.text : std::string();
        const auto size = static_cast<gssize>(text.size());
        if (row && size > 0 && lower(g_utf8_get_char_validated(text.data(), size)) == lower(letter)) {
            return row;
        }
    }
    return {};
}

void MenuPanel::draw(cairo_t* context, std::optional<std::size_t> highlighted) const {
    for (std::size_t i = 0; i < mItems.size(); ++i) {
        drawEntry(context, mItems[i], highlighted == i);
    }
}

void MenuPanel::drawEntry(cairo_t* context, const Entry& entry, bool isHighlighted) const {
    const int side = mStyle.pixels(kSide);
    const int line = mStyle.pixels(kLine);
    if (!entry.text) {
        fillPanel(context,
                  {side, entry.y + (entry.height - line) / 2, std::max(mSize.width - 2 * side, 1), line},
                  mStyle.edge);
        return;
    }
    const bool isRow = entry.item.kind == MenuItem::Kind::kRow;
    std::uint32_t colour = isRow ? mStyle.text : mStyle.quietText;
    std::uint32_t detailColour = mStyle.quietText;
    if (isRow && !entry.item.isEnabled) {
        colour = mStyle.offText;
        detailColour = mStyle.offText;
    } else if (isHighlighted) {
        fillPanel(context, {line, entry.y, mSize.width - 2 * line, entry.height}, mStyle.highlight);
        colour = mStyle.highlightText;
        detailColour = mStyle.highlightText;
    }
    drawMark(context, entry,
             entry.item.mark == MenuItem::Mark::kDamaged && !isHighlighted ? mStyle.warning : colour);
    const int textY = entry.y + mStyle.pixels(kTextMargin);
    entry.text->draw(context, {side + mStyle.pixels(kMarkWidth), textY}, colour);
    if (entry.detail) {
        entry.detail->draw(context, {mSize.width - side - entry.detail->size().width, textY}, detailColour);
    }
}

// Three shapes: what they mean can be read without colour.
void MenuPanel::drawMark(cairo_t* context, const Entry& entry, std::uint32_t colour) const {
    constexpr double kFullTurn = 6.283185307179586;
    constexpr double kHalf = 0.5;
    if (entry.item.mark == MenuItem::Mark::kNone) {
        return;
    }
    const double size = mStyle.pixels(kMarkSize);
    const double left = mStyle.pixels(kSide);
    const double top = entry.y + (entry.height - size) * kHalf;
    setPanelColour(context, colour);
    cairo_set_line_width(context, kMarkLine * mStyle.scale);
    switch (entry.item.mark) {
    case MenuItem::Mark::kCheck: {
        constexpr double kCornerX = 0.38;
        constexpr double kEndY = 0.1;
        cairo_move_to(context, left, top + size * kHalf);
        cairo_line_to(context, left + size * kCornerX, top + size);
        cairo_line_to(context, left + size, top + size * kEndY);
        cairo_stroke(context);
        break;
    }
    case MenuItem::Mark::kBullet: {
        constexpr double kRadius = 0.38;
        cairo_arc(context, left + size * kHalf, top + size * kHalf, size * kRadius, 0.0, kFullTurn);
        cairo_fill(context);
        break;
    }
    default: // a cross
        cairo_move_to(context, left, top);
        cairo_line_to(context, left + size, top + size);
        cairo_move_to(context, left + size, top);
        cairo_line_to(context, left, top + size);
        cairo_stroke(context);
        break;
    }
}

} // namespace varno
