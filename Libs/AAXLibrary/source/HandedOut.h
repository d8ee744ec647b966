/// Objects that the host hands out.
#ifndef VARNO_LIBS_AAXLIBRARY_SOURCE_HANDEDOUT_H
#define VARNO_LIBS_AAXLIBRARY_SOURCE_HANDEDOUT_H

#include "AAX_Errors.h"
#include "ACF/ACFPtr.h"

/// The object that an operation of the host's hands out: `ask` calls it with the place for the object. Empty
/// when it fails; what a failing operation has handed out is released. [main]
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

#endif
