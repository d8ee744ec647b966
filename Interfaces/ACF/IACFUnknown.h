/// The root interface of the component framework.
#ifndef VARNO_INTERFACES_ACF_IACFUNKNOWN_H
#define VARNO_INTERFACES_ACF_IACFUNKNOWN_H

#include "AAX_UIDs.h"

#include <cstdint>

/// Result of a component framework call: 0 is success, a negative number a failure.
using ACFRESULT = int32_t;

inline constexpr ACFRESULT ACF_OK = 0;
inline constexpr ACFRESULT ACF_E_NOINTERFACE = static_cast<ACFRESULT>(0x80000004U);
inline constexpr ACFRESULT ACF_E_UNEXPECTED = static_cast<ACFRESULT>(0x8000FFFFU);

/// What every object that crosses the border between host and plug-in answers to. It is the first base of
/// every such object, so that the object's address is also that of its IACFUnknown. There is no virtual
/// destructor: an object is destroyed with the release of its last reference.
class IACFUnknown {
public:
    /// Asks for another interface of the object. On success *outObject is the interface and the caller owns
    /// one reference to it; otherwise *outObject is null. Returns ACF_OK, or ACF_E_NOINTERFACE when the
    /// object does not have the interface. [any]
    virtual ACFRESULT QueryInterface(const acfIID& iid, void** outObject) = 0;
    /// Adds one reference, atomically. Returns the new count, at least 1. [any]
    virtual uint32_t AddRef() = 0;
    /// Gives one reference back, atomically; the object is destroyed when none is left.
    /// Returns the new count. [any]
    virtual uint32_t Release() = 0;

protected:
    ~IACFUnknown() = default;
};

#endif
