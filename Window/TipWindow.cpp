#include "Window/TipWindow.h"

#include "Window/PanelText.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace varno {
namespace {

// Lengths at scale 1.
constexpr double kMargin = 8;
constexpr double kDistance = 4; // from the anchor
constexpr double kMostTextWidth = 300;
constexpr double kGapAbove = 2;     // of the help
constexpr double kValueSize = 1.25; // of the size of the texts

PanelText valueText(const PanelStyle& style, const std::string& value) {
    PanelText text(style, value, style.textSize * kValueSize, PanelText::Weight::kBold);
    if (text.size().width > style.pixels(kMostTextWidth)) {
        text.limit(style.pixels(kMostTextWidth), PanelText::Overlong::kCut);
    }
    return text;
}

std::optional<PanelText> helpText(const PanelStyle& style, const std::string& help) {
    std::optional<PanelText> text;
    if (!help.empty()) {
        text.emplace(style, help, style.textSize);
        text->limit(style.pixels(kMostTextWidth), PanelText::Overlong::kWrap);
    }
    return text;
}

} // namespace

TipWindow::TipWindow(XConnection& connection, xcb_window_t owner, PanelStyle style)
    : mStyle(std::move(style)),
      mWindow(connection, owner, PopupWindow::Kind::kTip,
              {[this](cairo_t* context, WindowSize size) { draw(context, size); }, {}, {}, {}}) {
}

void TipWindow::setStyle(PanelStyle style) {
    mStyle = std::move(style);
    mIsStyleNew = true;
}

void TipWindow::show(const WindowArea& anchor, const std::string& value, const std::string& help) {
    if (isShown() && !mIsStyleNew && anchor == mAnchor && value == mValue && help == mHelp) {
        return;
    }
    mIsStyleNew = false;
    mAnchor = anchor;
    mValue = value;
    mHelp = help;
    const int distance = mStyle.pixels(kDistance);
    mWindow.open({anchor.x, anchor.y - distance, anchor.width, anchor.height + 2 * distance}, size());
}

WindowSize TipWindow::size() const {
    const auto value = valueText(mStyle, mValue).size();
    WindowSize help;
    if (const auto text = helpText(mStyle, mHelp)) {
        help = text->size();
        help.height += mStyle.pixels(kGapAbove);
    }
    const int margins = 2 * mStyle.pixels(kMargin);
    return {std::max(value.width, help.width) + margins, value.height + help.height + margins};
}

void TipWindow::draw(cairo_t* context, WindowSize size) const {
    drawPanel(context, size, mStyle);
    const int margin = mStyle.pixels(kMargin);
    const auto value = valueText(mStyle, mValue);
    value.draw(context, {margin, margin}, mStyle.text);
    if (const auto help = helpText(mStyle, mHelp)) {
        help->draw(context, {margin, margin + value.size().height + mStyle.pixels(kGapAbove)},
                   mStyle.quietText);
    }
}

} // namespace varno
