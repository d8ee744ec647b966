/// The host's maker of components.
#ifndef VARNO_HOST_HOSTCOMPONENTFACTORY_H
#define VARNO_HOST_HOSTCOMPONENTFACTORY_H

#include "ACF/IACFComponentFactory.h"
#include "Host/HostObject.h"

namespace varno {

/// Makes host services and page tables. Components are not aggregated: an outer object gives
/// ACF_E_NOINTERFACE. [main]
class HostComponentFactory final : public Facet<IACFComponentFactory> {
public:
    HostComponentFactory(IACFUnknown& owner, std::shared_ptr<HostContext> context);

    ACFRESULT CreateComponent(IACFUnknown* outer, const acfCLSID& classID, const acfIID& iid,
                              void** outObject) override;

private:
    std::shared_ptr<HostContext> mContext;
};

} // namespace varno

#endif
