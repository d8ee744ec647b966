#include "AAX_CHostServices.h"

#include "AAX_VHostServices.h"

#include <cstdarg>
#include <cstdio>
#include <memory>
#include <utility>

namespace {

// Owned, but only by Set: a host that unloads the module without shutting it down may have ended already when
// static objects are destroyed, and must not be called then.
constinit AAX_VHostServices* gServices = nullptr;

// The result of a call to the host. There is nobody to report to what it throws: this is where reports go.
template<class Call>
AAX_Result ResultOf(Call call) noexcept {
    try {
        return call();
    } catch (...) {
        return AAX_ERROR_UNKNOWN_EXCEPTION;
    }
}

} // namespace

void AAX_CHostServices::Set(IACFUnknown* host) {
    if (host == nullptr) {
        const std::unique_ptr<AAX_VHostServices> services(std::exchange(gServices, nullptr));
        if (services != nullptr) {
            services->ReleaseHost();
        }
    } else if (gServices == nullptr) {
        gServices = new AAX_VHostServices(host);
    }
}

AAX_Result AAX_CHostServices::HandleAssertFailure(const char* file, int32_t line, const char* note,
                                                  int32_t flags) noexcept {
    if (gServices == nullptr) {
        return AAX_SUCCESS;
    }
    return ResultOf([&] { return gServices->HandleAssertFailure(file, line, note, flags); });
}

AAX_Result AAX_CHostServices::Trace(AAX_ETracePriorityHost priority, const char* format, ...) noexcept {
    if (gServices == nullptr) {
        return AAX_SUCCESS;
    }
    char line[kTraceLineBytes];
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(line, sizeof(line), format, arguments);
    va_end(arguments);
    return length < 0 ? kFormatFailure : ResultOf([&] { return gServices->Trace(priority, line); });
}
