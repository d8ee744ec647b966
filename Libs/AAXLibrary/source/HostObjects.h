/// Objects of the host: made by its factory, handed out by its operations, behind a wrapper.
#ifndef VARNO_LIBS_AAXLIBRARY_SOURCE_HOSTOBJECTS_H
#define VARNO_LIBS_AAXLIBRARY_SOURCE_HOSTOBJECTS_H

#include "AAX_Errors.h"
#include "ACF/ACFPtr.h"
#include "ACF/IACFComponentFactory.h"

#include <exception>
#include <memory>
#include <utility>

/// Creates the component `classID` with `factory` (borrowed, may be null) and returns its interface `iid`,
/// which must be that of T. Empty where there is no factory or it fails; an object that a failing factory
/// handed out is released. [main]
template<class T>
ACFPtr<T> CreateComponent(IACFComponentFactory* factory, const acfCLSID& classID, const acfIID& iid) {
    ACFPtr<T> component;
    if (factory != nullptr && factory->CreateComponent(nullptr, classID, iid, component.Out()) != ACF_OK) {
        component.Reset();
    }
    return component;
}

/// The object that an operation of the host hands out: `ask` calls the operation with the place for the
/// object. Empty where it fails; an object that a failing operation handed out is released. [main]
template<class Ask>
ACFPtr<IACFUnknown> HandedOut(Ask ask) {
    IACFUnknown* object = nullptr;
    const AAX_Result result = ask(&object);
    auto owned = ACFPtr<IACFUnknown>::Adopt(object);
    if (result != AAX_SUCCESS) {
        owned.Reset();
    }
    return owned;
}

/// Runs each of `actions` in turn, whatever those before it throw, then throws the first exception again.
/// [main]
template<class... Actions>
void RunEach(Actions&&... actions) {
    std::exception_ptr first;
    const auto run = [&first](auto&& action) {
        try {
            action();
        } catch (...) {
            first = first ? first : std::current_exception();
        }
    };
    (run(actions), ...);
    if (first) {
        std::rethrow_exception(first);
    }
}

/// Releases each of `references` in turn, all of them, then throws the first exception of the host. [main]
template<class... T>
void ReleaseEach(ACFPtr<T>&... references) {
    RunEach([&references] { references.Reset(); }...);
}

/// Destroys a wrapper of host objects, if there is one. Throws what the host throws while it is released,
/// which the wrapper's destructor would not report. [main]
template<class Wrapper>
void Destroy(std::unique_ptr<Wrapper>& wrapper) {
    const std::unique_ptr<Wrapper> destroyed = std::move(wrapper);
    if (destroyed != nullptr) {
        destroyed->ReleaseHost();
    }
}

/// The host's object behind `wrapper` (may be null), borrowed; null when there is none. [main]
template<class Wrapper>
IACFUnknown* HostObjectOf(const Wrapper* wrapper) {
    return wrapper != nullptr ? wrapper->HostObject() : nullptr;
}

#endif
