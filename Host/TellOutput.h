/// Outputs of host interfaces.
#ifndef VARNO_HOST_TELLOUTPUT_H
#define VARNO_HOST_TELLOUTPUT_H

#include "AAX_Errors.h"

namespace varno {

/// Writes an output of an interface operation. Returns AAX_SUCCESS, or AAX_ERROR_NULL_ARGUMENT when it is
/// null. [any]
template<class T, class Value>
AAX_Result tell(T* output, Value value) {
    if (output == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *output = value;
    return AAX_SUCCESS;
}

/// Writes two outputs, or none when either is null. [any]
template<class First, class FirstValue, class Second, class SecondValue>
AAX_Result tell(First* first, FirstValue firstValue, Second* second, SecondValue secondValue) {
    return first == nullptr ? AAX_ERROR_NULL_ARGUMENT
                            : (tell(second, secondValue) == AAX_SUCCESS ? tell(first, firstValue)
                                                                        : AAX_ERROR_NULL_ARGUMENT);
}

} // namespace varno

#endif
