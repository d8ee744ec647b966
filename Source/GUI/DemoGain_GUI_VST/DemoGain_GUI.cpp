#include "GUI/DemoGain_GUI_VST/DemoGain_GUI.h"

#include "AAX_Assert.h"
#include "AAX_Guarded.h"
#include "DemoGain_ParameterTable.h"
#include "GUI/DemoGain_EditorProcedure.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_View.h"
#include "Platform/Bundle.h"
#include "Platform/Clipboard.h"
#include "Toolkit/VSTGUI_Library.h"

#include <optional>
#include <string_view>

namespace {

// As in the bundle's Info.plist.
constexpr char kBundleIdentifier[] = "com.morvak.varno-s";

// This editor's entry point of this name.
AAX_EntryPoint OwnEntry(const char* name) {
    return {"DemoGain_GUI", name};
}

} // namespace

void* DemoGain_EditorProcedure() {
    return reinterpret_cast<void*>(&DemoGain_GUI::Create);
}

AAX_IEffectGUI* DemoGain_GUI::Create() {
    return AAX_GuardedCreation(OwnEntry(__func__), [] { return new DemoGain_GUI; });
}

VSTGUI::SharedPointer<DemoGain_View> DemoGain_GUI::View() const {
    return VSTGUI::shared(dynamic_cast<DemoGain_View*>(GetView()));
}

void DemoGain_GUI::CreateViewContents() {
    const std::optional<varno::Bundle> bundle = varno::moduleBundle(kBundleIdentifier);
    AAX_ASSERT_NOTE(bundle.has_value(), "gBundleRef");
    if (bundle) {
        UseVSTGUI(bundle->resources, bundle->reference);
    } else {
        UseVSTGUI(std::filesystem::path());
    }
    DemoGain_View::LoadViewResources();
}

void DemoGain_GUI::CreateEffectView(void* nativeView) {
    UseVSTGUI();
    mClipboard = varno::Clipboard::shared();
    auto* const view = new DemoGain_View(nativeView, GetEffectParameters(), this, GetViewContainer());
    view->SetController(GetController());
    ShowView(view);
}

int32_t DemoGain_GUI::getKnobMode() const {
    return GetDesktopKnobMode();
}

// A call of the host from within may close the view and release this object; both exist until the end of the
// operation.

AAX_Result DemoGain_GUI::TimerWakeup() {
    const auto self = Hold();
    return AAX_Guarded(OwnEntry(__func__), [this] {
        const AAX_Result result = AAX_CEffectGUI_VST::TimerWakeup();
        if (const auto view = View()) {
            view->TimerWakeup();
        }
        return result;
    });
}

AAX_Result DemoGain_GUI::ParameterUpdated(AAX_CParamID paramID) {
    const auto self = Hold();
    return AAX_Guarded(OwnEntry(__func__), [&] {
        const auto view = View();
        if (!view || paramID == nullptr) {
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
    return AAX_Guarded(OwnEntry(__func__), [&] {
        const auto view = View();
        if (view) {
            view->highlitePeak(isHighlighted, colour);
        }
        if (view && paramID != nullptr && paramID == std::string_view(cDemoGain_VolumeID)) {
            view->highliteDecay(isHighlighted, colour);
        }
        return AAX_SUCCESS;
    });
}
