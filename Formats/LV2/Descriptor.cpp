// The entry point of the plug-ins' binary: two plug-ins as C functions, from which no exception escapes.
#include "LV2/HostFeatures.h"
#include "LV2/Plugin.h"
#include "LV2/Ports.h"
#include "Shared/SharedModule.h"

#include <cstring>
#include <exception>
#include <iterator>
#include <lv2/core/lv2.h>

namespace varno {
namespace {

Plugin& pluginOf(LV2_Handle handle) {
    return *static_cast<Plugin*>(handle);
}

template<std::size_t kPlugin>
LV2_Handle instantiate(const LV2_Descriptor* /*descriptor*/, double sampleRateHz, const char* /*bundle*/,
                       const LV2_Feature* const* features) noexcept {
    const HostFeatures host(features);
    try {
        const SharedModule shared;
        return new Plugin(shared.get(), kPluginUris[kPlugin].channels, sampleRateHz,
                          static_cast<const LV2_Inline_Display*>(host.data(LV2_INLINEDISPLAY__queue_draw)));
    } catch (const std::exception& error) {
        host.logError(error.what());
    } catch (...) {
        host.logError("cannot be made, for no reason that it names");
    }
    return nullptr;
}

void connectPort(LV2_Handle handle, std::uint32_t port, void* data) noexcept {
    pluginOf(handle).connect(port, data);
}

void activate(LV2_Handle handle) noexcept {
    pluginOf(handle).activate();
}

void run(LV2_Handle handle, std::uint32_t frames) noexcept {
    pluginOf(handle).run(frames);
}

void cleanup(LV2_Handle handle) noexcept {
    const SharedModule shared;
    delete &pluginOf(handle);
}

LV2_Inline_Display_Image_Surface* render(LV2_Handle handle, std::uint32_t width,
                                         std::uint32_t mostHeight) noexcept {
    return pluginOf(handle).display().render(width, mostHeight);
}

const void* extensionData(const char* uri) noexcept {
    static constexpr LV2_Inline_Display_Interface kDisplay = {render};
    return std::strcmp(uri, LV2_INLINEDISPLAY__interface) == 0 ? &kDisplay : nullptr;
}

template<std::size_t kPlugin>
constexpr LV2_Descriptor kDescriptor = {
    .URI = kPluginUris[kPlugin].uri,
    .instantiate = instantiate<kPlugin>,
    .connect_port = connectPort,
    .activate = activate,
    .run = run,
    .deactivate = nullptr, // nothing to stop
    .cleanup = cleanup,
    .extension_data = extensionData,
};

} // namespace
} // namespace varno

LV2_SYMBOL_EXPORT const LV2_Descriptor* lv2_descriptor(std::uint32_t index) {
    static constexpr const LV2_Descriptor* kDescriptors[] = {&varno::kDescriptor<0>, &varno::kDescriptor<1>};
    static_assert(std::size(kDescriptors) == varno::kPluginUris.size());
    return index < std::size(kDescriptors) ? kDescriptors[index] : nullptr;
}
