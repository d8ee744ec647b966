#include "Tests/Host/FixtureEditor.h"

#include "AAX_IACFViewContainer.h"
#include "Tests/Host/FixtureFaults.h"

#include <utility>

namespace varno::fixture {

namespace {

std::vector<std::string> gLog;

void note(const std::string& text) {
    gLog.push_back(text);
}

} // namespace

FixtureEditor::FixtureEditor()
    : FixtureObject(IID_IAAXEffectGUIV1) {
}

IACFUnknown* FixtureEditor::Create() {
    return has(Fault::kMakesNoEditor) ? nullptr : new FixtureEditor;
}

std::vector<std::string> FixtureEditor::takeLog() {
    return std::exchange(gLog, {});
}

AAX_Result FixtureEditor::Initialize(IACFUnknown* host) {
    mDataModel = ACFPtr<IACFUnknown>::Query(host, IID_IAAXEffectParametersV1);
    note(mDataModel ? "initialize with data model" : "initialize without data model");
    return has(Fault::kEditorInitializationFails) ? AAX_ERROR_NOT_INITIALIZED : AAX_SUCCESS;
}

AAX_Result FixtureEditor::Uninitialize() {
    mDataModel.Reset();
    note("uninitialize");
    return AAX_SUCCESS;
}

AAX_Result FixtureEditor::NotificationReceived(AAX_CTypeID type, const void*, std::uint32_t size) {
    note("notification " + std::to_string(type) + " of " + std::to_string(size) + " bytes");
    return AAX_SUCCESS;
}

AAX_Result FixtureEditor::SetViewContainer(IACFUnknown* container) {
    mContainer = container;
    // It keeps the references that it queries, as an editor may: the container is borrowed.
    if (container != nullptr) {
        ACFPtr<AAX_IACFViewContainer>::Query(container, IID_IAAXViewContainerV1).Detach();
    }
    note(container == nullptr ? "container taken" : "container given");
    return AAX_SUCCESS;
}

AAX_Result FixtureEditor::GetViewSize(AAX_Point* outSize) const {
#ifdef FIXTURE_VIEWLESS
    *outSize = {};
#else
    *outSize = {240.0F, 320.0F};
#endif
    return AAX_SUCCESS;
}

AAX_Result FixtureEditor::Draw(AAX_Rect* rect) {
    note("draw width " + std::to_string(static_cast<int>(rect->width)));
    return AAX_SUCCESS;
}

AAX_Result FixtureEditor::TimerWakeup() {
    const auto container = ACFPtr<AAX_IACFViewContainer>::Query(mContainer, IID_IAAXViewContainerV1);
    const AAX_Result result = container->HandleParameterMouseDown("Gain", AAX_eModifiers_Shift);
    note(result == AAX_SUCCESS ? "timer, offer taken" : "timer, offer refused");
    return AAX_SUCCESS;
}

AAX_Result FixtureEditor::ParameterUpdated(AAX_CParamID paramID) {
    note(std::string("updated ") + paramID);
    return AAX_SUCCESS;
}

AAX_Result FixtureEditor::GetCustomLabel(AAX_EPlugInStrings, AAX_IString*) const {
    return AAX_ERROR_NULL_OBJECT;
}

AAX_Result FixtureEditor::SetControlHighlightInfo(AAX_CParamID paramID, std::uint8_t isHighlighted,
                                                  AAX_EHighlightColor colour) {
    note(std::string("highlight ") + paramID + " " + std::to_string(isHighlighted) + " " +
         std::to_string(colour));
    return AAX_SUCCESS;
}

} // namespace varno::fixture
