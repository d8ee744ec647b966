/// The extensions of a plug-in as tables of C functions, and what such functions have in common.
#ifndef VARNO_FORMATS_CLAP_PLUGINEXTENSIONS_H
#define VARNO_FORMATS_CLAP_PLUGINEXTENSIONS_H

#include "CLAP/Clap/Plugin.h"
#include "CLAP/ClapPlugin.h"

#include <exception>
#include <string_view>

namespace varno {

/// The table of an extension; null where the plug-ins have none of that name. [any]
const void* pluginExtension(std::string_view id) noexcept;

/// The plug-in behind what a host passes. [any]
inline ClapPlugin& pluginOf(const clap_plugin_t* table) {
    return *static_cast<ClapPlugin*>(table->plugin_data);
}

/// Calls `call` with the plug-in. @return false, with one line in the host's log, where it throws [any]
template<class Call>
bool guarded(const clap_plugin_t* table, const Call& call) noexcept {
    ClapPlugin& plugin = pluginOf(table);
    try {
        call(plugin);
        return true;
    } catch (const std::exception& error) {
        plugin.host().logError(error.what());
    } catch (...) {
        plugin.host().logError("failed for no reason that it names");
    }
    return false;
}

} // namespace varno

#endif
