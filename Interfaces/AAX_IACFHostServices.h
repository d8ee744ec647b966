/// The host's diagnostics channel.
#ifndef VARNO_INTERFACES_AAX_IACFHOSTSERVICES_H
#define VARNO_INTERFACES_AAX_IACFHOSTSERVICES_H

#include "AAX.h"

/// Version 1 (IID_IAAXHostServicesV1), a component of the host's factory (AAXCompID_HostServices).
class AAX_IACFHostServices : public IACFUnknown {
public:
    /// Takes one trace line. `priority` is an AAX_ETracePriorityHost bit value; `message` is borrowed,
    /// zero-terminated, at most 511 characters. Returns AAX_SUCCESS. [any]
    virtual AAX_Result Trace(int32_t priority, const char* message) = 0;

protected:
    ~AAX_IACFHostServices() = default;
};

/// Version 2 (IID_IAAXHostServicesV2).
class AAX_IACFHostServices_V2 : public AAX_IACFHostServices {
public:
    /// Takes one trace line and records the caller's stack at `stackTracePriority`. Both priorities are
    /// AAX_ETracePriorityHost bit values; `message` is borrowed. Returns AAX_SUCCESS. [any]
    virtual AAX_Result StackTrace(int32_t tracePriority, int32_t stackTracePriority, const char* message) = 0;

protected:
    ~AAX_IACFHostServices_V2() = default;
};

/// Version 3 (IID_IAAXHostServicesV3).
class AAX_IACFHostServices_V3 : public AAX_IACFHostServices_V2 {
public:
    /// Reports a failed assertion; the caller carries on afterwards. `file` and `note` (the text of the
    /// failed condition) are borrowed, `line` counts from 1, `flags` are AAX_EAssertFlags bits. Returns
    /// AAX_SUCCESS. [any]
    virtual AAX_Result HandleAssertFailure(const char* file, int32_t line, const char* note,
                                           int32_t flags) = 0;

protected:
    ~AAX_IACFHostServices_V3() = default;
};

#endif
