/// What the host reports about the desktop around a view, and does for an editor there.
#ifndef VARNO_INTERFACES_AAX_IACFDESKTOP_H
#define VARNO_INTERFACES_AAX_IACFDESKTOP_H

#include "AAX.h"

/// Called by the host's event loop with the context that came with it. [main]
using AAX_CWakeProc = void (*)(void* context);

/// How knobs follow the mouse.
enum AAX_EKnobMode : int32_t {
    AAX_eKnobMode_Default = 0, ///< As the editor's library does.
    AAX_eKnobMode_Line = 1,    ///< Along a straight line; a press does not change the value.
};

/// Version 1 (IID_IVarnoDesktopV1), an interface of this project's own that a view container may offer: for
/// desktops whose windows have no event loop and no scale of their own (X11). Without it an editor depends on
/// the host's timer alone, at scale 1. Contexts are borrowed until they are removed. Where the desktop has
/// been removed, queries and requests return AAX_ERROR_NULL_OBJECT.
class AAX_IACFDesktop : public IACFUnknown {
public:
    /// The factor by which the desktop enlarges what it shows, 1 for the plain size. Returns AAX_SUCCESS, or
    /// AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result GetScale(double* outScale) = 0;
    /// How knobs follow the mouse here, an AAX_EKnobMode. Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT.
    /// [main]
    virtual AAX_Result GetKnobMode(int32_t* outMode) = 0;
    /// Calls `proc` whenever the file descriptor can be read, until UnwatchDescriptor. Returns AAX_SUCCESS,
    /// or AAX_ERROR_NULL_ARGUMENT for a null `proc`. [main]
    virtual AAX_Result WatchDescriptor(int32_t descriptor, AAX_CWakeProc proc, void* context) = 0;
    /// Ends the watch that began with this descriptor and context; none is no failure. Returns AAX_SUCCESS.
    /// [main]
    virtual AAX_Result UnwatchDescriptor(int32_t descriptor, void* context) = 0;
    /// Calls `proc` every `periodMs` milliseconds, until StopTimer; a second timer of the same context takes
    /// the place of the first. Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT for a null `proc`. [main]
    virtual AAX_Result StartTimer(uint32_t periodMs, AAX_CWakeProc proc, void* context) = 0;
    /// Ends the timer of this context; none is no failure. Returns AAX_SUCCESS. [main]
    virtual AAX_Result StopTimer(void* context) = 0;

protected:
    ~AAX_IACFDesktop() = default;
};

#endif
