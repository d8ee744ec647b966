/// The host's automation of parameters, as the plug-in calls it.
#ifndef VARNO_INTERFACES_AAX_IAUTOMATIONDELEGATE_H
#define VARNO_INTERFACES_AAX_IAUTOMATIONDELEGATE_H

#include "AAX.h"

/// Each operation forwards to the host's of the same name (AAX_IACFAutomationDelegate). Identifiers are
/// borrowed for the call; values are normalized, 0 to 1.
class AAX_IAutomationDelegate {
public:
    virtual ~AAX_IAutomationDelegate() = default;
    /// Makes a parameter known to automation. Returns the host's result, or AAX_ERROR_NULL_OBJECT without
    /// version 1. [main]
    virtual AAX_Result RegisterParameter(AAX_CParamID paramID) = 0;
    /// Takes a parameter back. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1. [main]
    virtual AAX_Result UnregisterParameter(AAX_CParamID paramID) = 0;
    /// Asks for a value, which the host answers later. Returns the host's result, or AAX_ERROR_NULL_OBJECT
    /// without version 1. [main]
    virtual AAX_Result PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) = 0;
    /// Tells a value that a parameter has taken. Returns the host's result, or AAX_ERROR_NULL_OBJECT without
    /// version 1. [main]
    virtual AAX_Result PostCurrentValue(AAX_CParamID paramID, double normalizedValue) = 0;
    /// Tells that a gesture begins. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1.
    /// [main]
    virtual AAX_Result PostTouchRequest(AAX_CParamID paramID) = 0;
    /// Tells that a gesture ends. Returns the host's result, or AAX_ERROR_NULL_OBJECT without version 1.
    /// [main]
    virtual AAX_Result PostReleaseRequest(AAX_CParamID paramID) = 0;
};

#endif
