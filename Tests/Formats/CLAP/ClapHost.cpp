#include "Tests/Formats/CLAP/ClapHost.h"

namespace varno::test {

ClapHost& hostOf(const clap_host_t* table) {
    return *static_cast<ClapHost*>(table->host_data);
}

namespace {

constexpr clap_host_log_t kLog = {[](const clap_host_t* host, std::int32_t severity, const char* text) {
    hostOf(host).log += std::to_string(severity) + ": " + text + "\n";
}};

constexpr clap_host_params_t kParams = {
    [](const clap_host_t* host, std::uint32_t flags) {
        hostOf(host).valueRescans += flags == CLAP_PARAM_RESCAN_VALUES ? 1 : 0;
    },
    [](const clap_host_t*, clap_id, std::uint32_t) {},
    [](const clap_host_t* host) { ++hostOf(host).flushes; },
};

constexpr clap_host_latency_t kLatency = {[](const clap_host_t* host) { ++hostOf(host).latencyChanges; }};

} // namespace

ClapHost::ClapHost(Offer offer)
    : mTable{.clap_version = CLAP_VERSION,
             .host_data = this,
             .name = "Test host",
             .vendor = "",
             .url = "",
             .version = "1",
             .get_extension = nullptr,
             .request_restart = [](const clap_host_t* host) { ++hostOf(host).restarts; },
             .request_process = [](const clap_host_t* host) { ++hostOf(host).processRequests; },
             .request_callback = [](const clap_host_t* host) { ++hostOf(host).callbacks; }} {
    mTable.get_extension = [](const clap_host_t* host, const char* id) -> const void* {
        const auto& extensions = hostOf(host).mExtensions;
        const auto found = extensions.find(id);
        return found == extensions.end() ? nullptr : found->second;
    };
    if (offer == Offer::kAll) {
        mExtensions = {{CLAP_EXT_LOG, &kLog}, {CLAP_EXT_PARAMS, &kParams}, {CLAP_EXT_LATENCY, &kLatency}};
    }
}

} // namespace varno::test
