#include "Window/PopupMenu.h"

#include "Window/Monitors.h"

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace varno {
namespace {

// Lengths at scale 1.
constexpr double kMostWidth = 520;
constexpr double kScrollEndHeight = 16; // of the strips with the arrows
constexpr double kArrowWidth = 10;
constexpr double kArrowHeight = 5;
constexpr double kWheelStep = 60;
constexpr double kHoverStep = 12; // on each tick
constexpr double kDragLength = 5; // from where on a held button drags

constexpr int kWheelUpButton = 4;
constexpr int kWheelDownButton = 5;

} // namespace

PopupMenu::PopupMenu(XConnection& connection, xcb_window_t owner, PanelStyle style)
    : mConnection(connection),
      mStyle(std::move(style)),
      mWindow(connection, owner, PopupWindow::Kind::kMenu,
              {[this](cairo_t* context, WindowSize size) { draw(context, size); },
               [this](const ButtonEvent& event) { button(event); },
               [this](std::optional<WindowPlace> place) { point(place); }, [this] { finish({}); }}) {
}

void PopupMenu::open(std::vector<MenuItem> items, const WindowArea& anchor, Handler handler,
                     std::optional<std::size_t> highlighted) {
    dismiss();
    const auto monitor = monitorOf(mConnection, anchor);
    mPanel.emplace(std::move(items), mStyle, std::min(mStyle.pixels(kMostWidth), monitor.width));
    mHandler = std::move(handler);
    mHighlighted = highlighted && *highlighted < mPanel->count() ? highlighted : std::nullopt;
    mSize = {mPanel->size().width, std::min(mPanel->size().height, monitor.height)};
    mScrolled = 0;
    mPointer.reset();
    mFirstPlace.reset();
    mMayChoose = false;
    if (mHighlighted) {
        show(*mHighlighted);
    }
    mWindow.open(anchor, mSize);
}

void PopupMenu::dismiss() {
    if (isOpen()) {
        finish({});
    }
}

// The handler may destroy this object.
void PopupMenu::finish(std::optional<std::size_t> chosen) {
    mWindow.close();
    mPanel.reset();
    const auto handler = std::exchange(mHandler, nullptr);
    if (handler) {
        handler(chosen);
    }
}

void PopupMenu::tick() {
    const bool isOnTop = mPointer && scrolls() && mPointer->y < endHeight();
    const bool isOnBottom = mPointer && scrolls() && mPointer->y >= mSize.height - endHeight();
    if (isOpen() && (isOnTop || isOnBottom)) {
        const int step = mStyle.pixels(kHoverStep);
        scrollTo(mScrolled + (isOnTop ? -step : step));
    }
    mWindow.tick();
}

bool PopupMenu::scrolls() const {
    return mPanel && mPanel->size().height > mSize.height;
}

int PopupMenu::endHeight() const {
    return scrolls() ? mStyle.pixels(kScrollEndHeight) : 0;
}

int PopupMenu::viewHeight() const {
    return std::max(mSize.height - 2 * endHeight(), 1);
}

void PopupMenu::scrollTo(int scrolled) {
    const int most = scrolls() ? mPanel->size().height - viewHeight() : 0;
    const int before = std::exchange(mScrolled, std::clamp(scrolled, 0, most));
    if (mScrolled != before) {
        mWindow.redraw();
    }
}

// With the first row that can be chosen, what is above it is seen too, and with the last what is below.
void PopupMenu::show(std::size_t row) {
    const auto area = mPanel->areaOf(row);
    const int top = row == mPanel->next({}, true) ? 0 : area.y;
    const int bottom = row == mPanel->next({}, false) ? mPanel->size().height : area.bottom();
    if (top < mScrolled) {
        scrollTo(top);
    } else if (bottom > mScrolled + viewHeight()) {
        scrollTo(bottom - viewHeight());
    }
}

std::optional<std::size_t> PopupMenu::rowAt(WindowPlace place) const {
    if (place.y < endHeight() || place.y >= mSize.height - endHeight()) {
        return {};
    }
    return mPanel->choosableAt({place.x, place.y - endHeight() + mScrolled});
}

void PopupMenu::highlight(std::optional<std::size_t> row) {
    if (row != mHighlighted) {
        mHighlighted = row;
        mWindow.redraw();
    }
}

void PopupMenu::point(std::optional<WindowPlace> place) {
    mPointer = place;
    if (place) {
        mFirstPlace = mFirstPlace.value_or(*place);
        const int distance =
            std::max(std::abs(place->x - mFirstPlace->x), std::abs(place->y - mFirstPlace->y));
        mMayChoose = mMayChoose || distance >= mStyle.pixels(kDragLength);
    }
    highlight(place ? rowAt(*place) : std::nullopt);
}

void PopupMenu::button(const ButtonEvent& event) {
    if (event.button >= kWheelUpButton) {
        if (event.isDown && event.button <= kWheelDownButton) {
            const int step = mStyle.pixels(kWheelStep);
            scrollTo(mScrolled + (event.button == kWheelUpButton ? -step : step));
            highlight(rowAt(event.place));
        }
        return;
    }
    mMayChoose = mMayChoose || event.isDown;
    const auto row = rowAt(event.place);
    if (event.isDown) {
        highlight(row);
    } else if (mMayChoose && row) {
        finish(row);
    }
}

bool PopupMenu::key(xcb_keysym_t symbol) {
    if (!isOpen()) {
        return false;
    }
    switch (symbol) {
    case XKB_KEY_Escape:
        finish({});
        break;
    case XKB_KEY_Return:
    case XKB_KEY_KP_Enter:
    case XKB_KEY_ISO_Enter:
    case XKB_KEY_space:
    case XKB_KEY_KP_Space:
        if (mHighlighted && mPanel->isChoosable(*mHighlighted)) {
            finish(mHighlighted);
        }
        break;
    default:
        move(symbol);
        break;
    }
    return true;
}

void PopupMenu::move(xcb_keysym_t symbol) {
    auto row = mHighlighted;
    switch (symbol) {
    case XKB_KEY_Down:
    case XKB_KEY_KP_Down:
        row = mPanel->next(row, true);
        break;
    case XKB_KEY_Up:
    case XKB_KEY_KP_Up:
        row = mPanel->next(row, false);
        break;
    case XKB_KEY_Home:
    case XKB_KEY_KP_Home:
        row = mPanel->next({}, true);
        break;
    case XKB_KEY_End:
    case XKB_KEY_KP_End:
        row = mPanel->next({}, false);
        break;
    case XKB_KEY_Page_Down:
    case XKB_KEY_KP_Page_Down:
        row = pageFrom(row, true);
        break;
    case XKB_KEY_Page_Up:
    case XKB_KEY_KP_Page_Up:
        row = pageFrom(row, false);
        break;
    default:
        if (const char32_t letter = xkb_keysym_to_utf32(symbol); letter > U' ') {
            row = mPanel->nextWith(row, letter).value_or(row.value_or(mPanel->count()));
        }
        break;
    }
    if (row && *row < mPanel->count()) {
        show(*row);
        highlight(row);
    }
}

// The last row that can be chosen within the height of the window from one, without going around the ends.
std::optional<std::size_t> PopupMenu::pageFrom(std::optional<std::size_t> from, bool isForward) const {
    auto row = from ? from : mPanel->next({}, true);
    const int start = row ? mPanel->areaOf(*row).y : 0;
    for (auto other = mPanel->next(row, isForward); row && other; other = mPanel->next(row, isForward)) {
        const int distance = mPanel->areaOf(*other).y - start;
        const bool isAround = isForward ? *other <= *row : *other >= *row;
        if (isAround || std::abs(distance) > viewHeight()) {
            break;
        }
        row = other;
    }
    return row;
}

void PopupMenu::draw(cairo_t* context, WindowSize size) const {
    drawPanel(context, size, mStyle);
    const int end = endHeight();
    const int line = mStyle.pixels(1);
    cairo_save(context);
    const int inset = std::max(end, line);
    cairo_rectangle(context, 0, inset, size.width, size.height - 2 * inset);
    cairo_clip(context);
    cairo_translate(context, 0, end - mScrolled);
    mPanel->draw(context, mHighlighted);
    cairo_restore(context);
    if (scrolls()) {
        drawArrow(context, true, mScrolled > 0);
        drawArrow(context, false, mScrolled < mPanel->size().height - viewHeight());
    }
}

// At an end of the list there is no more to come: the arrow is faint.
void PopupMenu::drawArrow(cairo_t* context, bool isTop, bool isMore) const {
    constexpr double kHalf = 0.5;
    const double width = mStyle.pixels(kArrowWidth);
    const double height = mStyle.pixels(kArrowHeight);
    const double middle = mSize.width * kHalf;
    const double centre = isTop ? endHeight() * kHalf : mSize.height - endHeight() * kHalf;
    const double tip = centre + (isTop ? -height : height) * kHalf;
    const double base = centre + (isTop ? height : -height) * kHalf;
    setPanelColour(context, isMore ? mStyle.text : mStyle.edge);
    cairo_move_to(context, middle, tip);
    cairo_line_to(context, middle - width * kHalf, base);
    cairo_line_to(context, middle + width * kHalf, base);
    cairo_close_path(context);
    cairo_fill(context);
}

} // namespace varno
