#include "CLAP/HostCalls.h"

#include <cstdio>

namespace varno {

void HostCalls::connect() noexcept {
    mLog = extension<clap_host_log_t>(CLAP_EXT_LOG);
    mParams = extension<clap_host_params_t>(CLAP_EXT_PARAMS);
    mLatency = extension<clap_host_latency_t>(CLAP_EXT_LATENCY);
}

void HostCalls::logError(const char* text) const noexcept {
    if (mLog != nullptr && mLog->log != nullptr) {
        mLog->log(&mHost, CLAP_LOG_ERROR, text);
    } else {
        std::fprintf(stderr, "Varno-S: %s\n", text);
    }
}

void HostCalls::requestRestart() const noexcept {
    if (mHost.request_restart != nullptr) {
        mHost.request_restart(&mHost);
    }
}

void HostCalls::requestCallback() const noexcept {
    if (mHost.request_callback != nullptr) {
        mHost.request_callback(&mHost);
    }
}

void HostCalls::requestFlush() const noexcept {
    if (mParams != nullptr && mParams->request_flush != nullptr) {
        mParams->request_flush(&mHost);
    } else if (mHost.request_process != nullptr) {
        mHost.request_process(&mHost);
    }
}

void HostCalls::valuesChanged() const noexcept {
    if (mParams != nullptr && mParams->rescan != nullptr) {
        mParams->rescan(&mHost, CLAP_PARAM_RESCAN_VALUES);
    }
}

void HostCalls::latencyChanged() const noexcept {
    if (mLatency != nullptr && mLatency->changed != nullptr) {
        mLatency->changed(&mHost);
    }
}

} // namespace varno
