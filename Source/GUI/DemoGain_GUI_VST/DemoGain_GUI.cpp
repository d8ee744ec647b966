#include "GUI/DemoGain_GUI_VST/DemoGain_GUI.h"

#include "AAX_Assert.h"
#include "AAX_Guarded.h"
#include "DemoGain_ParameterTable.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_View.h"
#include "GUI/VSTGUI_Library.h"
#include "Platform/Bundle.h"
#include "Platform/Clipboard.h"

#include <optional>
#include <string_view>

namespace {

// As in the bundle's Info.plist.
constexpr char kBundleIdentifier[] = "com.morvak.varno-s";

} // namespace

AAX_IEffectGUI* DemoGain_GUI::Create() {
    return AAX_GuardedCreation("DemoGain_GUI::Create", [] { return new DemoGain_GUI; });
}

DemoGain_View* DemoGain_GUI::View() const {
    return dynamic_cast<DemoGain_View*>(GetView());
}

void DemoGain_GUI::CreateViewContents() {
    const std::optional<varno::Bundle> bundle = varno::moduleBundle(kBundleIdentifier);
    AAX_ASSERT_NOTE(bundle.has_value(), "gBundleRef");
    UseVSTGUI(bundle ? bundle->resources : std::filesystem::path());
    DemoGain_View::LoadViewResources();
}

void DemoGain_GUI::CreateEffectView(void* nativeView) {
    ShowView(new DemoGain_View(GetEffectParameters(), this, GetViewContainer(), varno::Clipboard::shared()),
             nativeView);
}

AAX_Result DemoGain_GUI::TimerWakeup() {
    return AAX_Guarded(__func__, [this] {
        const AAX_Result result = AAX_CEffectGUI_VST::TimerWakeup();
        if (DemoGain_View* const view = View()) {
            view->TimerWakeup();
        }
        return result;
    });
}

AAX_Result DemoGain_GUI::ParameterUpdated(AAX_CParamID paramID) {
    return AAX_Guarded(__func__, [&] {
        DemoGain_View* const view = View();
        if (view == nullptr || paramID == nullptr) {
            return AAX_SUCCESS;
        }
        for (const SDemoGain_Parameter* const parameter : kDemoGain_UpdateOrder) {
            if (std::string_view(paramID) == parameter->mIdentifier) {
                view->ShowParameter(parameter->mIdentifier);
            }
        }
        return AAX_SUCCESS;
    });
}

AAX_Result DemoGain_GUI::SetControlHighlightInfo(AAX_CParamID paramID, uint8_t isHighlighted,
                                                 AAX_EHighlightColor colour) {
    mLastHighlight = isHighlighted;
    mLastHighlightColour = colour;
    return AAX_Guarded(__func__, [&] {
        DemoGain_View* const view = View();
        if (view != nullptr) {
            view->highlitePeak(isHighlighted, colour);
        }
        if (view != nullptr && paramID != nullptr && paramID == std::string_view(cDemoGain_VolumeID)) {
            view->highliteDecay(isHighlighted, colour);
        }
        return AAX_SUCCESS;
    });
}
