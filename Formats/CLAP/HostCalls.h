/// The host of a plug-in, and what of it may be absent.
#ifndef VARNO_FORMATS_CLAP_HOSTCALLS_H
#define VARNO_FORMATS_CLAP_HOSTCALLS_H

#include "CLAP/Clap/Extensions.h"
#include "CLAP/Clap/Plugin.h"

namespace varno {

/// Calls a host. What the host does not offer is left out; nothing of it is required.
class HostCalls {
public:
    /// @param host outlives this object; not called yet [any]
    explicit HostCalls(const clap_host_t& host)
        : mHost(host) {}

    /// Looks for what the host offers, once, within the plug-in's init(). [main]
    void connect() noexcept;
    /// The host itself, for the functions of its extensions. [any]
    const clap_host_t& table() const noexcept { return mHost; }
    /// An extension's functions; null where the host has none. [any]
    template<class Extension>
    const Extension* extension(const char* id) const noexcept {
        return mHost.get_extension == nullptr
                   ? nullptr
                   : static_cast<const Extension*>(mHost.get_extension(&mHost, id));
    }

    /// One line for the user: through the host's log, else on standard error. [any]
    void logError(const char* text) const noexcept;
    /// Has the plug-in deactivated and activated. [any]
    void requestRestart() const noexcept;
    /// Has on_main_thread() called. [any]
    void requestCallback() const noexcept;
    /// Has the host exchange events with the plug-in. [any], not [audio]
    void requestFlush() const noexcept;
    /// Has the host read all values again. [main]
    void valuesChanged() const noexcept;
    /// Has the host read the latency again; within activate() alone. [main]
    void latencyChanged() const noexcept;

private:
    const clap_host_t& mHost;
    const clap_host_log_t* mLog = nullptr;
    const clap_host_params_t* mParams = nullptr;
    const clap_host_latency_t* mLatency = nullptr;
};

} // namespace varno

#endif
