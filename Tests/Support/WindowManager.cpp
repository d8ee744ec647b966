#include "Tests/Support/WindowManager.h"

#include "Tests/Support/Eventually.h"

#include <stdexcept>
#include <string_view>

namespace varno::test {
namespace {

// A window manager that follows the desktops' common rules states a window of its own there.
bool isManaged(const XClient& client) {
    constexpr std::string_view kName = "_NET_SUPPORTING_WM_CHECK";
    const XReply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(
        client.connection(), xcb_intern_atom(client.connection(), 0, kName.size(), kName.data()), nullptr));
    const auto cookie = xcb_get_property(client.connection(), 0, client.screen().root, atom->atom,
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
    const XReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(client.connection(), cookie, nullptr));
    return reply && xcb_get_property_value_length(reply.get()) > 0;
}

// Openbox states its window before it answers requests, and those that come between are lost: it is ready
// when a window that requests to be shown is shown.
bool showsWindows(const XClient& client) {
    constexpr std::chrono::milliseconds kAnswer(500);
    const xcb_window_t window = xcb_generate_id(client.connection());
    xcb_create_window(client.connection(), XCB_COPY_FROM_PARENT, window, client.screen().root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_map_window(client.connection(), window);
    const bool isShown = eventually([&] { return client.isShown(window); }, kAnswer);
    client.destroyWindow(window);
    return isShown;
}

std::vector<std::string> homesIn(const std::filesystem::path& folder) {
    std::vector<std::string> homes;
    for (const std::string name : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_DATA_HOME"}) {
        homes.push_back(name + '=' + folder.string());
    }
    return homes;
}

} // namespace

WindowManager::WindowManager(const XClient& client, const std::string& display,
                             const std::filesystem::path& folder)
    : mProcess({"openbox", "--sm-disable"}, [&] {
          Surroundings surroundings{.folder = folder, .environment = homesIn(folder)};
          surroundings.environment.push_back("DISPLAY=" + display);
          return surroundings;
      }()) {
    if (!eventually([&] { return (isManaged(client) && showsWindows(client)) || mProcess.status(); }) ||
        mProcess.status()) {
        throw std::runtime_error("openbox does not begin to manage windows");
    }
}

} // namespace varno::test
