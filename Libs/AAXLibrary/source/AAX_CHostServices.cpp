#include "AAX_CHostServices.h"

#include "AAX_VHostServices.h"

#include <cstdarg>
#include <cstdio>
#include <utility>

namespace {

// Owned, but only by Set: a host that unloads the module without shutting it down may have ended already when
// static objects are destroyed, and must not be called then.
constinit AAX_VHostServices* gServices = nullptr;

} // namespace

void AAX_CHostServices::Set(IACFUnknown* host) {
    if (host == nullptr) {
        delete std::exchange(gServices, nullptr);
    } else if (gServices == nullptr) {
        gServices = new AAX_VHostServices(host);
    }
}

AAX_Result AAX_CHostServices::HandleAssertFailure(const char* file, int32_t line, const char* note,
                                                  int32_t flags) {
    return gServices != nullptr ? gServices->HandleAssertFailure(file, line, note, flags) : AAX_SUCCESS;
}

AAX_Result AAX_CHostServices::Trace(AAX_ETracePriorityHost priority, const char* format, ...) {
    if (gServices == nullptr) {
        return AAX_SUCCESS;
    }
    char line[kTraceLineBytes];
    std::va_list arguments;
    va_start(arguments, format);
    const int length = std::vsnprintf(line, sizeof(line), format, arguments);
    va_end(arguments);
    return length < 0 ? kFormatFailure : gServices->Trace(priority, line);
}
