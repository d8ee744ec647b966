/// The border that no exception crosses.
#ifndef AAX_GUARD_H
#define AAX_GUARD_H

#include "AAX_CHostServices.h"
#include "AAX_Exception.h"

#include <exception>

/// Runs `body`, which returns an AAX_Result, for an operation that the host calls. Returns its result or,
/// when it throws, the code that a result error carries and AAX_ERROR_UNKNOWN_EXCEPTION for everything else,
/// after one trace line that names `entryPoint` (borrowed) and what was thrown. [any]
template<class Body>
AAX_Result AAX_Guarded(const char* entryPoint, Body body) {
    const auto trace = [entryPoint](const char* what) {
        AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "%s exception caught: %s", entryPoint, what);
    };
    try {
        return body();
    } catch (const AAX::Exception::ResultError& error) {
        trace(error.What());
        return error.Result();
    } catch (const AAX::Exception::Any& error) {
        trace(error.What());
    } catch (const std::exception& error) {
        trace(error.what());
    } catch (...) {
        trace("unknown");
    }
    return AAX_ERROR_UNKNOWN_EXCEPTION;
}

#endif
