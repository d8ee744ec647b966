#include "Validate/Clap/ClapHost.h"

#include "CLAP/Clap/Extensions.h"

#include <algorithm>
#include <string_view>

namespace varno::validate {
namespace {

ClapHost& hostOf(const clap_host_t* table) {
    return *static_cast<ClapHost*>(table->host_data);
}

// What a plug-in logs is no finding.
constexpr clap_host_log_t kLog = {
    [](const clap_host_t* host, std::int32_t, const char*) { hostOf(host).called(); }};

constexpr clap_host_params_t kParams = {
    [](const clap_host_t* host, std::uint32_t) { hostOf(host).expectMainThread("params.rescan"); },
    [](const clap_host_t* host, clap_id, std::uint32_t) { hostOf(host).expectMainThread("params.clear"); },
    [](const clap_host_t* host) { hostOf(host).called(); },
};

constexpr clap_host_latency_t kLatency = {
    [](const clap_host_t* host) { hostOf(host).expectMainThread("latency.changed"); }};

const void* extensionOf(const clap_host_t* host, const char* id) {
    if (id == nullptr) {
        hostOf(host).complain("get_extension() of the host without a name");
        return nullptr;
    }
    const std::string_view name = id;
    return name == CLAP_EXT_LOG       ? static_cast<const void*>(&kLog)
           : name == CLAP_EXT_PARAMS  ? &kParams
           : name == CLAP_EXT_LATENCY ? static_cast<const void*>(&kLatency)
                                      : nullptr;
}

} // namespace

ClapHost::ClapHost(std::vector<std::string>& complaints)
    : mTable{.clap_version = CLAP_VERSION,
             .host_data = this,
             .name = "varno validate",
             .vendor = "",
             .url = "",
             .version = "1",
             .get_extension = extensionOf,
             .request_restart = [](const clap_host_t* host) { hostOf(host).called(); },
             .request_process = [](const clap_host_t* host) { hostOf(host).called(); },
             .request_callback =
                 [](const clap_host_t* host) {
                     hostOf(host).mIsCallbackWanted = true;
                     hostOf(host).called();
                 }},
      mComplaints(complaints),
      mMainThread(std::this_thread::get_id()) {
}

void ClapHost::complain(const std::string& text) {
    const std::lock_guard lock(mMutex);
    if (std::ranges::find(mComplaints, text) == mComplaints.end()) {
        mComplaints.push_back(text);
    }
}

void ClapHost::expectMainThread(const char* call) {
    if (std::this_thread::get_id() != mMainThread) {
        complain(std::string(call) + " was called on a thread that is not the main thread");
    }
    called();
}

void ClapHost::called() const {
    if (std::this_thread::get_id() == mMainThread && mHook) {
        mHook();
    }
}

} // namespace varno::validate
