/// An editor of the bridge's own, for tests of what lies below the plug-in's editor.
#ifndef VARNO_TESTS_SOURCE_GUI_TESTEDITOR_H
#define VARNO_TESTS_SOURCE_GUI_TESTEDITOR_H

#include "AAX_IACFDesktop.h"
#include "ACF/ACFPtr.h"
#include "GUI/AAX_CEffectGUI_VST.h"
#include "Tests/Support/FakeUnknown.h"
#include "Tests/Support/RecordingInstance.h"
#include "Tests/Support/TestEffect.h"

#include <functional>
#include <string>
#include <vector>

namespace varno::test {

/// A data model of three parameters that are nothing but their identifiers.
class ThreeParameters : public TestEffect {
public:
    AAX_Result GetNumberOfParameters(std::int32_t* outCount) const override {
        *outCount = count;
        return countResult;
    }
    AAX_Result GetParameterIDFromIndex(std::int32_t index, AAX_IString* outID) const override {
        queries.push_back(index);
        constexpr const char* kIDs[] = {"A", "B", "C"};
        if (index < 0 || index >= static_cast<std::int32_t>(std::size(kIDs))) {
            return AAX_ERROR_INVALID_PARAMETER_ID;
        }
        outID->Set(kIDs[index]);
        return AAX_SUCCESS;
    }

    std::int32_t count = 3;
    AAX_Result countResult = AAX_SUCCESS;
    mutable std::vector<std::int32_t> queries;
};

/// A container of any type around any pointer.
class TestContainer : public RecordingViewContainer {
public:
    TestContainer() {
        offer(IID_IAAXViewContainerV1, this);
        offer(IID_IAAXViewContainerV2, this);
    }
    std::int32_t GetType() override { return type; }

    std::int32_t type = AAX_eViewContainerType_None;
};

/// Records the bridge's calls, and shows the view that the test creates.
class TestEditor : public AAX_CEffectGUI_VST {
public:
    using AAX_CEffectGUI::UpdateAllParameters;
    using AAX_CEffectGUI_VST::GetView;
    using AAX_CEffectGUI_VST::ShowView;

    ~TestEditor() override { TestEditor::Uninitialize(); }

    AAX_Result ParameterUpdated(AAX_CParamID paramID) override {
        calls.push_back(std::string("updated ") + paramID);
        return AAX_SUCCESS;
    }

    std::vector<std::string> calls;
    bool hadParametersAtDelete = false;
    /// Shows a view for the native one; the base's own where there is none.
    std::function<void(TestEditor&, void* nativeView)> makeView;

protected:
    void CreateViewContents() override { calls.emplace_back("contents"); }
    void CreateEffectView(void* nativeView) override {
        calls.emplace_back("view");
        if (makeView) {
            makeView(*this, nativeView);
        } else {
            AAX_CEffectGUI_VST::CreateEffectView(nativeView);
        }
    }
    void DeleteViewContainer() override {
        calls.emplace_back(GetViewContainer() != nullptr ? "delete" : "delete without container");
        hadParametersAtDelete = GetEffectParameters() != nullptr;
        AAX_CEffectGUI_VST::DeleteViewContainer();
    }
};

inline ACFPtr<TestEditor> makeTestEditor() {
    return ACFPtr<TestEditor>::Retain(new TestEditor);
}

} // namespace varno::test

#endif
