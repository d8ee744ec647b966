/// The editor's view on a data model, without a window.
#ifndef VARNO_TESTS_SOURCE_GUI_DEMOGAIN_GUI_VST_VIEWFIXTURE_H
#define VARNO_TESTS_SOURCE_GUI_DEMOGAIN_GUI_VST_VIEWFIXTURE_H

#include "ACF/ACFPtr.h"
#include "DemoGain_Parameters.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_View.h"
#include "Platform/Clipboard.h"
#include "Tests/Support/FakeInstanceHost.h"
#include "Toolkit/VSTGUI_Library.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {

/// Removes the shared bitmaps while it exists; afterwards loads those of the bundle again.
class SharedBitmapsScope {
public:
    SharedBitmapsScope() { clear(); }
    SharedBitmapsScope(const SharedBitmapsScope&) = delete;
    SharedBitmapsScope& operator=(const SharedBitmapsScope&) = delete;
    ~SharedBitmapsScope() {
        clear();
        load();
    }

    /// From the bundle.
    static void load() {
        UseVSTGUI(VARNO_RESOURCES);
        DemoGain_View::LoadViewResources();
    }

private:
    static void clear() {
        for (auto* const bitmap :
             {&DemoGain_View::m_hPIBackground, &DemoGain_View::m_hGain, &DemoGain_View::m_hGR1On,
              &DemoGain_View::m_hGR1Off, &DemoGain_View::m_hSwitch, &DemoGain_View::m_hRatio,
              &DemoGain_View::m_hSwPr1, &DemoGain_View::m_hSwPr2}) {
            *bitmap = nullptr;
        }
    }
};

/// The effect's own data model, which records the view's calls.
class RecordingModel : public DemoGain_Parameters {
public:
    AAX_Result TouchParameter(AAX_CParamID paramID) override {
        note("touch", paramID);
        return DemoGain_Parameters::TouchParameter(paramID);
    }
    AAX_Result ReleaseParameter(AAX_CParamID paramID) override {
        note("release", paramID);
        return DemoGain_Parameters::ReleaseParameter(paramID);
    }
    AAX_Result SetParameterNormalizedValue(AAX_CParamID paramID, double value) override {
        note("set", paramID, value);
        return DemoGain_Parameters::SetParameterNormalizedValue(paramID, value);
    }
    AAX_Result GetParameterNormalizedValue(AAX_CParamID paramID, double* outValue) const override {
        enter("get", paramID);
        return unreadable.count(paramID) > 0
                   ? AAX_ERROR_UNIMPLEMENTED
                   : DemoGain_Parameters::GetParameterNormalizedValue(paramID, outValue);
    }

    /// The calls since this was last called, such as "touch Gain" and "set Gain 0.25".
    std::vector<std::string> takeCalls() { return std::exchange(mCalls, {}); }

    std::set<std::string> unreadable; ///< Parameters whose values cannot be read.
    /// Called within each call, such as "touch Gain" and "get Gain", before it does anything; may be empty.
    std::function<void(const std::string& call)> within;

private:
    void enter(const char* call, const char* paramID) const {
        if (within) {
            within(std::string(call) + ' ' + paramID);
        }
    }

    template<class... Values>
    void note(const char* call, const char* paramID, Values... values) {
        enter(call, paramID);
        std::ostringstream text;
        text << call << " " << paramID;
        ((text << " " << values), ...);
        mCalls.push_back(text.str());
    }

    std::vector<std::string> mCalls;
};

/// A clipboard of its own.
class FakeClipboard : public Clipboard {
public:
    bool setText(const std::string& text) override {
        enter();
        ++writes;
        if (takes) {
            content = text;
        }
        return takes;
    }
    std::optional<std::string> text() override {
        enter();
        return content;
    }

    void handOver() override { ++handOvers; }

    std::function<void()> within; ///< Called within each call; may be empty.
    std::optional<std::string> content;
    bool takes = true; ///< Whether it can be written.
    int writes = 0;
    int handOvers = 0;

private:
    void enter() const {
        if (within) {
            within();
        }
    }
};

/// Requests for values wait until `answer`, as with a host.
class ViewFixture : public ::testing::Test {
protected:
    ViewFixture() {
        SharedBitmapsScope::load();
        host.offer(IID_IAAXControllerV1, &controller);
        host.offer(IID_IAAXAutomationDelegateV1, &automation);
        model->Initialize(&host);
        openView();
    }
    ~ViewFixture() override {
        view = nullptr;
        model->Uninitialize();
    }

    void openView(AAX_IViewContainer* container = nullptr) {
        view = nullptr;
        view = VSTGUI::owned(new DemoGain_View(nullptr, model.Get(), nullptr, container));
        view->SetClipboard(clipboard);
        model->takeCalls();
    }

    /// Gives a parameter a value as host automation does; the view is not notified.
    void automate(const char* id, double value) {
        model->UpdateParameterNormalizedValue(id, value, AAX_eUpdateSource_Unspecified);
    }
    /// Gives the parameters the values that they have asked for.
    void answer() {
        for (const auto& [id, value] : std::exchange(automation.requests, {})) {
            automate(id.c_str(), value);
        }
    }
    double valueOf(const char* id) const {
        double value = -1.0;
        model->GetParameterNormalizedValue(id, &value);
        return value;
    }

    /// As the user does; returns the view's calls of the data model.
    std::vector<std::string> move(const char* id, float value) {
        VSTGUI::CControl* const control = view->GetControl(id);
        control->setValue(value);
        control->valueChanged();
        return model->takeCalls();
    }
    std::string status() const { return view->GetStatusLabel()->getText().getString(); }

    FakeController controller;
    FakeAutomation automation;
    FakeHost host;
    std::shared_ptr<FakeClipboard> clipboard = std::make_shared<FakeClipboard>();
    ACFPtr<RecordingModel> model = ACFPtr<RecordingModel>::Retain(new RecordingModel);
    VSTGUI::SharedPointer<DemoGain_View> view;
};

} // namespace varno::test

#endif
