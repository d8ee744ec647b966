#include "Tests/Support/Popups.h"

#include <cstring>
#include <string_view>

namespace varno::test {
namespace {

xcb_atom_t atom(const XClient& client, std::string_view name) {
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        client.connection(),
        xcb_intern_atom(client.connection(), 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

bool isOfType(const XClient& client, xcb_window_t window, xcb_atom_t type) {
    const XReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(client.connection(),
                               xcb_get_property(client.connection(), 0, window,
                                                atom(client, "_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 0, 1),
                               nullptr));
    return reply && xcb_get_property_value_length(reply.get()) == sizeof type &&
           std::memcmp(xcb_get_property_value(reply.get()), &type, sizeof type) == 0;
}

} // namespace

Area shownPopup(const XClient& client, const char* type) {
    const xcb_atom_t wanted = atom(client, type);
    for (const xcb_window_t window : client.children(client.screen().root)) {
        if (client.isShown(window) && isOfType(client, window, wanted)) {
            const XReply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
                client.connection(), xcb_get_geometry(client.connection(), window), nullptr));
            return geometry ? Area{geometry->x, geometry->y, geometry->width, geometry->height} : Area{};
        }
    }
    return {};
}

} // namespace varno::test
