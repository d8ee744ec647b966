/// A parameter's value in a chunk.
#ifndef VARNO_LIBS_AAXLIBRARY_SOURCE_SAVEDPARAMETER_H
#define VARNO_LIBS_AAXLIBRARY_SOURCE_SAVEDPARAMETER_H

#include "AAX_Assert.h"
#include "AAX_IParameter.h"

#include <string_view>

class AAX_CChunkDataParser;

// A parameter's value is of the type whose getter succeeds first: float, int32, bool, double or text. A float
// is saved as a double, a bool as the integer 0 or 1. A parameter without a value of any type is not saved,
// not restored and never differs.

/// Appends the parameter's value under its identifier.
void SaveParameter(const AAX_IParameter& parameter, AAX_CChunkDataParser& chunk);

/// Sets the parameter to the value saved under its identifier, if there is one of its type.
void RestoreParameter(AAX_IParameter& parameter, AAX_CChunkDataParser& chunk);

/// Whether the value saved under the parameter's identifier is there, of its type and equal to its value.
/// Doubles are compared in single precision; not-a-number equals nothing.
bool IsParameterAsSaved(const AAX_IParameter& parameter, AAX_CChunkDataParser& chunk);

/// Calls `visit` with the parameters of `manager` whose identifiers are not in the set `filtered`, in index
/// order, until it returns false. A parameter that is missing is an assertion failure. Returns whether every
/// call returned true.
template<class Manager, class Set, class Visit>
bool VisitSavedParameters(Manager& manager, const Set& filtered, Visit&& visit) {
    for (int32_t index = 0; index < manager.NumParameters(); ++index) {
        auto* parameter = manager.GetParameter(index);
        AAX_ASSERT_NOTE(parameter != nullptr, "NULL != parameter");
        if (parameter != nullptr && !filtered.contains(std::string_view(parameter->Identifier())) &&
            !visit(*parameter)) {
            return false;
        }
    }
    return true;
}

#endif
