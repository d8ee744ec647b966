/// The host's object behind a wrapper.
#ifndef VARNO_LIBS_AAXLIBRARY_SOURCE_HOSTOBJECTOF_H
#define VARNO_LIBS_AAXLIBRARY_SOURCE_HOSTOBJECTOF_H

#include "ACF/IACFUnknown.h"

/// The host's object behind `wrapper` (may be null), borrowed; null when there is none. [main]
template<class Wrapper>
IACFUnknown* HostObjectOf(const Wrapper* wrapper) {
    return wrapper != nullptr ? wrapper->HostObject() : nullptr;
}

#endif
