#include "Window/Monitors.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <xcb/randr.h>

namespace varno {
namespace {

// From this version on the server reports monitors.
constexpr std::uint32_t kMajor = 1;
constexpr std::uint32_t kMinor = 5;

bool hasMonitors(const XConnection& connection) {
    if (!connection.hasExtension(xcb_randr_id)) {
        return false;
    }
    const XReply<xcb_randr_query_version_reply_t> version(xcb_randr_query_version_reply(
        connection.get(), xcb_randr_query_version(connection.get(), kMajor, kMinor), nullptr));
    return version && (version->major_version > kMajor || version->minor_version >= kMinor);
}

WindowArea common(const WindowArea& one, const WindowArea& other) {
    const int x = std::max(one.x, other.x);
    const int y = std::max(one.y, other.y);
    return {x, y, std::max(std::min(one.right(), other.right()) - x, 0),
            std::max(std::min(one.bottom(), other.bottom()) - y, 0)};
}

std::int64_t pixels(const WindowArea& area) {
    return std::int64_t{area.width} * area.height;
}

// By how much a range lies beside another one, without direction.
int gap(int start, int end, int otherStart, int otherEnd) {
    return std::max({otherStart - end, start - otherEnd, 0});
}

int distance(const WindowArea& one, const WindowArea& other) {
    return gap(one.x, one.right(), other.x, other.right()) +
           gap(one.y, one.bottom(), other.y, other.bottom());
}

} // namespace

std::vector<WindowArea> monitors(const XConnection& connection) {
    std::vector<WindowArea> areas;
    const auto& screen = connection.screen();
    if (hasMonitors(connection)) {
        const auto cookie = xcb_randr_get_monitors(connection.get(), screen.root, 1);
        const XReply<xcb_randr_get_monitors_reply_t> reply(
            xcb_randr_get_monitors_reply(connection.get(), cookie, nullptr));
        for (auto entry = reply ? xcb_randr_get_monitors_monitors_iterator(reply.get())
                                : xcb_randr_monitor_info_iterator_t{};
             entry.rem > 0; xcb_randr_monitor_info_next(&entry)) {
            areas.push_back({entry.data->x, entry.data->y, entry.data->width, entry.data->height});
        }
    }
    if (areas.empty()) {
        const auto root = areaOnScreen(connection, screen.root); // which may have changed its size
        areas.push_back(root.value_or(WindowArea{0, 0, screen.width_in_pixels, screen.height_in_pixels}));
    }
    return areas;
}

// An area without pixels counts as the pixel at its place.
WindowArea monitorOf(const XConnection& connection, const WindowArea& wanted) {
    const WindowArea area{wanted.x, wanted.y, std::max(wanted.width, 1), std::max(wanted.height, 1)};
    const auto all = monitors(connection);
    return *std::min_element(all.begin(), all.end(), [&](const auto& one, const auto& other) {
        const auto shownByOne = pixels(common(one, area));
        const auto shownByOther = pixels(common(other, area));
        return shownByOne != shownByOther ? shownByOne > shownByOther
                                          : distance(one, area) < distance(other, area);
    });
}

WindowArea workAreaOf(XConnection& connection, const WindowArea& area) {
    constexpr std::size_t kNumbers = 4; // of each desktop: x, y, width, height
    const auto root = connection.screen().root;
    const auto monitor = monitorOf(connection, area);
    const auto desktops = connection.words(root, connection.atom("_NET_WORKAREA"));
    const auto current = connection.words(root, connection.atom("_NET_CURRENT_DESKTOP"));
    const std::size_t first = (current.empty() ? 0 : std::size_t{current[0]}) * kNumbers;
    if (first + kNumbers > desktops.size()) {
        return monitor;
    }
    const auto number = [&](std::size_t i) { return static_cast<int>(desktops[first + i]); };
    const auto free = common(monitor, {number(0), number(1), number(2), number(3)});
    return pixels(free) > 0 ? free : monitor;
}

std::optional<WindowArea> areaOnScreen(const XConnection& connection, xcb_window_t window) {
    auto* const server = connection.get();
    const auto size = xcb_get_geometry(server, window);
    const auto place = xcb_translate_coordinates(server, window, connection.screen().root, 0, 0);
    const XReply<xcb_get_geometry_reply_t> sizeReply(xcb_get_geometry_reply(server, size, nullptr));
    const XReply<xcb_translate_coordinates_reply_t> placeReply(
        xcb_translate_coordinates_reply(server, place, nullptr));
    if (!sizeReply || !placeReply) {
        return {};
    }
    return WindowArea{placeReply->dst_x, placeReply->dst_y, sizeReply->width, sizeReply->height};
}

} // namespace varno
