#include "GUI/DemoGain_GUI_VST/DemoGain_GUI.h"

#include "AAX_IACFViewContainer.h"
#include "GUI/DemoGain_GUI_VST/DemoGain_Controls.h"
#include "Tests/Source/GUI/DemoGain_GUI_VST/ViewFixture.h"
#include "Tests/Support/FakeHostServices.h"
#include "Tests/Support/RecordingInstance.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <stdexcept>

namespace {

bool gViewsThrow = false;

} // namespace

// The linker's option --wrap makes these names: the calls of the editor's own classes come here.
extern "C" void __real__ZN6VSTGUI5CView11invalidRectERKNS_5CRectE(VSTGUI::CView* view,
                                                                  const VSTGUI::CRect& rect);
extern "C" void __wrap__ZN6VSTGUI5CView11invalidRectERKNS_5CRectE(VSTGUI::CView* view,
                                                                  const VSTGUI::CRect& rect);
extern "C" void __wrap__ZN6VSTGUI5CView11invalidRectERKNS_5CRectE(VSTGUI::CView* view,
                                                                  const VSTGUI::CRect& rect) {
    if (gViewsThrow) {
        throw std::runtime_error("view");
    }
    __real__ZN6VSTGUI5CView11invalidRectERKNS_5CRectE(view, rect);
}

namespace {

using testing::IsEmpty;
using varno::test::ViewFixture;

// The editor with its view in reach.
class ReachableGUI : public DemoGain_GUI {
public:
    using AAX_CEffectGUI_VST::GetView;

    // Shows a view that does not belong to the plug-in.
    bool showsAnotherView = false;

protected:
    void CreateEffectView(void* nativeView) override {
        if (showsAnotherView) {
            ShowView(new VSTGUI_ContentView(nativeView, VSTGUI::CRect(), this, GetEffectParameters()));
        } else {
            DemoGain_GUI::CreateEffectView(nativeView);
        }
    }
};

// An X11 window that no display has.
class NowhereContainer : public varno::RecordingViewContainer {
public:
    NowhereContainer() {
        offer(IID_IAAXViewContainerV1, this);
        view = this; // not null, and no window's number
    }
    std::int32_t GetType() override { return AAX_eViewContainerType_X11; }
};

// Editors on the fixture's data model. Without a display, everything works except drawing.
class DemoGain_GUITest : public ViewFixture {
protected:
    DemoGain_GUITest() {
        ::unsetenv("DISPLAY");
        host.offer(IID_IAAXEffectParametersV1, static_cast<AAX_IACFEffectParameters*>(model.Get()));
    }

    ACFPtr<ReachableGUI> makeEditor() {
        auto editor = ACFPtr<ReachableGUI>::Retain(new ReachableGUI);
        EXPECT_EQ(editor->Initialize(&host), AAX_SUCCESS);
        return editor;
    }
    // The control of an editor's view.
    static VSTGUI::CControl& control(const ReachableGUI& editor, const char* id) {
        return *dynamic_cast<DemoGain_View&>(*editor.GetView()).GetControl(id);
    }
    static const DemoGain_AnimKnobVST& knob(const ReachableGUI& editor, const char* id) {
        return dynamic_cast<const DemoGain_AnimKnobVST&>(control(editor, id));
    }

    NowhereContainer container;
};

TEST_F(DemoGain_GUITest, CreatesAnEditorThatNobodyHoldsYet) {
    const auto before = CACFUnknown::GetActiveObjectCount();
    auto editor = ACFPtr<IACFUnknown>::Retain(DemoGain_GUI::Create());
    void* found = nullptr;
    EXPECT_EQ(editor->QueryInterface(IID_IAAXEffectGUIV1, &found), ACF_OK);
    static_cast<AAX_IACFEffectGUI*>(found)->Release();
    EXPECT_EQ(CACFUnknown::GetActiveObjectCount(), before + 1);
    editor.Reset();
    EXPECT_EQ(CACFUnknown::GetActiveObjectCount(), before);
}

// A test program has no resources around it.
TEST_F(DemoGain_GUITest, AMissingBundleIsAssertedAndTheEditorGoesOn) {
    const varno::test::SharedBitmapsScope scope;
    const varno::ListeningHost listener;
    const auto editor = makeEditor();
    ASSERT_EQ(listener.assertions().size(), 1U);
    EXPECT_EQ(listener.assertions().front().note, "gBundleRef");
    ASSERT_TRUE(DemoGain_View::m_hPIBackground);
    EXPECT_FALSE(DemoGain_View::m_hPIBackground->isLoaded());
    EXPECT_EQ(editor->SetViewContainer(&container), AAX_SUCCESS);
    EXPECT_NE(dynamic_cast<DemoGain_View*>(editor->GetView()), nullptr);
    EXPECT_EQ(editor->TimerWakeup(), AAX_SUCCESS);
}

TEST_F(DemoGain_GUITest, WithoutAViewEveryCallSucceedsAndDoesNothing) {
    const auto editor = makeEditor();
    model->takeCalls();
    EXPECT_EQ(editor->ParameterUpdated("Gain"), AAX_SUCCESS);
    EXPECT_EQ(editor->SetControlHighlightInfo("Volume", 1, AAX_eHighlightColor_Green), AAX_SUCCESS);
    EXPECT_EQ(editor->TimerWakeup(), AAX_SUCCESS);
    EXPECT_EQ(editor->GetView(), nullptr);
    EXPECT_THAT(model->takeCalls(), IsEmpty());
}

TEST_F(DemoGain_GUITest, AnotherViewCountsAsNone) {
    const auto editor = makeEditor();
    editor->showsAnotherView = true;
    ASSERT_EQ(editor->SetViewContainer(&container), AAX_SUCCESS);
    ASSERT_NE(editor->GetView(), nullptr);
    EXPECT_EQ(editor->ParameterUpdated("Gain"), AAX_SUCCESS);
    EXPECT_EQ(editor->SetControlHighlightInfo("Volume", 1, AAX_eHighlightColor_Green), AAX_SUCCESS);
    EXPECT_EQ(editor->TimerWakeup(), AAX_SUCCESS);
}

TEST_F(DemoGain_GUITest, WithoutADisplayEverythingButTheWindowIsThere) {
    const auto editor = makeEditor();
    ASSERT_EQ(editor->SetViewContainer(&container), AAX_SUCCESS);
    AAX_Point size;
    EXPECT_EQ(editor->GetViewSize(&size), AAX_SUCCESS);
    EXPECT_EQ(size.horz, DemoGain_View::m_hPIBackground->getWidth());
    EXPECT_EQ(size.vert, DemoGain_View::m_hPIBackground->getHeight());
    AAX_Rect all{0.0F, 0.0F, size.horz, size.vert};
    EXPECT_EQ(editor->Draw(&all), AAX_SUCCESS);
    EXPECT_EQ(editor->TimerWakeup(), AAX_SUCCESS);
    EXPECT_EQ(editor->SetViewContainer(nullptr), AAX_SUCCESS);
    EXPECT_EQ(editor->GetView(), nullptr);
    EXPECT_EQ(editor->TimerWakeup(), AAX_SUCCESS);
}

TEST_F(DemoGain_GUITest, AnUpdateReachesItsControlAndNobodyElse) {
    const auto editor = makeEditor();
    editor->SetViewContainer(&container);
    model->takeCalls();
    for (const char* id : {"ASw", "Gain", "Volume", "HP", "Band", "Atk", "Rls", "UK", "LinkSw", "HSw", "Hot",
                           "Ratio", "Mix"}) {
        automate(id, 0.25);
        EXPECT_NE(control(*editor, id).getValue(), 0.25F) << id;
        EXPECT_EQ(editor->ParameterUpdated(id), AAX_SUCCESS);
        EXPECT_EQ(control(*editor, id).getValue(), 0.25F) << id;
    }
    EXPECT_THAT(model->takeCalls(), IsEmpty()) << "an update is not a gesture";
    for (const char* id : {"PR1K", "PR2K", "METERGR1", "MasterBypassID", "", "nobody"}) {
        EXPECT_EQ(editor->ParameterUpdated(id), AAX_SUCCESS) << id;
    }
    EXPECT_EQ(editor->ParameterUpdated(nullptr), AAX_SUCCESS);
    EXPECT_EQ(control(*editor, "PR1K").getValue(), 0.0F);
}

TEST_F(DemoGain_GUITest, LetsNoExceptionEscapeAndNamesItsClass) {
    const auto editor = makeEditor();
    editor->SetViewContainer(&container);
    const varno::ListeningHost listener;
    model->within = [](const std::string&) { throw std::runtime_error("host"); };
    EXPECT_EQ(editor->TimerWakeup(), AAX_ERROR_UNKNOWN_EXCEPTION);
    EXPECT_EQ(editor->ParameterUpdated("Gain"), AAX_ERROR_UNKNOWN_EXCEPTION);
    model->within = nullptr;
    gViewsThrow = true;
    EXPECT_EQ(editor->SetControlHighlightInfo("Gain", 1, AAX_eHighlightColor_Green),
              AAX_ERROR_UNKNOWN_EXCEPTION);
    gViewsThrow = false;
    std::vector<std::string> lines;
    for (const auto& line : listener.lines()) {
        lines.push_back(line.text);
    }
    EXPECT_THAT(lines, testing::ElementsAre("DemoGain_GUI::TimerWakeup exception caught: host",
                                            "DemoGain_GUI::ParameterUpdated exception caught: host",
                                            "DemoGain_GUI::SetControlHighlightInfo exception caught: view"));
}

TEST_F(DemoGain_GUITest, ARatioOfOneHalfIsShownAsItIs) {
    const auto editor = makeEditor();
    editor->SetViewContainer(&container);
    automate("Ratio", 1.0);
    editor->ParameterUpdated("Ratio");
    model->takeCalls();
    automate("Ratio", 0.5);
    editor->ParameterUpdated("Ratio");
    EXPECT_EQ(control(*editor, "Ratio").getValue(), 0.5F);
    EXPECT_THAT(model->takeCalls(), IsEmpty());
}

TEST_F(DemoGain_GUITest, HighlightsTheGainForEveryParameterAndTheVolumeForItsOwn) {
    const auto editor = makeEditor();
    editor->SetViewContainer(&container);
    EXPECT_EQ(editor->SetControlHighlightInfo("Mix", 1, AAX_eHighlightColor_Green), AAX_SUCCESS);
    EXPECT_TRUE(knob(*editor, "Gain").getHighLite());
    EXPECT_EQ(knob(*editor, "Gain").getCoronaColor(), VSTGUI::CColor(0, 200, 0, 255));
    EXPECT_FALSE(knob(*editor, "Volume").getHighLite());
    editor->SetControlHighlightInfo("Volume", 1, AAX_eHighlightColor_Red);
    EXPECT_TRUE(knob(*editor, "Volume").getHighLite());
    EXPECT_EQ(knob(*editor, "Gain").getCoronaColor(), VSTGUI::CColor(200, 0, 0, 255));
    editor->SetControlHighlightInfo("Volume", 0, AAX_eHighlightColor_Red);
    EXPECT_FALSE(knob(*editor, "Gain").getHighLite());
    EXPECT_FALSE(knob(*editor, "Volume").getHighLite());
    EXPECT_EQ(editor->SetControlHighlightInfo(nullptr, 1, AAX_eHighlightColor_Blue), AAX_SUCCESS);
    EXPECT_TRUE(knob(*editor, "Gain").getHighLite());
    EXPECT_FALSE(knob(*editor, "Volume").getHighLite());
}

TEST_F(DemoGain_GUITest, TheLastHighlightOutlivesTheViewAndIsNotAppliedAgain) {
    const auto editor = makeEditor();
    EXPECT_EQ(editor->GetLastHighlight(), 0);
    EXPECT_EQ(editor->GetLastHighlightColour(), AAX_eHighlightColor_Red);
    editor->SetControlHighlightInfo("Mix", 1, AAX_eHighlightColor_Yellow);
    editor->SetViewContainer(&container);
    EXPECT_EQ(editor->GetLastHighlight(), 1);
    EXPECT_EQ(editor->GetLastHighlightColour(), AAX_eHighlightColor_Yellow);
    EXPECT_FALSE(knob(*editor, "Gain").getHighLite());
}

TEST_F(DemoGain_GUITest, TheHostsTimerMovesTheMeters) {
    const auto editor = makeEditor();
    editor->SetViewContainer(&container);
    EXPECT_EQ(control(*editor, "METERGR1").getValue(), 0.0F);
    EXPECT_EQ(editor->TimerWakeup(), AAX_SUCCESS);
    EXPECT_EQ(control(*editor, "METERGR1").getValue(), 1.0F) << "no reduction";
}

TEST_F(DemoGain_GUITest, TwoEditorsShareTheBitmaps) {
    const auto first = makeEditor();
    first->SetViewContainer(&container);
    VSTGUI::CBitmap* const knobs = DemoGain_View::m_hGain;
    const auto second = makeEditor();
    second->SetViewContainer(&container);
    EXPECT_EQ(DemoGain_View::m_hGain, knobs);
    EXPECT_EQ(control(*first, "Gain").getBackground(), knobs);
    EXPECT_EQ(control(*second, "Gain").getBackground(), knobs);
}

TEST_F(DemoGain_GUITest, GoesWhileItsViewIsOpen) {
    auto editor = makeEditor();
    editor->SetViewContainer(&container);
    control(*editor, "Mix").beginEdit();
    model->takeCalls();
    editor.Reset();
    EXPECT_THAT(model->takeCalls(), testing::ElementsAre("release Mix"));
}

} // namespace
