/// The border that no exception crosses.
#ifndef VARNO_INTERFACES_AAX_GUARDED_H
#define VARNO_INTERFACES_AAX_GUARDED_H

#include "AAX_Errors.h"

#include <utility>

/// The name of an entry point in trace lines: "Class::Name", since data model and editor have operations of
/// the same name, or "Name" for a function of no class. Both texts are borrowed and live as long as the
/// program.
struct AAX_EntryPoint {
    AAX_EntryPoint(const char* name)
        : mName(name) {}
    AAX_EntryPoint(const char* className, const char* name)
        : mClass(className),
          mName(name) {}

    const char* mClass = nullptr; ///< Null for none.
    const char* mName;
};

/// The result of the exception being handled, which must be one: the code of an AAX::Exception::ResultError,
/// AAX_ERROR_UNKNOWN_EXCEPTION for any other. Traces one line at high priority, "<entry> exception caught: "
/// with the exception's message, or "unknown" where it has none. [any]
AAX_Result AAX_ResultOfCurrentException(const AAX_EntryPoint& entry) noexcept;

/// Runs the body of an entry point that the host calls. Returns what `body` returns, an AAX_Result, or the
/// result of what it throws, traced under the name `entry`. [any]
template<class Body>
AAX_Result AAX_Guarded(const AAX_EntryPoint& entry, Body&& body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        return AAX_ResultOfCurrentException(entry);
    }
}

/// Runs the body of a creation procedure that the host calls. Returns the object that `body` returns, a plain
/// pointer, or null for what it throws, traced under the name `entry`. [any]
template<class Body>
auto AAX_GuardedCreation(const AAX_EntryPoint& entry, Body&& body) noexcept -> decltype(body()) {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        AAX_ResultOfCurrentException(entry);
        return nullptr;
    }
}

#endif
