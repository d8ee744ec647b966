/// The host's automation in the version that the host offers.
#ifndef VARNO_INTERFACES_AAX_VAUTOMATIONDELEGATE_H
#define VARNO_INTERFACES_AAX_VAUTOMATIONDELEGATE_H

#include "AAX_IACFAutomationDelegate.h"
#include "AAX_IAutomationDelegate.h"
#include "ACF/ACFPtr.h"

/// Acquires the host's interface once, when it is made, and holds it for its life.
class AAX_VAutomationDelegate : public AAX_IAutomationDelegate {
public:
    /// `host` (borrowed, may be null) is the object handed to the data model's Initialize.
    explicit AAX_VAutomationDelegate(IACFUnknown* host);

    /// Releases what is held of the host, all of it, then throws the first exception of the host. Each
    /// operation lacks its version from now on. [main]
    void ReleaseHost();

    AAX_Result RegisterParameter(AAX_CParamID paramID) override;
    AAX_Result UnregisterParameter(AAX_CParamID paramID) override;
    AAX_Result PostSetValueRequest(AAX_CParamID paramID, double normalizedValue) override;
    AAX_Result PostCurrentValue(AAX_CParamID paramID, double normalizedValue) override;
    AAX_Result PostTouchRequest(AAX_CParamID paramID) override;
    AAX_Result PostReleaseRequest(AAX_CParamID paramID) override;

private:
    ACFPtr<AAX_IACFAutomationDelegate> mVersion1;
};

#endif
