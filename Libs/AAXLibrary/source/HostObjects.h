/// Objects of the host: made by its factory, handed out by its operations, behind a wrapper.
#ifndef VARNO_LIBS_AAXLIBRARY_SOURCE_HOSTOBJECTS_H
#define VARNO_LIBS_AAXLIBRARY_SOURCE_HOSTOBJECTS_H

#include "AAX_Errors.h"
#include "ACF/ACFPtr.h"
#include "ACF/IACFComponentFactory.h"

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

/// The host's object behind `wrapper` (may be null), borrowed; null when there is none. [main]
template<class Wrapper>
IACFUnknown* HostObjectOf(const Wrapper* wrapper) {
    return wrapper != nullptr ? wrapper->HostObject() : nullptr;
}

#endif
