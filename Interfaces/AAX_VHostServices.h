/// The host's diagnostics channel in the versions that the host offers.
#ifndef VARNO_INTERFACES_AAX_VHOSTSERVICES_H
#define VARNO_INTERFACES_AAX_VHOSTSERVICES_H

#include "AAX_IACFHostServices.h"
#include "AAX_IHostServices.h"
#include "ACF/ACFPtr.h"

/// Acquires each version once, when it is made, and holds it for its life.
class AAX_VHostServices : public AAX_IHostServices {
public:
    /// `host` (borrowed, may be null) has the factory that makes the host services.
    explicit AAX_VHostServices(IACFUnknown* host);

    /// Releases what is held of the host, all of it, then throws the first exception of the host. Each
    /// operation lacks its version from now on. [main]
    void ReleaseHost();

    AAX_Result HandleAssertFailure(const char* file, int32_t line, const char* note,
                                   int32_t flags) const override;
    AAX_Result Trace(int32_t priority, const char* message) const override;
    AAX_Result StackTrace(int32_t tracePriority, int32_t stackTracePriority,
                          const char* message) const override;

private:
    // Released in the opposite order: version 3 first.
    ACFPtr<AAX_IACFHostServices> mVersion1;
    ACFPtr<AAX_IACFHostServices_V2> mVersion2;
    ACFPtr<AAX_IACFHostServices_V3> mVersion3;
};

#endif
