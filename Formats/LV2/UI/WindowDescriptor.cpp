// The entry point of the window's binary: one function, which describes one window.
#include "LV2/Ports.h"
#include "LV2/UI/PluginWindow.h"
#include "Shared/SharedModule.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <exception>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using varno::PluginWindow;

// Return values of the functions that a host calls.
constexpr int kDone = 0;
constexpr int kFailedOrClosed = 1;

std::int32_t channelsOf(const char* pluginUri) {
    const auto* const found = std::ranges::find_if(varno::kPluginUris, [&](const varno::PluginUri& plugin) {
        return pluginUri != nullptr && std::string_view(pluginUri) == plugin.uri;
    });
    if (found == varno::kPluginUris.end()) {
        throw std::invalid_argument(std::string("found plug-in \"") +
                                    (pluginUri == nullptr ? "" : pluginUri) +
                                    "\" for the window, expected one of this bundle");
    }
    return found->channels;
}

std::filesystem::path resourcesIn(const char* bundlePath) {
    return bundlePath == nullptr ? std::filesystem::path() : std::filesystem::path(bundlePath) / "resources";
}

PluginWindow& windowOf(LV2UI_Handle handle) {
    return *static_cast<PluginWindow*>(handle);
}

// No exception escapes from these functions.

LV2UI_Handle instantiate(const LV2UI_Descriptor*, const char* pluginUri, const char* bundlePath,
                         LV2UI_Write_Function write, LV2UI_Controller controller, LV2UI_Widget* outWidget,
                         const LV2_Feature* const* features) noexcept {
    const varno::HostFeatures offered(features);
    try {
        const varno::WindowSource source{channelsOf(pluginUri), resourcesIn(bundlePath)};
        const varno::HostOffer offer = varno::readHostOffer(offered);
        const varno::SharedModule module;
        auto window = std::make_unique<PluginWindow>(module.get(), source, offer,
                                                     varno::HostCalls{write, controller, offer.touch});
        if (outWidget != nullptr) {
            // NOLINTNEXTLINE(performance-no-int-to-ptr): X11 has numbers where hosts expect pointers
            *outWidget = reinterpret_cast<LV2UI_Widget>(static_cast<std::uintptr_t>(window->id()));
        }
        return window.release();
    } catch (const std::exception& error) {
        offered.logError(error.what());
    } catch (...) {
        offered.logError("the window cannot be made, for no reason that it names");
    }
    return nullptr;
}

void cleanup(LV2UI_Handle handle) noexcept {
    const varno::SharedModule module;
    delete &windowOf(handle);
}

void portEvent(LV2UI_Handle handle, std::uint32_t port, std::uint32_t size, std::uint32_t protocol,
               const void* buffer) noexcept {
    float value = 0.0F;
    if (protocol == 0 && size == sizeof value && buffer != nullptr) {
        std::memcpy(&value, buffer, sizeof value);
        windowOf(handle).portChanged(port, value);
    }
}

int idle(LV2UI_Handle handle) noexcept {
    try {
        return windowOf(handle).idle() ? kDone : kFailedOrClosed;
    } catch (...) {
        return kFailedOrClosed;
    }
}

int show(LV2UI_Handle handle) noexcept {
    return windowOf(handle).show() ? kDone : kFailedOrClosed;
}

int hide(LV2UI_Handle handle) noexcept {
    return windowOf(handle).hide() ? kDone : kFailedOrClosed;
}

const void* extensionData(const char* uri) {
    static constexpr LV2UI_Idle_Interface kIdle = {idle};
    static constexpr LV2UI_Show_Interface kShow = {show, hide};
    const std::string_view wanted = uri == nullptr ? "" : uri;
    if (wanted == LV2_UI__idleInterface) {
        return &kIdle;
    }
    return wanted == LV2_UI__showInterface ? &kShow : nullptr;
}

constexpr LV2UI_Descriptor kWindow = {varno::kWindowUri, instantiate, cleanup, portEvent, extensionData};

} // namespace

const LV2UI_Descriptor* lv2ui_descriptor(std::uint32_t index) {
    return index == 0 ? &kWindow : nullptr;
}
