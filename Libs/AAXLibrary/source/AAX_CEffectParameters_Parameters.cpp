// The operations on parameters, by identifier.

#include "AAX_CEffectParameters.h"

#include "AAX_CString.h"
#include "EntryPoint.h"
#include "NameOfLength.h"

#include <algorithm>
#include <string>
#include <utility>

// Properties of a parameter.

AAX_Result AAX_CEffectParameters::GetNumberOfParameters(int32_t* outCount) const {
    return WriteOut(outCount, mParameterManager.NumParameters());
}

AAX_Result AAX_CEffectParameters::GetMasterBypassParameter(AAX_IString* outID) const {
    if (outID == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return AAX_Guarded(DataModelEntry(__func__), [&] {
        const bool exists = mParameterManager.GetParameterByID(cDefaultMasterBypassID) != nullptr;
        outID->Set(exists ? cDefaultMasterBypassID : "");
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::GetParameterIsAutomatable(AAX_CParamID paramID,
                                                            uint8_t* outAutomatable) const {
    if (outAutomatable != nullptr) {
        *outAutomatable = 0;
    }
    return ReadParameter(__func__, mParameterManager, paramID, outAutomatable,
                         [](const AAX_IParameter& parameter) {
                             return static_cast<uint8_t>(parameter.Automatable() ? 1 : 0);
                         });
}

AAX_Result AAX_CEffectParameters::GetParameterNumberOfSteps(AAX_CParamID paramID, int32_t* outSteps) const {
    if (outSteps == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return WithParameter(__func__, mParameterManager, paramID,
                         [outSteps](const AAX_IParameter& parameter) -> AAX_Result {
                             const uint32_t steps = parameter.GetNumberOfSteps();
                             if (!std::in_range<int32_t>(steps)) {
                                 return AAX_ERROR_SIGNED_INT_OVERFLOW;
                             }
                             *outSteps = static_cast<int32_t>(steps);
                             return AAX_SUCCESS;
                         });
}

AAX_Result AAX_CEffectParameters::GetParameterName(AAX_CParamID paramID, AAX_IString* outName) const {
    if (outName == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return AAX_Guarded(DataModelEntry(__func__), [&] {
        const AAX_IParameter* parameter = mParameterManager.GetParameterByID(paramID);
        outName->Set(parameter != nullptr ? parameter->Name().Get() : "");
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::GetParameterNameOfLength(AAX_CParamID paramID, AAX_IString* outName,
                                                           int32_t length) const {
    if (outName == nullptr) {
        return AAX_ERROR_INVALID_STRING_CONVERSION;
    }
    return AAX_Guarded(DataModelEntry(__func__), [&] {
        const AAX_IParameter* parameter = mParameterManager.GetParameterByID(paramID);
        const char* names = parameter != nullptr ? parameter->ShortenedName(length).Get() : "";
        outName->Set(std::string(NameOfLength(names, length)).c_str());
        return AAX_SUCCESS;
    });
}

AAX_Result AAX_CEffectParameters::GetParameterDefaultNormalizedValue(AAX_CParamID paramID,
                                                                     double* outValue) const {
    return ReadParameter(__func__, mParameterManager, paramID, outValue, [](const AAX_IParameter& parameter) {
        return parameter.GetNormalizedDefaultValue();
    });
}

AAX_Result AAX_CEffectParameters::SetParameterDefaultNormalizedValue(AAX_CParamID paramID, double value) {
    return ChangeParameter(__func__, mParameterManager, paramID, [value](AAX_IParameter& parameter) {
        parameter.SetNormalizedDefaultValue(value);
    });
}

AAX_Result AAX_CEffectParameters::GetParameterType(AAX_CParamID paramID, AAX_EParameterType* outType) const {
    return ReadParameter(__func__, mParameterManager, paramID, outType,
                         [](const AAX_IParameter& parameter) { return parameter.GetType(); });
}

AAX_Result AAX_CEffectParameters::GetParameterOrientation(AAX_CParamID paramID,
                                                          int32_t* outOrientation) const {
    return ReadParameter(__func__, mParameterManager, paramID, outOrientation,
                         [](const AAX_IParameter& parameter) { return parameter.GetOrientation(); });
}

AAX_Result AAX_CEffectParameters::GetParameter(AAX_CParamID paramID, AAX_IParameter** outParameter) {
    if (outParameter == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outParameter = mParameterManager.GetParameterByID(paramID);
    return *outParameter != nullptr ? AAX_SUCCESS : AAX_ERROR_INVALID_PARAMETER_ID;
}

AAX_Result AAX_CEffectParameters::GetParameterIndex(AAX_CParamID paramID, int32_t* outIndex) const {
    if (outIndex == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outIndex = mParameterManager.GetParameterIndex(paramID);
    return *outIndex >= 0 ? AAX_SUCCESS : AAX_ERROR_INVALID_PARAMETER_ID;
}

AAX_Result AAX_CEffectParameters::GetParameterIDFromIndex(int32_t index, AAX_IString* outID) const {
    if (outID == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return AAX_Guarded(DataModelEntry(__func__), [&] {
        const AAX_IParameter* parameter = mParameterManager.GetParameter(index);
        outID->Set(parameter != nullptr ? parameter->Identifier() : "");
        return parameter != nullptr ? AAX_SUCCESS : AAX_ERROR_INVALID_PARAMETER_ID;
    });
}

AAX_Result AAX_CEffectParameters::GetParameterValueInfo(AAX_CParamID /*paramID*/, int32_t /*selector*/,
                                                        int32_t* outInfo) const {
    return WriteOut(outInfo, 0, AAX_ERROR_UNIMPLEMENTED);
}

// Text.

AAX_Result AAX_CEffectParameters::GetParameterValueFromString(AAX_CParamID paramID, double* outValue,
                                                              const AAX_IString& text) const {
    if (outValue == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return WithParameter(__func__, mParameterManager, paramID, [&](const AAX_IParameter& parameter) {
        return parameter.GetNormalizedValueFromString(AAX_CString(text), outValue)
                   ? AAX_SUCCESS
                   : AAX_ERROR_INVALID_STRING_CONVERSION;
    });
}

AAX_Result AAX_CEffectParameters::GetParameterStringFromValue(AAX_CParamID paramID, double value,
                                                              AAX_IString* outText, int32_t maxChars) const {
    if (outText == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return WithParameter(__func__, mParameterManager, paramID,
                         [&](const AAX_IParameter& parameter) -> AAX_Result {
                             AAX_CString text;
                             if (!parameter.GetStringFromNormalizedValue(value, maxChars, text)) {
                                 return AAX_ERROR_INVALID_STRING_CONVERSION;
                             }
                             outText->Set(text.Get());
                             return AAX_SUCCESS;
                         });
}

AAX_Result AAX_CEffectParameters::GetParameterValueString(AAX_CParamID paramID, AAX_IString* outText,
                                                          int32_t maxChars) const {
    return ReadParameter(__func__, mParameterManager, paramID, outText,
                         [maxChars](const AAX_IParameter& parameter) {
                             AAX_CString text;
                             parameter.GetValueString(maxChars, &text);
                             return text;
                         });
}

// Values.

AAX_Result AAX_CEffectParameters::GetParameterNormalizedValue(AAX_CParamID paramID, double* outValue) const {
    return ReadParameter(__func__, mParameterManager, paramID, outValue,
                         [](const AAX_IParameter& parameter) { return parameter.GetNormalizedValue(); });
}

AAX_Result AAX_CEffectParameters::SetParameterNormalizedValue(AAX_CParamID paramID, double value) {
    return ChangeParameter(__func__, mParameterManager, paramID,
                           [value](AAX_IParameter& parameter) { parameter.SetNormalizedValue(value); });
}

AAX_Result AAX_CEffectParameters::SetParameterNormalizedRelative(AAX_CParamID paramID, double delta) {
    return ChangeParameter(__func__, mParameterManager, paramID, [delta](AAX_IParameter& parameter) {
        parameter.SetNormalizedValue(std::min(parameter.GetNormalizedValue() + delta, 1.0));
    });
}

AAX_Result AAX_CEffectParameters::TouchParameter(AAX_CParamID paramID) {
    return ChangeParameter(__func__, mParameterManager, paramID,
                           [](AAX_IParameter& parameter) { parameter.Touch(); });
}

AAX_Result AAX_CEffectParameters::ReleaseParameter(AAX_CParamID paramID) {
    return ChangeParameter(__func__, mParameterManager, paramID,
                           [](AAX_IParameter& parameter) { parameter.Release(); });
}

AAX_Result AAX_CEffectParameters::UpdateParameterTouch(AAX_CParamID /*paramID*/, uint8_t /*isTouched*/) {
    return AAX_SUCCESS;
}

AAX_Result AAX_CEffectParameters::UpdateParameterNormalizedValue(AAX_CParamID paramID, double value,
                                                                 AAX_EUpdateSource /*source*/) {
    return WithParameter(__func__, mParameterManager, paramID, [&](AAX_IParameter& parameter) {
        const double valueBefore = parameter.GetNormalizedValue();
        parameter.UpdateNormalizedValue(value);
        const AAX_Result result = mPacketDispatcher.SetDirty(paramID, true);
        if (parameter.GetNormalizedValue() != valueBefore) {
            CountChange();
        }
        return result;
    });
}

void AAX_CEffectParameters::CountChange() {
    // Wraps below zero instead of an overflow; the count is not reported then.
    mNumPlugInChanges = static_cast<int32_t>(static_cast<uint32_t>(mNumPlugInChanges) + 1U);
}

AAX_Result AAX_CEffectParameters::UpdateParameterNormalizedRelative(AAX_CParamID paramID, double delta) {
    return WithParameter(__func__, mParameterManager, paramID, [&](const AAX_IParameter& parameter) {
        const double value = std::clamp(parameter.GetNormalizedValue() + delta, 0.0, 1.0);
        return UpdateParameterNormalizedValue(paramID, value, AAX_eUpdateSource_Unspecified);
    });
}

AAX_Result AAX_CEffectParameters::GetNumberOfChanges(int32_t* outCount) const {
    if (outCount == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (mNumPlugInChanges >= 0) {
        *outCount = mNumPlugInChanges;
    }
    return AAX_SUCCESS;
}
