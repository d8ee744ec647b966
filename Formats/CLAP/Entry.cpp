// The symbol that a host looks for, and the factory of the plug-ins.
#include "CLAP/BinaryFolder.h"
#include "CLAP/Clap/Plugin.h"
#include "CLAP/PluginTable.h"
#include "CLAP/Plugins.h"
#include "CLAP/Presets.h"
#include "Surround/Settings/PathText.h"

#include <exception>
#include <string_view>

namespace varno {

namespace {

std::uint32_t pluginCount(const clap_plugin_factory_t* /*factory*/) noexcept {
    return static_cast<std::uint32_t>(kClapPlugins.size());
}

const clap_plugin_descriptor_t* pluginDescriptor(const clap_plugin_factory_t* /*factory*/,
                                                 std::uint32_t index) noexcept {
    return index < kClapPlugins.size() ? &kClapPlugins[index].descriptor : nullptr;
}

const clap_plugin_t* createPlugin(const clap_plugin_factory_t* /*factory*/, const clap_host_t* host,
                                  const char* id) noexcept {
    if (host == nullptr || id == nullptr || !clap_version_is_compatible(host->clap_version)) {
        return nullptr;
    }
    try {
        for (const OfferedPlugin& plugin : kClapPlugins) {
            if (std::string_view(id) == plugin.descriptor.id) {
                return makePlugin(plugin.descriptor, *host, plugin.channels);
            }
        }
    } catch (const std::exception&) {
        // Without memory there is no plug-in, and a host is not called from here.
    }
    return nullptr;
}

constexpr clap_plugin_factory_t kFactory = {pluginCount, pluginDescriptor, createPlugin};

// Nothing is made here, so that hosts may call both as often as they like.
bool initEntry(const char* path) noexcept {
    try {
        setBinaryPath(pathFromText(path == nullptr ? "" : path));
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void deinitEntry() noexcept {
}

const void* factory(const char* id) noexcept {
    const std::string_view wanted = id == nullptr ? "" : id;
    if (wanted == CLAP_PRESET_DISCOVERY_FACTORY_ID || wanted == CLAP_PRESET_DISCOVERY_FACTORY_ID_COMPAT) {
        return &presetFactory();
    }
    return wanted == CLAP_PLUGIN_FACTORY_ID ? &kFactory : nullptr;
}

} // namespace

} // namespace varno

extern "C" CLAP_EXPORT const clap_plugin_entry_t clap_entry = {CLAP_VERSION, varno::initEntry,
                                                               varno::deinitEntry, varno::factory};
