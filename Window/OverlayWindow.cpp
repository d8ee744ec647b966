#include "Window/OverlayWindow.h"

#include <algorithm>
#include <bit>
#include <xcb/shape.h>
#include <xcb/xcb_aux.h>

namespace varno {
namespace {

xcb_visualid_t visualOf(const XConnection& connection, xcb_window_t window) {
    const XReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        connection.get(), xcb_get_window_attributes(connection.get(), window), nullptr));
    return reply ? reply->visual : connection.screen().root_visual;
}

// A channel of a colour, 8 bits, at its place in a pixel.
std::uint32_t channel(std::uint32_t value, std::uint32_t mask) {
    constexpr int kBits = 8;
    const int width = std::popcount(mask);
    const std::uint32_t scaled = width >= kBits ? value << (width - kBits) : value >> (kBits - width);
    return (scaled << std::countr_zero(mask)) & mask;
}

// All bits that are of no channel are set: one of them is opacity where a window has it.
std::uint32_t pixelOf(const XConnection& connection, xcb_visualid_t visual, std::uint32_t colour) {
    constexpr std::uint32_t kByte = 0xFF;
    constexpr int kRed = 16;
    constexpr int kGreen = 8;
    auto* const screen = xcb_aux_get_screen(connection.get(), connection.screenNumber());
    const auto* const type = xcb_aux_find_visual_by_id(screen, visual);
    if (type == nullptr || (type->red_mask & type->green_mask & type->blue_mask) != 0 ||
        type->red_mask == 0) {
        return connection.screen().white_pixel; // of a screen without mixed colours
    }
    return ~(type->red_mask | type->green_mask | type->blue_mask) |
           channel(colour >> kRed & kByte, type->red_mask) |
           channel(colour >> kGreen & kByte, type->green_mask) | channel(colour & kByte, type->blue_mask);
}

xcb_rectangle_t rectangle(int x, int y, int width, int height) {
    return {static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), static_cast<std::uint16_t>(width),
            static_cast<std::uint16_t>(height)};
}

} // namespace

OverlayWindow::OverlayWindow(XConnection& connection, xcb_window_t parent, std::uint32_t colour)
    : ChildWindow(connection, parent, Use::kDrawing, 0),
      mVisual(visualOf(connection, parent)) {
    xcb_shape_rectangles(connection.get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
                         id(), 0, 0, 0, nullptr);
    setColour(colour);
}

void OverlayWindow::setFrame(const WindowArea& area, int width) {
    const int line = std::max(width, 1);
    if (2 * line >= std::min(area.width, area.height)) {
        setShape(area, {rectangle(0, 0, area.width, area.height)});
        return;
    }
    const int inner = area.height - 2 * line;
    setShape(area, {rectangle(0, 0, area.width, line), rectangle(0, line, line, inner),
                    rectangle(area.width - line, line, line, inner),
                    rectangle(0, area.height - line, area.width, line)});
}

void OverlayWindow::setParts(const WindowArea& area, const std::vector<WindowArea>& parts) {
    std::vector<xcb_rectangle_t> rectangles;
    for (const WindowArea& part : parts) {
        rectangles.push_back(rectangle(part.x, part.y, part.width, part.height));
    }
    setShape(area, rectangles);
}

void OverlayWindow::setShape(const WindowArea& area, const std::vector<xcb_rectangle_t>& parts) {
    moveTo(area);
    xcb_shape_rectangles(connection().get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                         XCB_CLIP_ORDERING_UNSORTED, id(), 0, 0, static_cast<std::uint32_t>(parts.size()),
                         parts.data());
}

void OverlayWindow::setColour(std::uint32_t colour) {
    const std::uint32_t pixel = pixelOf(connection(), mVisual, colour);
    xcb_change_window_attributes(connection().get(), id(), XCB_CW_BACK_PIXEL, &pixel);
    xcb_clear_area(connection().get(), 0, id(), 0, 0, 0, 0);
}

} // namespace varno
