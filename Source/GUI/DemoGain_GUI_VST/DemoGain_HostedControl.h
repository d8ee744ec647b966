/// What every control of the editor knows of the host.
#ifndef VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_HOSTEDCONTROL_H
#define VARNO_SOURCE_GUI_DEMOGAIN_GUI_VST_DEMOGAIN_HOSTEDCONTROL_H

#include "AAX_IViewContainer.h"

/// Part of a control, beside its VSTGUI base. [main]
class DemoGain_HostedControl {
public:
    DemoGain_HostedControl(const DemoGain_HostedControl&) = delete;
    DemoGain_HostedControl& operator=(const DemoGain_HostedControl&) = delete;

    /// `container` is borrowed and outlives the control; null until set. [main]
    void SetViewContainer(AAX_IViewContainer* container) { mViewContainer = container; }
    /// `paramID` is a literal; null until set. [main]
    void SetParamID(AAX_CParamID paramID) { mParamID = paramID; }

protected:
    using Gesture = AAX_Result (AAX_IViewContainer::*)(AAX_CParamID paramID, uint32_t modifiers);

    DemoGain_HostedControl() = default;
    ~DemoGain_HostedControl() = default;

    AAX_IViewContainer* ViewContainer() const { return mViewContainer; }
    /// Offers a gesture on the control's parameter to the host; whether the host has taken it. Without a
    /// container or an identifier nobody is asked.
    bool IsTakenByHost(Gesture gesture, uint32_t modifiers) const {
        return mViewContainer != nullptr && mParamID != nullptr &&
               (mViewContainer->*gesture)(mParamID, modifiers) == AAX_SUCCESS;
    }

private:
    AAX_IViewContainer* mViewContainer = nullptr;
    AAX_CParamID mParamID = nullptr;
};

#endif
