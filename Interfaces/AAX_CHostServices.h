/// The module's only diagnostics channel.
#ifndef VARNO_INTERFACES_AAX_CHOSTSERVICES_H
#define VARNO_INTERFACES_AAX_CHOSTSERVICES_H

#include "AAX.h"

/// Trace lines and failed assertions on their way to the host. Silent until the module is started and after
/// it is shut down. Neither throws, whatever the host does.
class AAX_CHostServices {
public:
    /// Bytes of a trace line with its terminator; what is longer is cut.
    static constexpr int kTraceLineBytes = 512;
    /// Returned for a line that cannot be formatted; outside the named codes.
    static constexpr AAX_Result kFormatFailure = -20051;

    AAX_CHostServices() = delete;

    /// Opens the channel to `host` (borrowed; its services are referenced) or, with null, closes it. An open
    /// channel stays with its host until it is closed. The host calls it through start-up and shut-down,
    /// while nothing else of the module runs. Throws what the host throws; the channel is closed then, and
    /// the host released. [main]
    static void Set(IACFUnknown* host);
    /// Reports a failed assertion: source file, line from 1, text of the condition, AAX_EAssertFlags bits;
    /// execution continues. Returns AAX_SUCCESS while the channel is closed, else the result of
    /// AAX_IHostServices::HandleAssertFailure, AAX_ERROR_UNKNOWN_EXCEPTION for what that throws. [any]
    static AAX_Result HandleAssertFailure(const char* file, int32_t line, const char* note,
                                          int32_t flags) noexcept;
    /// Sends one trace line, formatted as printf does. Returns AAX_SUCCESS while the channel is closed,
    /// kFormatFailure, else the result of AAX_IHostServices::Trace, AAX_ERROR_UNKNOWN_EXCEPTION for what that
    /// throws. [any]
    [[gnu::format(printf, 2, 3)]] static AAX_Result Trace(AAX_ETracePriorityHost priority, const char* format,
                                                          ...) noexcept;
};

#endif
