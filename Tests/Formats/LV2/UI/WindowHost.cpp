#include "Tests/Formats/LV2/UI/WindowHost.h"

#include <lv2/atom/atom.h>
#include <lv2/parameters/parameters.h>

#include <cstring>
#include <dlfcn.h>
#include <stdexcept>
#include <utility>

namespace varno::test {

namespace {

WindowHost& hostOf(void* handle) {
    return *static_cast<WindowHost*>(handle);
}

} // namespace

const LV2UI_Descriptor* windowDescriptor(std::uint32_t index) {
    static void* const binary = dlopen(VARNO_WINDOW_BINARY, RTLD_NOW | RTLD_LOCAL);
    if (binary == nullptr) {
        throw std::runtime_error(dlerror());
    }
    return reinterpret_cast<LV2UI_DescriptorFunction>(dlsym(binary, "lv2ui_descriptor"))(index);
}

LV2_URID UridMap::operator()(const std::string& uri) {
    return mNumbers.try_emplace(uri, static_cast<LV2_URID>(mNumbers.size() + 1)).first->second;
}

LV2_URID UridMap::map(LV2_URID_Map_Handle handle, const char* uri) {
    return (*static_cast<UridMap*>(handle))(uri);
}

void PrintTo(const HostEvent& event, std::ostream* out) {
    constexpr const char* kNames[] = {"write", "touch", "release"};
    *out << kNames[static_cast<int>(event.kind)] << " port " << event.port << " " << event.value;
}

WindowHost::WindowHost(const XClient& client, const HostManners& manners)
    : mClient(client),
      mManners(manners),
      mParent(client, {manners.onScreen.x, manners.onScreen.y, 1, 1}) {
    open();
}

void WindowHost::open() {
    using enum HostManners::Parent;
    const float scale = mManners.scale.value_or(0.0F);
    std::vector<LV2_Options_Option> options;
    if (mManners.scale) {
        options.push_back({LV2_OPTIONS_INSTANCE, 0, mUrids(LV2_UI__scaleFactor), sizeof scale,
                           mUrids(LV2_ATOM__Float), &scale});
    }
    const float rateHz = mManners.rateHz.value_or(0.0F);
    if (mManners.rateHz) {
        options.push_back({LV2_OPTIONS_INSTANCE, 0, mUrids(LV2_PARAMETERS__sampleRate), sizeof rateHz,
                           mUrids(LV2_ATOM__Float), &rateHz});
    }
    if (!mManners.title.empty()) {
        options.push_back({LV2_OPTIONS_INSTANCE, 0, mUrids(LV2_UI__windowTitle),
                           static_cast<std::uint32_t>(mManners.title.size() + 1), mUrids(LV2_ATOM__String),
                           mManners.title.c_str()});
    }
    options.push_back({});
    std::vector<LV2_Feature> features = {{nullptr, nullptr}, // as some hosts do
                                         {LV2_URID__map, mUrids.feature()},
                                         {LV2_OPTIONS__options, options.data()}};
    if (mManners.parent != NotOffered) {
        const auto number =
            std::uintptr_t{mManners.parent == Window ? mParent.id() : xcb_window_t{XCB_WINDOW_NONE}};
        // NOLINTNEXTLINE(performance-no-int-to-ptr): a window's number is passed as a pointer
        features.push_back({LV2_UI__parent, reinterpret_cast<void*>(number)});
    }
    if (mManners.offersTouch) {
        features.push_back({LV2_UI__touch, &mTouch});
    }
    if (mManners.offersResize) {
        features.push_back({LV2_UI__resize, &mResize});
    }
    std::vector<const LV2_Feature*> list;
    for (const LV2_Feature& feature : features) {
        list.push_back(&feature);
    }
    list.push_back(nullptr);
    LV2UI_Widget widget = nullptr;
    const LV2UI_Descriptor* const descriptor = windowDescriptor();
    mHandle = descriptor->instantiate(descriptor, mManners.plugin.c_str(), VARNO_WINDOW_BUNDLE "/",
                                      &WindowHost::write, this, &widget, list.data());
    mWidget = static_cast<xcb_window_t>(reinterpret_cast<std::uintptr_t>(widget));
}

void WindowHost::close() {
    if (mHandle != nullptr) {
        windowDescriptor()->cleanup(mHandle);
        mHandle = nullptr;
    }
}

int WindowHost::turn() {
    mClient.synchronise();
    const auto* const idle =
        static_cast<const LV2UI_Idle_Interface*>(windowDescriptor()->extension_data(LV2_UI__idleInterface));
    return idle->idle(mHandle);
}

void WindowHost::tell(std::uint32_t port, float value) {
    tell(port, sizeof value, 0, &value);
}

void WindowHost::tell(std::uint32_t port, std::uint32_t size, std::uint32_t protocol, const void* value) {
    windowDescriptor()->port_event(mHandle, port, size, protocol, value);
}

const LV2UI_Show_Interface& WindowHost::showInterface() {
    return *static_cast<const LV2UI_Show_Interface*>(
        windowDescriptor()->extension_data(LV2_UI__showInterface));
}

std::vector<HostEvent> WindowHost::takeEvents() {
    return std::exchange(mEvents, {});
}

Area WindowHost::areaOf(xcb_window_t window) const {
    const XReply<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(
        mClient.connection(), xcb_get_geometry(mClient.connection(), window), nullptr));
    return reply == nullptr ? Area{} : Area{reply->x, reply->y, reply->width, reply->height};
}

Picture WindowHost::picture(const Area& area) const {
    return Picture::ofWindow(mClient, mWidget, area);
}

void WindowHost::write(LV2UI_Controller host, std::uint32_t port, std::uint32_t size, std::uint32_t protocol,
                       const void* value) {
    float number = 0.0F;
    if (size != sizeof number || protocol != 0) {
        throw std::logic_error("written is something else than a float");
    }
    std::memcpy(&number, value, sizeof number);
    hostOf(host).mEvents.push_back({HostEvent::Kind::Write, port, number});
    if (hostOf(host).mManners.repeatsWrites) {
        hostOf(host).tell(port, number);
    }
}

void WindowHost::touch(LV2UI_Feature_Handle host, std::uint32_t port, bool isTouched) {
    hostOf(host).mEvents.push_back(
        {isTouched ? HostEvent::Kind::Touch : HostEvent::Kind::Release, port, 0.0F});
}

int WindowHost::resize(LV2UI_Feature_Handle host, int width, int height) {
    const WindowHost& self = hostOf(host);
    const std::uint32_t size[] = {static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)};
    xcb_configure_window(self.mClient.connection(), self.mParent.id(),
                         XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size);
    self.mClient.synchronise();
    hostOf(host).mAskedSize = Area{0, 0, width, height};
    return 0;
}

} // namespace varno::test
