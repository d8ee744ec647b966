#include "CLAP/Window/WindowExtensions.h"

#include "CLAP/Clap/Gui.h"
#include "CLAP/PluginExtensions.h"
#include "CLAP/Window/ClapWindow.h"
#include "CLAP/Window/Indications.h"
#include "Shared/SharedModule.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>

namespace varno {

namespace {

// Calls `call` with the window. False where there is none, it throws, or `call` returns false.
template<class Call>
bool withWindow(const clap_plugin_t* table, const Call& call) noexcept {
    bool isDone = false;
    guarded(table, [&](ClapPlugin& plugin) {
        if (plugin.window() != nullptr) {
            isDone = call(static_cast<ClapWindow&>(*plugin.window()));
        }
    });
    return isDone;
}

bool isX11(const char* api) {
    return api != nullptr && std::string_view(api) == CLAP_WINDOW_API_X11;
}

// The number of a window of X11; nothing where it is of another system.
std::optional<xcb_window_t> numberOf(const clap_window_t* window) {
    if (window == nullptr || !isX11(window->api) || window->x11 > std::numeric_limits<xcb_window_t>::max()) {
        return std::nullopt;
    }
    return static_cast<xcb_window_t>(window->x11);
}

PixelSize pixels(std::uint32_t width, std::uint32_t height) {
    constexpr std::uint32_t kMost = std::numeric_limits<std::int16_t>::max(); // of the window system
    return {static_cast<int>(std::min(width, kMost)), static_cast<int>(std::min(height, kMost))};
}

bool giveSize(PixelSize size, std::uint32_t* width, std::uint32_t* height) {
    *width = static_cast<std::uint32_t>(size.width);
    *height = static_cast<std::uint32_t>(size.height);
    return true;
}

bool isApiSupported(const clap_plugin_t* /*table*/, const char* api, bool /*isFloating*/) noexcept {
    return isX11(api);
}

bool preferredApi(const clap_plugin_t* /*table*/, const char** api, bool* isFloating) noexcept {
    if (api == nullptr || isFloating == nullptr) {
        return false;
    }
    *api = CLAP_WINDOW_API_X11;
    *isFloating = false;
    return true;
}

bool create(const clap_plugin_t* table, const char* api, bool isFloating) noexcept {
    const bool isAny = isFloating && (api == nullptr || *api == 0);
    if ((!isAny && !isX11(api)) || pluginOf(table).window() != nullptr) {
        return false;
    }
    return guarded(table, [&](ClapPlugin& plugin) {
        const SharedModule shared;
        plugin.setWindow(std::make_unique<ClapWindow>(plugin, isFloating));
    });
}

void destroy(const clap_plugin_t* table) noexcept {
    guarded(table, [](ClapPlugin& plugin) {
        const SharedModule shared;
        plugin.setWindow(nullptr);
    });
}

bool setScale(const clap_plugin_t* table, double scale) noexcept {
    return withWindow(table, [&](ClapWindow& window) { return window.setScale(scale); });
}

bool getSize(const clap_plugin_t* table, std::uint32_t* width, std::uint32_t* height) noexcept {
    return width != nullptr && height != nullptr && withWindow(table, [&](const ClapWindow& window) {
               return giveSize(window.size(), width, height);
           });
}

bool canResize(const clap_plugin_t* table) noexcept {
    return withWindow(table, [](const ClapWindow& window) { return !window.isFloating(); });
}

bool resizeHints(const clap_plugin_t* table, clap_gui_resize_hints_t* hints) noexcept {
    return hints != nullptr && withWindow(table, [&](const ClapWindow& window) {
               const PixelSize size = window.size();
               *hints = {true, true, true, static_cast<std::uint32_t>(size.width),
                         static_cast<std::uint32_t>(size.height)};
               return !window.isFloating();
           });
}

bool adjustSize(const clap_plugin_t* table, std::uint32_t* width, std::uint32_t* height) noexcept {
    return width != nullptr && height != nullptr && withWindow(table, [&](ClapWindow& window) {
               return giveSize(window.adjusted(pixels(*width, *height)), width, height);
           });
}

bool setSize(const clap_plugin_t* table, std::uint32_t width, std::uint32_t height) noexcept {
    return withWindow(table, [&](ClapWindow& window) { return window.setSize(pixels(width, height)); });
}

bool setParent(const clap_plugin_t* table, const clap_window_t* parent) noexcept {
    const auto number = numberOf(parent);
    return number && withWindow(table, [&](ClapWindow& window) { return window.setParent(*number); });
}

bool setTransient(const clap_plugin_t* table, const clap_window_t* other) noexcept {
    const auto number = numberOf(other);
    return number && withWindow(table, [&](ClapWindow& window) { return window.setTransient(*number); });
}

void suggestTitle(const clap_plugin_t* table, const char* title) noexcept {
    withWindow(table, [&](ClapWindow& window) {
        window.setTitle(title == nullptr ? "" : title);
        return true;
    });
}

bool show(const clap_plugin_t* table) noexcept {
    return withWindow(table, [](ClapWindow& window) { return window.show(); });
}

bool hide(const clap_plugin_t* table) noexcept {
    return withWindow(table, [](ClapWindow& window) { return window.hide(); });
}

void onTimer(const clap_plugin_t* table, clap_id timer) noexcept {
    withWindow(table, [&](ClapWindow& window) {
        if (window.isTimer(timer)) {
            window.turn();
        }
        return true;
    });
}

void onDescriptor(const clap_plugin_t* table, int descriptor, std::uint32_t /*flags*/) noexcept {
    withWindow(table, [&](ClapWindow& window) {
        window.ready(descriptor);
        return true;
    });
}

constexpr clap_plugin_gui_t kGui = {isApiSupported, preferredApi, create,       destroy,    setScale,
                                    getSize,        canResize,    resizeHints,  adjustSize, setSize,
                                    setParent,      setTransient, suggestTitle, show,       hide};
constexpr clap_plugin_timer_support_t kTimers = {onTimer};
constexpr clap_plugin_posix_fd_support_t kDescriptors = {onDescriptor};

} // namespace

const void* windowExtension(std::string_view id) noexcept {
    if (id == CLAP_EXT_GUI) {
        return &kGui;
    }
    if (id == CLAP_EXT_TIMER_SUPPORT) {
        return &kTimers;
    }
    return id == CLAP_EXT_POSIX_FD_SUPPORT ? &kDescriptors : indicationExtension(id);
}

} // namespace varno
