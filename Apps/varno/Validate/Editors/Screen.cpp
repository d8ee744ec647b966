#include "Validate/Editors/Screen.h"

#include <cstdlib>
#include <span>
#include <xcb/res.h>
#include <xcb/xtest.h>

namespace varno::validate {
namespace {

constexpr std::uint16_t kFirstWidth = 400;
constexpr std::uint16_t kFirstHeight = 300;
// A number that servers do not reach when they look for a free one.
constexpr const char* kNoDisplay = ":987654";
// Between the windows of two instances.
constexpr int kDistance = 60;

const std::string& requireDisplay(const OwnServer& server) {
    if (server.display().empty()) {
        throw PluginError("no X server of its own: Xvfb is not installed or does not start");
    }
    // Nothing can be made below a file.
    for (const char* const folder : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
        ::setenv(folder, "/dev/null/none", 1);
    }
    ::unsetenv("WAYLAND_DISPLAY");
    ::unsetenv("XAUTHORITY");
    ::setenv("DISPLAY", server.display().c_str(), 1);
    return server.display();
}

struct FreesReply {
    void operator()(void* reply) const { std::free(reply); }
};

template<class Reply>
std::unique_ptr<Reply, FreesReply> owned(Reply* reply) {
    return std::unique_ptr<Reply, FreesReply>(reply);
}

bool hasExtension(xcb_connection_t* connection, xcb_extension_t& extension) {
    const auto* const data = xcb_get_extension_data(connection, &extension);
    return data != nullptr && data->present != 0;
}

std::string nameOf(xcb_connection_t* connection, xcb_atom_t atom) {
    const auto reply =
        owned(xcb_get_atom_name_reply(connection, xcb_get_atom_name(connection, atom), nullptr));
    return reply == nullptr
               ? std::to_string(atom)
               : std::string(xcb_get_atom_name_name(reply.get()),
                             static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get())));
}

} // namespace

Screen::Screen()
    : mConnection(xcb_connect(requireDisplay(mServer).c_str(), nullptr)) {
    if (xcb_connection_has_error(connection()) != 0) {
        throw PluginError("the X server takes no connection");
    }
    if (!hasExtension(connection(), xcb_test_id) || !hasExtension(connection(), xcb_res_id)) {
        throw PluginError("the X server takes no input or does not count what it holds");
    }
}

const xcb_screen_t& Screen::screen() const {
    return *xcb_setup_roots_iterator(xcb_get_setup(connection())).data;
}

void Screen::lose() {
    mServer.stop();
    // Another server may take the number at once, and has windows of others.
    ::setenv("DISPLAY", kNoDisplay, 1);
}

void Screen::sync() const {
    owned(xcb_get_input_focus_reply(connection(), xcb_get_input_focus(connection()), nullptr));
}

std::uint32_t Screen::makeWindow(int place) const {
    const xcb_window_t window = xcb_generate_id(connection());
    const auto at = static_cast<std::int16_t>(kDistance * (place + 1));
    xcb_create_window(connection(), XCB_COPY_FROM_PARENT, window, screen().root, at, at, kFirstWidth,
                      kFirstHeight, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, screen().root_visual, 0, nullptr);
    xcb_map_window(connection(), window);
    sync();
    return window;
}

void Screen::resize(std::uint32_t window, EditorSize size) const {
    const std::uint32_t values[] = {static_cast<std::uint32_t>(size.width),
                                    static_cast<std::uint32_t>(size.height)};
    xcb_configure_window(connection(), window, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, values);
    xcb_flush(connection());
}

void Screen::destroy(std::uint32_t window) const {
    xcb_destroy_window(connection(), window);
    sync();
}

std::optional<EditorSize> Screen::sizeWithin(std::uint32_t window) const {
    const auto tree =
        owned(xcb_query_tree_reply(connection(), xcb_query_tree(connection(), window), nullptr));
    const std::span children(tree == nullptr ? nullptr : xcb_query_tree_children(tree.get()),
                             tree == nullptr ? 0 : tree->children_len);
    for (const xcb_window_t child : children) {
        const auto state = owned(xcb_get_window_attributes_reply(
            connection(), xcb_get_window_attributes(connection(), child), nullptr));
        const auto area =
            owned(xcb_get_geometry_reply(connection(), xcb_get_geometry(connection(), child), nullptr));
        if (state != nullptr && area != nullptr && state->map_state == XCB_MAP_STATE_VIEWABLE) {
            return EditorSize{area->width, area->height};
        }
    }
    return std::nullopt;
}

ServerResources Screen::resources() const {
    sync();
    ServerResources counts;
    const auto clients =
        owned(xcb_res_query_clients_reply(connection(), xcb_res_query_clients(connection()), nullptr));
    if (clients == nullptr) {
        return counts;
    }
    const std::uint32_t own = xcb_get_setup(connection())->resource_id_base;
    for (auto client = xcb_res_query_clients_clients_iterator(clients.get()); client.rem > 0;
         xcb_res_client_next(&client)) {
        const auto held = owned(xcb_res_query_client_resources_reply(
            connection(), xcb_res_query_client_resources(connection(), client.data->resource_base), nullptr));
        if (held == nullptr || client.data->resource_base == own) {
            continue;
        }
        ++counts["connection"];
        for (auto kind = xcb_res_query_client_resources_types_iterator(held.get()); kind.rem > 0;
             xcb_res_type_next(&kind)) {
            counts[nameOf(connection(), kind.data->resource_type)] += kind.data->count;
        }
    }
    return counts;
}

void Screen::fake(std::uint8_t type, int detail, int x, int y) const {
    xcb_test_fake_input(connection(), type, static_cast<std::uint8_t>(detail), XCB_CURRENT_TIME,
                        screen().root, static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 0);
    sync();
}

void Screen::move(std::uint32_t window, int x, int y) const {
    const auto area =
        owned(xcb_get_geometry_reply(connection(), xcb_get_geometry(connection(), window), nullptr));
    if (area != nullptr) {
        fake(XCB_MOTION_NOTIFY, 0, area->x + x, area->y + y);
    }
}

void Screen::press(int button) const {
    fake(XCB_BUTTON_PRESS, button);
}

void Screen::release(int button) const {
    fake(XCB_BUTTON_RELEASE, button);
}

void Screen::tap(int code) const {
    fake(XCB_KEY_PRESS, code);
    fake(XCB_KEY_RELEASE, code);
}

} // namespace varno::validate
