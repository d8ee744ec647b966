/// The host's maker of components.
#ifndef VARNO_INTERFACES_ACF_IACFCOMPONENTFACTORY_H
#define VARNO_INTERFACES_ACF_IACFCOMPONENTFACTORY_H

#include "ACF/IACFUnknown.h"

/// Offered by the host object under IID_IACFComponentFactory.
class IACFComponentFactory : public IACFUnknown {
public:
    /// Makes the component `classID` and answers with its interface `iid`. `outer` is the controlling unknown
    /// of an aggregate, or null; it is borrowed. On success the caller owns one reference to *outObject;
    /// otherwise *outObject is null. Returns ACF_OK, or ACF_E_NOINTERFACE for an unknown component or an
    /// interface it does not have. [main]
    virtual ACFRESULT CreateComponent(IACFUnknown* outer, const acfCLSID& classID, const acfIID& iid,
                                      void** outObject) = 0;

protected:
    ~IACFComponentFactory() = default;
};

#endif
