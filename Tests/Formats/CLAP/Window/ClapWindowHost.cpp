#include "Tests/Formats/CLAP/Window/ClapWindowHost.h"

#include <algorithm>
#include <dlfcn.h>
#include <map>
#include <stdexcept>
#include <vector>

namespace varno::test {

namespace {

// By the tables of hosts: extensions are called with those.
std::map<const clap_host_t*, ClapWindowHost*>& windowHosts() {
    static std::map<const clap_host_t*, ClapWindowHost*> hosts;
    return hosts;
}

ClapWindowHost& windowHostOf(const clap_host_t* table) {
    return *windowHosts().at(table);
}

constexpr clap_host_gui_t kGui = {
    [](const clap_host_t*) {},
    [](const clap_host_t* host, std::uint32_t width, std::uint32_t height) {
        windowHostOf(host).requestedSize = Area{0, 0, static_cast<int>(width), static_cast<int>(height)};
        return true;
    },
    [](const clap_host_t*) { return false; },
    [](const clap_host_t*) { return false; },
    [](const clap_host_t* host, bool wasDestroyed) {
        ++windowHostOf(host).closed;
        windowHostOf(host).wasDestroyed = wasDestroyed;
    },
};

constexpr clap_host_timer_support_t kTimers = {
    [](const clap_host_t* host, std::uint32_t periodMs, clap_id* timer) {
        *timer = 100 + periodMs;
        return windowHostOf(host).timers.insert(*timer).second;
    },
    [](const clap_host_t* host, clap_id timer) { return windowHostOf(host).timers.erase(timer) == 1; },
};

constexpr clap_host_posix_fd_support_t kDescriptors = {
    [](const clap_host_t* host, int descriptor, std::uint32_t flags) {
        windowHostOf(host).descriptors.insert(descriptor);
        return flags == CLAP_POSIX_FD_READ;
    },
    [](const clap_host_t*, int, std::uint32_t) { return false; },
    [](const clap_host_t* host, int descriptor) {
        return windowHostOf(host).descriptors.erase(descriptor) == 1;
    },
};

template<class Extension>
const Extension& extensionOf(const clap_plugin_t* plugin, const char* id) {
    return *static_cast<const Extension*>(requireExtension(plugin, id));
}

} // namespace

const clap_plugin_entry_t& binaryEntry() {
    static const clap_plugin_entry_t* const entry = [] {
        void* const binary = dlopen(VARNO_CLAP_BINARY, RTLD_NOW | RTLD_LOCAL);
        if (binary == nullptr) {
            throw std::runtime_error(dlerror());
        }
        const auto* const found = static_cast<const clap_plugin_entry_t*>(dlsym(binary, "clap_entry"));
        found->init(VARNO_CLAP_BINARY);
        return found;
    }();
    return *entry;
}

ClapWindowHost::ClapWindowHost(const XClient& client, const WindowManners& manners)
    : mClient(client),
      mManners(manners),
      mParent(client, {manners.onScreen.x, manners.onScreen.y, 800, 600}) {
    windowHosts()[&mHost.table()] = this;
    mHost.offer(CLAP_EXT_GUI, &kGui);
    if (manners.hasTimers) {
        mHost.offer(CLAP_EXT_TIMER_SUPPORT, &kTimers);
    }
    if (manners.watchesDescriptors) {
        mHost.offer(CLAP_EXT_POSIX_FD_SUPPORT, &kDescriptors);
    }
    mPlugin.emplace(binaryEntry(), mHost, 2);
    mPlugin->activate();
    mGui = &extensionOf<clap_plugin_gui_t>(table(), CLAP_EXT_GUI);
    open();
}

ClapWindowHost::~ClapWindowHost() {
    mPlugin.reset();
    windowHosts().erase(&mHost.table());
}

void ClapWindowHost::open() {
    const auto require = [](bool isDone, const char* what) {
        if (!isDone) {
            throw std::runtime_error(std::string(what) + " was refused");
        }
    };
    const std::vector<xcb_window_t> before = mClient.children(mClient.screen().root);
    require(mGui->create(table(), mManners.isFloating ? "" : CLAP_WINDOW_API_X11, mManners.isFloating),
            "create");
    if (!mManners.isFloating) {
        clap_window_t parent{};
        parent.api = CLAP_WINDOW_API_X11;
        parent.x11 = mParent.id();
        require(mGui->set_parent(table(), &parent), "set_parent");
        mWindow = mClient.children(mParent.id()).at(0);
    } else {
        for (const xcb_window_t window : mClient.children(mClient.screen().root)) {
            mWindow =
                std::ranges::find(before, window) == before.end() && size().width == 0 ? window : mWindow;
        }
    }
    require(mGui->show(table()), "show");
}

void ClapWindowHost::closeWindow() {
    mGui->destroy(table());
}

Area ClapWindowHost::size() const {
    const XReply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(
        mClient.connection(), xcb_get_geometry(mClient.connection(), mWindow), nullptr));
    return reply == nullptr ? Area{} : Area{reply->x, reply->y, reply->width, reply->height};
}

void ClapWindowHost::turn() {
    mClient.synchronise();
    const std::set<int> ready(descriptors.begin(), descriptors.end());
    for (const int descriptor : ready) {
        extensionOf<clap_plugin_posix_fd_support_t>(table(), CLAP_EXT_POSIX_FD_SUPPORT)
            .on_fd(table(), descriptor, CLAP_POSIX_FD_READ);
    }
    const std::set<clap_id> due = timers;
    for (const clap_id timer : due) {
        extensionOf<clap_plugin_timer_support_t>(table(), CLAP_EXT_TIMER_SUPPORT).on_timer(table(), timer);
    }
    if (mHost.callbacks.exchange(0) > 0) {
        table()->on_main_thread(table());
    }
}

} // namespace varno::test
