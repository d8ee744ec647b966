/// What an instance's data model and editor know as their host.
#ifndef VARNO_HOST_INSTANCEHOST_H
#define VARNO_HOST_INSTANCEHOST_H

#include "Host/HostAutomation.h"
#include "Host/HostComponentFactory.h"
#include "Host/HostController.h"
#include "Host/HostObject.h"
#include "Host/HostPageTableController.h"
#include "Host/HostTransport.h"
#include "Host/InstanceState.h"

namespace varno {

/// One object with many interfaces: controller, transport, automation delegate, page-table controller and
/// component factory; and, for the editor, the data model that it stands for.
class InstanceHost : public HostObject<IACFUnknown> {
public:
    InstanceHost(std::shared_ptr<HostContext> context, const EffectDescription& effect,
                 const VariantDescription& variant, const InstanceSetup& setup);

    InstanceState& state() { return mState; }
    const InstanceState& state() const { return mState; }
    HostAutomation& automation() { return mAutomation; }
    AAX_IACFPageTableController_V2& pageTables() { return mPageTables; }

    /// The data model to answer with (borrowed), or null when it is gone. [main]
    void setDataModel(IACFUnknown* dataModel) { mDataModel = dataModel; }
    /// The data model is gone: whatever the module still asks is asked too late. [main]
    void end();

protected:
    void* interfaceFor(const acfIID& iid) override;
    ACFRESULT queryOther(const acfIID& iid, void** outObject) override;

private:
    InstanceState mState;
    HostController mController;
    HostTransport mTransport;
    HostAutomation mAutomation;
    HostPageTableController mPageTables;
    HostComponentFactory mFactory;
    IACFUnknown* mDataModel = nullptr;
};

} // namespace varno

#endif
