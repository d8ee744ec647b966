#include "AAX_VHostServices.h"

#include "HostObjects.h"

AAX_VHostServices::AAX_VHostServices(IACFUnknown* host) {
    const auto factory = ACFPtr<IACFComponentFactory>::Query(host, IID_IACFComponentFactory);
    const acfCLSID& services = AAXCompID_HostServices;
    mVersion1 = CreateComponent<AAX_IACFHostServices>(factory.Get(), services, IID_IAAXHostServicesV1);
    mVersion2 = CreateComponent<AAX_IACFHostServices_V2>(factory.Get(), services, IID_IAAXHostServicesV2);
    mVersion3 = CreateComponent<AAX_IACFHostServices_V3>(factory.Get(), services, IID_IAAXHostServicesV3);
}

void AAX_VHostServices::ReleaseHost() {
    ReleaseEach(mVersion3, mVersion2, mVersion1);
}

AAX_Result AAX_VHostServices::HandleAssertFailure(const char* file, int32_t line, const char* note,
                                                  int32_t flags) const {
    return mVersion3 ? mVersion3->HandleAssertFailure(file, line, note, flags) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VHostServices::Trace(int32_t priority, const char* message) const {
    return mVersion1 ? mVersion1->Trace(priority, message) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VHostServices::StackTrace(int32_t tracePriority, int32_t stackTracePriority,
                                         const char* message) const {
    // Not the code of the other two: a host without this operation is only older.
    return mVersion2 ? mVersion2->StackTrace(tracePriority, stackTracePriority, message)
                     : AAX_ERROR_UNIMPLEMENTED;
}
