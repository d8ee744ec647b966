#include "Host/DesktopFacet.h"

#include "Host/TellOutput.h"

namespace varno {

AAX_Result DesktopFacet::GetScale(double* outScale) {
    return mDesktop == nullptr ? AAX_ERROR_NULL_OBJECT : tell(outScale, mDesktop->scale());
}

AAX_Result DesktopFacet::WatchDescriptor(std::int32_t descriptor, AAX_CWakeProc proc, void* context) {
    if (mDesktop == nullptr) {
        return AAX_ERROR_NULL_OBJECT;
    }
    if (proc == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDesktop->watch(descriptor, context, [proc, context] { proc(context); });
    return AAX_SUCCESS;
}

AAX_Result DesktopFacet::UnwatchDescriptor(std::int32_t descriptor, void* context) {
    if (mDesktop != nullptr) {
        mDesktop->unwatch(descriptor, context);
    }
    return AAX_SUCCESS;
}

AAX_Result DesktopFacet::StartTimer(std::uint32_t periodMs, AAX_CWakeProc proc, void* context) {
    if (mDesktop == nullptr) {
        return AAX_ERROR_NULL_OBJECT;
    }
    if (proc == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDesktop->startTimer(std::chrono::milliseconds(periodMs), context, [proc, context] { proc(context); });
    return AAX_SUCCESS;
}

AAX_Result DesktopFacet::StopTimer(void* context) {
    if (mDesktop != nullptr) {
        mDesktop->stopTimer(context);
    }
    return AAX_SUCCESS;
}

} // namespace varno
