#include "Validate/Clap/ClapHost.h"

#include "CLAP/Clap/Extensions.h"

#include <algorithm>
#include <string_view>
#include <utility>

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
    [](const clap_host_t* host) {
        hostOf(host).requestFlush();
        hostOf(host).called();
    },
};

constexpr clap_host_latency_t kLatency = {
    [](const clap_host_t* host) { hostOf(host).expectMainThread("latency.changed"); }};

} // namespace

// What a window has its host do.
struct ClapWindowCalls {
    static bool requestResize(const clap_host_t* table, std::uint32_t width, std::uint32_t height) {
        ClapHost& host = hostOf(table);
        // The format allows it on any thread; windows are for one.
        if (host.mOnResize && std::this_thread::get_id() == host.mMainThread) {
            host.mOnResize({static_cast<int>(width), static_cast<int>(height)});
        }
        return host.mOnResize != nullptr;
    }

    static bool registerTimer(const clap_host_t* table, std::uint32_t periodMs, clap_id* timer) {
        ClapHost& host = hostOf(table);
        host.expectMainThread("timer_support.register_timer");
        const clap_id id = ++host.mLastTimer;
        *timer = id;
        host.mLoop.startTimer(std::chrono::milliseconds(periodMs), id, [&host, id] {
            const auto* const calls =
                extensionOfPlugin<clap_plugin_timer_support_t>(host, CLAP_EXT_TIMER_SUPPORT);
            if (calls != nullptr) {
                calls->on_timer(host.mPlugin, id);
            }
        });
        return true;
    }

    static bool unregisterTimer(const clap_host_t* table, clap_id timer) {
        hostOf(table).expectMainThread("timer_support.unregister_timer");
        return hostOf(table).mLoop.stopTimer(timer);
    }

    static bool registerDescriptor(const clap_host_t* table, int descriptor, std::uint32_t /*flags*/) {
        ClapHost& host = hostOf(table);
        host.expectMainThread("posix_fd_support.register_fd");
        host.mLoop.watch(descriptor, 0, [&host, descriptor] {
            const auto* const calls =
                extensionOfPlugin<clap_plugin_posix_fd_support_t>(host, CLAP_EXT_POSIX_FD_SUPPORT);
            if (calls != nullptr) {
                calls->on_fd(host.mPlugin, descriptor, CLAP_POSIX_FD_READ);
            }
        });
        return true;
    }

    static bool unregisterDescriptor(const clap_host_t* table, int descriptor) {
        hostOf(table).expectMainThread("posix_fd_support.unregister_fd");
        return hostOf(table).mLoop.unwatch(descriptor, 0);
    }

private:
    template<class Extension>
    static const Extension* extensionOfPlugin(const ClapHost& host, const char* id) {
        return host.mPlugin == nullptr
                   ? nullptr
                   : static_cast<const Extension*>(host.mPlugin->get_extension(host.mPlugin, id));
    }
};

namespace {

constexpr clap_host_gui_t kGui = {
    [](const clap_host_t*) {},
    ClapWindowCalls::requestResize,
    [](const clap_host_t*) { return false; },
    [](const clap_host_t*) { return false; },
    [](const clap_host_t*, bool) {},
};

constexpr clap_host_timer_support_t kTimers = {ClapWindowCalls::registerTimer,
                                               ClapWindowCalls::unregisterTimer};

// Only what can be read is watched for, so that there is nothing to modify.
constexpr clap_host_posix_fd_support_t kDescriptors = {
    ClapWindowCalls::registerDescriptor, [](const clap_host_t*, int, std::uint32_t) { return true; },
    ClapWindowCalls::unregisterDescriptor};

const void* windowExtensionOf(std::string_view name) {
    return name == CLAP_EXT_GUI                ? static_cast<const void*>(&kGui)
           : name == CLAP_EXT_TIMER_SUPPORT    ? &kTimers
           : name == CLAP_EXT_POSIX_FD_SUPPORT ? static_cast<const void*>(&kDescriptors)
                                               : nullptr;
}

const void* extensionOf(const clap_host_t* host, const char* id) {
    if (id == nullptr) {
        hostOf(host).complain("get_extension() of the host without a name");
        return nullptr;
    }
    const std::string_view name = id;
    return name == CLAP_EXT_LOG       ? static_cast<const void*>(&kLog)
           : name == CLAP_EXT_PARAMS  ? &kParams
           : name == CLAP_EXT_LATENCY ? static_cast<const void*>(&kLatency)
                                      : windowExtensionOf(name);
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

ClapHost::~ClapHost() {
    if (mLoop.count() > 0) {
        complain("timers or descriptors were still registered when the plug-in had ended");
    }
}

void ClapHost::follow(const clap_plugin_t* plugin, std::function<void(EditorSize)> onResize) {
    mPlugin = plugin;
    mOnResize = std::move(onResize);
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
