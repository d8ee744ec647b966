/// Components made by the host's factory.
#ifndef VARNO_LIBS_AAXLIBRARY_SOURCE_COMPONENTCREATION_H
#define VARNO_LIBS_AAXLIBRARY_SOURCE_COMPONENTCREATION_H

#include "ACF/ACFPtr.h"
#include "ACF/IACFComponentFactory.h"

/// Has `factory` (borrowed, may be null) make the component `classID` and answer with its interface `iid`,
/// which must be that of T. Empty when there is no factory or it fails; what a failing factory has handed out
/// is released. [main]
template<class T>
ACFPtr<T> CreateComponent(IACFComponentFactory* factory, const acfCLSID& classID, const acfIID& iid) {
    ACFPtr<T> component;
    if (factory != nullptr && factory->CreateComponent(nullptr, classID, iid, component.Out()) != ACF_OK) {
        component.Reset();
    }
    return component;
}

#endif
