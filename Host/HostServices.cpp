#include "Host/HostServices.h"

namespace varno {

HostServices::HostServices(std::shared_ptr<HostContext> context)
    : HostObject(std::move(context), "host services") {
}

AAX_Result HostServices::Trace(std::int32_t priority, const char* message) {
    if (context()->options.traceSink) {
        context()->options.traceSink(priority, message);
    }
    context()->monitor->trace(priority, message);
    return AAX_SUCCESS;
}

AAX_Result HostServices::StackTrace(std::int32_t tracePriority, std::int32_t, const char* message) {
    // The line alone: where it comes from is better asked of a debugger.
    return Trace(tracePriority, message);
}

AAX_Result HostServices::HandleAssertFailure(const char* file, std::int32_t line, const char* note,
                                             std::int32_t flags) {
    context()->monitor->assertFailure(file, line, note, flags);
    return AAX_SUCCESS;
}

void* HostServices::interfaceFor(const acfIID& iid) {
    if (iid == IID_IAAXHostServicesV1) {
        return static_cast<AAX_IACFHostServices*>(this);
    }
    if (iid == IID_IAAXHostServicesV2) {
        return static_cast<AAX_IACFHostServices_V2*>(this);
    }
    return iid == IID_IAAXHostServicesV3 ? static_cast<AAX_IACFHostServices_V3*>(this) : nullptr;
}

} // namespace varno
