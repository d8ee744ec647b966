/// The border that no exception crosses.
#ifndef VARNO_INTERFACES_AAX_GUARDED_H
#define VARNO_INTERFACES_AAX_GUARDED_H

#include "AAX_Errors.h"

#include <utility>

/// The result of the exception being handled, which must be one: the code of an AAX::Exception::ResultError,
/// AAX_ERROR_UNKNOWN_EXCEPTION for any other. Traces one line at high priority, "<entry> exception caught: "
/// with the exception's message, or "unknown" where it has none. `entry` names the entry point. [any]
AAX_Result AAX_ResultOfCurrentException(const char* entry) noexcept;

/// Runs the body of an entry point that the host calls. Returns what `body` returns, an AAX_Result, or the
/// result of what it throws, traced under the name `entry`. [any]
template<class Body>
AAX_Result AAX_Guarded(const char* entry, Body&& body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        return AAX_ResultOfCurrentException(entry);
    }
}

/// Runs the body of a creation procedure that the host calls. Returns the object that `body` returns, a plain
/// pointer, or null for what it throws, traced under the name `entry`. [any]
template<class Body>
auto AAX_GuardedCreation(const char* entry, Body&& body) noexcept -> decltype(body()) {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        AAX_ResultOfCurrentException(entry);
        return nullptr;
    }
}

#endif
