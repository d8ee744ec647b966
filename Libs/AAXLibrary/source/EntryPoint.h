/// What the data model's entry points have in common.
#ifndef VARNO_LIBS_AAXLIBRARY_SOURCE_ENTRYPOINT_H
#define VARNO_LIBS_AAXLIBRARY_SOURCE_ENTRYPOINT_H

#include "AAX_CParameterManager.h"
#include "AAX_Guarded.h"
#include "AAX_IParameter.h"

#include <utility>

/// The data model's entry point of this name.
inline AAX_EntryPoint DataModelEntry(const char* name) {
    return {"AAX_CEffectParameters", name};
}

/// Returns the result of `action` for the parameter with an identifier, as the body of `entry`.
template<class Manager, class Action>
AAX_Result WithParameter(const char* entry, Manager& manager, AAX_CParamID paramID, Action&& action) {
    return AAX_Guarded(DataModelEntry(entry), [&]() -> AAX_Result {
        auto* parameter = manager.GetParameterByID(paramID);
        return parameter != nullptr ? action(*parameter) : AAX_ERROR_INVALID_PARAMETER_ID;
    });
}

/// Writes what `get` returns for the parameter with an identifier, as the body of `entry`.
template<class Out, class Get>
AAX_Result ReadParameter(const char* entry, const AAX_CParameterManager& manager, AAX_CParamID paramID,
                         Out* out, Get&& get) {
    if (out == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    return WithParameter(entry, manager, paramID, [&](const AAX_IParameter& parameter) {
        *out = get(parameter);
        return AAX_SUCCESS;
    });
}

/// Runs `action` on the parameter with an identifier, as the body of `entry`.
template<class Action>
AAX_Result ChangeParameter(const char* entry, AAX_CParameterManager& manager, AAX_CParamID paramID,
                           Action&& action) {
    return WithParameter(entry, manager, paramID, [&](AAX_IParameter& parameter) {
        action(parameter);
        return AAX_SUCCESS;
    });
}

/// Writes a value that is always the same.
template<class T>
AAX_Result WriteOut(T* out, T value, AAX_Result result = AAX_SUCCESS) {
    if (out == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *out = value;
    return result;
}

#endif
