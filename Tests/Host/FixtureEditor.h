/// The fixture module's editor.
#ifndef VARNO_TESTS_HOST_FIXTUREEDITOR_H
#define VARNO_TESTS_HOST_FIXTUREEDITOR_H

#include "AAX_IACFEffectGUI.h"
#include "ACF/ACFPtr.h"
#include "Tests/Host/FixtureObject.h"

#include <string>
#include <vector>

namespace varno::fixture {

/// Records its calls. On a timer call it offers a mouse-down on "Gain" to the host.
class FixtureEditor : public FixtureObject<AAX_IACFEffectGUI> {
public:
    static IACFUnknown* Create();
    /// The calls of all editors since this was last called.
    static std::vector<std::string> takeLog();

    AAX_Result Initialize(IACFUnknown* host) override;
    AAX_Result Uninitialize() override;
    AAX_Result NotificationReceived(AAX_CTypeID type, const void* data, std::uint32_t size) override;
    AAX_Result SetViewContainer(IACFUnknown* container) override;
    AAX_Result GetViewSize(AAX_Point* outSize) const override;
    AAX_Result Draw(AAX_Rect* rect) override;
    AAX_Result TimerWakeup() override;
    AAX_Result ParameterUpdated(AAX_CParamID paramID) override;
    AAX_Result GetCustomLabel(AAX_EPlugInStrings which, AAX_IString* outText) const override;
    AAX_Result SetControlHighlightInfo(AAX_CParamID paramID, std::uint8_t isHighlighted,
                                       AAX_EHighlightColor colour) override;

private:
    FixtureEditor();

    ACFPtr<IACFUnknown> mDataModel;
    IACFUnknown* mContainer = nullptr;
};

} // namespace varno::fixture

#endif
