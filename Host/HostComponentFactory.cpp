#include "Host/HostComponentFactory.h"

#include "ACF/ACFPtr.h"
#include "Host/HostServices.h"
#include "Host/PageTable.h"

namespace varno {

HostComponentFactory::HostComponentFactory(IACFUnknown& owner, std::shared_ptr<HostContext> context)
    : Facet(owner),
      mContext(std::move(context)) {
}

ACFRESULT HostComponentFactory::CreateComponent(IACFUnknown* outer, const acfCLSID& classID,
                                                const acfIID& iid, void** outObject) {
    if (outObject == nullptr) {
        return ACF_E_NOINTERFACE;
    }
    *outObject = nullptr;
    ACFPtr<IACFUnknown> component;
    if (outer == nullptr && classID == AAXCompID_HostServices) {
        component = ACFPtr<IACFUnknown>::Adopt(new HostServices(mContext));
    } else if (outer == nullptr && classID == AAXCompID_PageTable) {
        component = ACFPtr<IACFUnknown>::Adopt(new PageTable(mContext));
    }
    return component ? component->QueryInterface(iid, outObject) : ACF_E_NOINTERFACE;
}

} // namespace varno
