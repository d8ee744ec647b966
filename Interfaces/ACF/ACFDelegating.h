/// The way from a component's interface to its controlling unknown.
#ifndef VARNO_INTERFACES_ACF_ACFDELEGATING_H
#define VARNO_INTERFACES_ACF_ACFDELEGATING_H

#include "ACF/CACFUnknown.h"

/// Base of a component that implements `Interface`, which derives from IACFUnknown: whoever holds that
/// interface asks the controlling unknown for other interfaces and counts its references there.
template<class Interface>
class ACFDelegating : public Interface, public CACFUnknown {
public:
    using CACFUnknown::CACFUnknown;

    /// Asks the controlling unknown. On success the caller owns one reference to *outObject, otherwise it is
    /// null. Returns ACF_OK or ACF_E_NOINTERFACE. [any]
    ACFRESULT QueryInterface(const acfIID& iid, void** outObject) final {
        return ControllingUnknown()->QueryInterface(iid, outObject);
    }
    /// Adds one reference to the controlling unknown. Returns its new count. [any]
    uint32_t AddRef() final { return ControllingUnknown()->AddRef(); }
    /// Gives one reference of the controlling unknown back. Returns its new count. [any]
    uint32_t Release() final { return ControllingUnknown()->Release(); }

    /// As in CACFUnknown; every component answers for its own interface. Named here so that this operation
    /// and then the destructor follow Interface's own in the virtual table, before all that a derived class
    /// adds.
    ACFRESULT InternalQueryInterface(const acfIID& iid, void** outObject) override = 0;
    ~ACFDelegating() override = default;

protected:
    /// Answers `interfaceID`, which must be that of Interface, with this object and leaves the rest to
    /// CACFUnknown: what a component with the one interface needs as its InternalQueryInterface. On success
    /// the caller owns one reference to *outObject, otherwise it is null. Returns ACF_OK or
    /// ACF_E_NOINTERFACE. [any]
    ACFRESULT AnswerInterface(const acfIID& interfaceID, const acfIID& iid, void** outObject) {
        if (!(iid == interfaceID)) {
            return CACFUnknown::InternalQueryInterface(iid, outObject);
        }
        Interface* answer = this;
        answer->AddRef();
        *outObject = answer;
        return ACF_OK;
    }
};

#endif
