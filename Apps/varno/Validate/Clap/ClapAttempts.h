/// What hosts may try with a CLAP plug-in.
#ifndef VARNO_APPS_VARNO_VALIDATE_CLAP_CLAPATTEMPTS_H
#define VARNO_APPS_VARNO_VALIDATE_CLAP_CLAPATTEMPTS_H

#include "CLAP/Clap/Extensions.h"
#include "CLAP/Clap/Plugin.h"
#include "Validate/Clap/ClapHost.h"
#include "Validate/Plugin.h"

#include <functional>
#include <vector>

namespace varno::validate {

/// A running plug-in, for as long as it lives. An extension that it lacks is null.
struct ClapUse {
    const clap_plugin_t* plugin = nullptr;
    ClapHost* host = nullptr;
    const clap_plugin_params_t* params = nullptr;
    const clap_plugin_state_t* state = nullptr;
    const clap_plugin_latency_t* latency = nullptr;
    std::vector<clap_param_info_t> infos;
    std::function<void(const clap_input_events_t&)> process; ///< A buffer of silence with these events.
    std::function<bool()> restart;                           ///< Whether it could be activated again.
};

/// Parameters, extensions and events that there are not.
std::vector<Attempt> unknownIdentifiers(const ClapUse& use);
/// Bytes that others have saved, and streams that fail.
std::vector<Attempt> foreignStates(const ClapUse& use);
/// With a host that calls the plug-in within its functions and streams.
std::vector<Attempt> callsFromWithin(const ClapUse& use);

} // namespace varno::validate

#endif
