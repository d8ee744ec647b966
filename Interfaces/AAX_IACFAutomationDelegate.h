/// The host's automation of parameters.
#ifndef VARNO_INTERFACES_AAX_IACFAUTOMATIONDELEGATE_H
#define VARNO_INTERFACES_AAX_IACFAUTOMATIONDELEGATE_H

#include "AAX.h"

/// Version 1 (IID_IAAXAutomationDelegateV1), offered by the same object as the controller. Identifiers are
/// borrowed for the call; values are normalized, 0 to 1.
class AAX_IACFAutomationDelegate : public IACFUnknown {
public:
    /// Makes a parameter known to automation. Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT. [main]
    virtual AAX_Result RegisterParameter(AAX_CParamID paramID) = 0;
    /// Takes a parameter back. Returns AAX_SUCCESS, or AAX_ERROR_INVALID_PARAMETER_ID for one that was not
    /// registered. [main]
    virtual AAX_Result UnregisterParameter(AAX_CParamID paramID) = 0;
    /// Asks for a value; the host answers later through the data model's UpdateParameterNormalizedValue.
    /// Returns AAX_SUCCESS, or AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) = 0;
    /// Tells a value that a parameter has taken. Returns AAX_SUCCESS, or AAX_ERROR_INVALID_PARAMETER_ID.
    /// [main]
    virtual AAX_Result PostCurrentValue(AAX_CParamID paramID, double normalizedValue) = 0;
    /// Tells that a gesture on a parameter begins; gestures nest. Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result PostTouchRequest(AAX_CParamID paramID) = 0;
    /// Tells that the innermost gesture on a parameter ends. Returns AAX_SUCCESS, or
    /// AAX_ERROR_INVALID_PARAMETER_ID. [main]
    virtual AAX_Result PostReleaseRequest(AAX_CParamID paramID) = 0;

protected:
    ~AAX_IACFAutomationDelegate() = default;
};

#endif
