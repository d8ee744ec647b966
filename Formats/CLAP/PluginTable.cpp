#include "CLAP/PluginTable.h"

#include "CLAP/ClapPlugin.h"
#include "CLAP/PluginExtensions.h"

#include <memory>

namespace varno {

namespace {

// The plug-in with what its host receives of it.
struct HostedClapPlugin : ClapPlugin {
    using ClapPlugin::ClapPlugin;

    clap_plugin_t table{};
};

bool init(const clap_plugin_t* table) noexcept {
    return guarded(table, [](ClapPlugin& plugin) { plugin.init(); });
}

void destroy(const clap_plugin_t* table) noexcept {
    delete static_cast<HostedClapPlugin*>(&pluginOf(table));
}

bool activate(const clap_plugin_t* table, double sampleRateHz, std::uint32_t /*minFrames*/,
              std::uint32_t /*maxFrames*/) noexcept {
    return guarded(table, [&](ClapPlugin& plugin) { plugin.activate(sampleRateHz); });
}

void deactivate(const clap_plugin_t* table) noexcept {
    guarded(table, [](ClapPlugin& plugin) { plugin.deactivate(); });
}

bool startProcessing(const clap_plugin_t* table) noexcept {
    return pluginOf(table).isActive();
}

void stopProcessing(const clap_plugin_t* /*table*/) noexcept {
}

void reset(const clap_plugin_t* table) noexcept {
    if (pluginOf(table).isActive()) {
        pluginOf(table).audio().reset();
    }
}

clap_process_status process(const clap_plugin_t* table, const clap_process_t* process) noexcept {
    return pluginOf(table).isActive() && process != nullptr ? pluginOf(table).audio().process(*process)
                                                            : CLAP_PROCESS_ERROR;
}

const void* extension(const clap_plugin_t* /*table*/, const char* id) noexcept {
    return id == nullptr ? nullptr : pluginExtension(id);
}

void onMainThread(const clap_plugin_t* table) noexcept {
    guarded(table, [](ClapPlugin& plugin) {
        if (plugin.window() != nullptr) {
            plugin.window()->turn();
        }
    });
}

} // namespace

const clap_plugin_t* makePlugin(const clap_plugin_descriptor_t& descriptor, const clap_host_t& host,
                                std::int32_t channels) {
    auto plugin = std::make_unique<HostedClapPlugin>(host, channels);
    plugin->table = {.desc = &descriptor,
                     .plugin_data = static_cast<ClapPlugin*>(plugin.get()),
                     .init = init,
                     .destroy = destroy,
                     .activate = activate,
                     .deactivate = deactivate,
                     .start_processing = startProcessing,
                     .stop_processing = stopProcessing,
                     .reset = reset,
                     .process = process,
                     .get_extension = extension,
                     .on_main_thread = onMainThread};
    return &plugin.release()->table;
}

} // namespace varno
