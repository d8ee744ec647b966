/// The host's diagnostics channel, as the plug-in calls it.
#ifndef VARNO_INTERFACES_AAX_IHOSTSERVICES_H
#define VARNO_INTERFACES_AAX_IHOSTSERVICES_H

#include "AAX.h"

/// Texts are borrowed for the call. Nothing here throws.
class AAX_IHostServices {
public:
    virtual ~AAX_IHostServices() = default;
    /// Reports a failed assertion: source file, line from 1, text of the condition, AAX_EAssertFlags bits.
    /// Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 3. [any]
    virtual AAX_Result HandleAssertFailure(const char* file, int32_t line, const char* note,
                                           int32_t flags) const = 0;
    /// Sends one trace line; `priority` is an AAX_ETracePriorityHost bit value. Returns the host's result, or
    /// AAX_ERROR_NULL_OBJECT without version 1. [any]
    virtual AAX_Result Trace(int32_t priority, const char* message) const = 0;
    /// Sends one trace line and has the caller's stack recorded; both priorities are AAX_ETracePriorityHost
    /// bit values. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without version 2. [any]
    virtual AAX_Result StackTrace(int32_t tracePriority, int32_t stackTracePriority,
                                  const char* message) const = 0;
};

#endif
