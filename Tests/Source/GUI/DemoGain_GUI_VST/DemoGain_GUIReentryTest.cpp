// A host that closes the view, releases the editor or opens another view from within a call of the editor's,
// and calls in an order that no host should use. Without a display, everything but the window is there.
#include "GUI/DemoGain_GUI_VST/DemoGain_GUI.h"

#include "DemoGain_Alg.h"
#include "Platform/RunLoop.h"
#include "Tests/Source/GUI/DemoGain_GUI_VST/ViewFixture.h"
#include "Tests/Source/GUI/TestEditor.h"

#include <cstdlib>
#include <gmock/gmock.h>
#include <tuple>

namespace varno::test {
namespace {

class EditorInReach : public DemoGain_GUI {
public:
    using AAX_CEffectGUI_VST::GetView;
};

// What the host does from within.
enum class Act { kClose, kRelease, kOpenAnother, kUninitialize };

class DemoGain_GUIReentry : public ViewFixture {
protected:
    DemoGain_GUIReentry() {
        ::unsetenv("DISPLAY");
        host.offer(IID_IAAXEffectParametersV1, static_cast<AAX_IACFEffectParameters*>(model.Get()));
        for (TestContainer* const one : {&container, &another}) {
            one->type = AAX_eViewContainerType_X11;
            one->view = one; // not null, and no window's number
        }
        EXPECT_EQ(editor->Initialize(&host), AAX_SUCCESS);
    }

    void perform(Act act) {
        switch (act) {
        case Act::kClose:
            editor->SetViewContainer(nullptr);
            break;
        case Act::kRelease:
            editor.Reset();
            break;
        case Act::kOpenAnother:
            editor->SetViewContainer(&another);
            break;
        case Act::kUninitialize:
            editor->Uninitialize();
            break;
        }
    }

    // Performs the act within the first such call of the data model.
    void actWithin(const std::string& call, Act act) {
        model->within = [=, this](const std::string& made) {
            if (made == call && performed == 0) {
                ++performed;
                perform(act);
            }
        };
    }

    // As the library's dispatch does: within a tick of the loop that all editors share.
    void dispatch(const std::function<void()>& event) {
        const auto loop = RunLoop::shared();
        const Registration registration = loop->addTimer(std::chrono::milliseconds(0), event);
        loop->tick();
    }

    DemoGain_View& shownView() { return dynamic_cast<DemoGain_View&>(*editor->GetView()); }

    void expectTheOutcomeOf(Act act) {
        EXPECT_EQ(performed, 1);
        if (act == Act::kRelease) {
            EXPECT_FALSE(editor);
        } else {
            EXPECT_EQ(editor->GetView() != nullptr, act == Act::kOpenAnother);
            EXPECT_EQ(editor->GetViewContainer() != nullptr, act == Act::kOpenAnother);
        }
        const auto observed = model->takeCalls();
        EXPECT_EQ(std::ranges::count(observed, "touch Gain"), std::ranges::count(observed, "release Gain"));
    }

    TestContainer container;
    TestContainer another;
    ACFPtr<EditorInReach> editor = ACFPtr<EditorInReach>::Retain(new EditorInReach);
    int performed = 0;
};

class WithinACall : public DemoGain_GUIReentry,
                    public testing::WithParamInterface<std::tuple<const char*, Act>> {};

TEST_P(WithinACall, OfAGesture) {
    const auto [call, act] = GetParam();
    editor->SetViewContainer(&container);
    actWithin(call, act);
    dispatch([this] {
        VSTGUI::CControl* const knob = shownView().GetControl("Gain");
        knob->beginEdit();
        knob->setValue(0.75F);
        knob->valueChanged();
        knob->endEdit();
    });
    expectTheOutcomeOf(act);
}

constexpr auto kActs = {Act::kClose, Act::kRelease, Act::kOpenAnother, Act::kUninitialize};

INSTANTIATE_TEST_SUITE_P(All, WithinACall,
                         testing::Combine(testing::Values("touch Gain", "get ASw", "set Gain",
                                                          "release Gain"),
                                          testing::ValuesIn(kActs)));

class Within : public DemoGain_GUIReentry, public testing::WithParamInterface<Act> {};

TEST_P(Within, TheHostsTimer) {
    editor->SetViewContainer(&container);
    actWithin("get Volume", GetParam());
    EXPECT_EQ(editor->TimerWakeup(), AAX_SUCCESS);
    expectTheOutcomeOf(GetParam());
}

TEST_P(Within, AnUpdate) {
    editor->SetViewContainer(&container);
    actWithin("get Gain", GetParam());
    EXPECT_EQ(editor->ParameterUpdated("Gain"), AAX_SUCCESS);
    expectTheOutcomeOf(GetParam());
}

TEST_P(Within, TheOpeningOfAView) {
    actWithin("get Rls", GetParam());
    EXPECT_EQ(editor->SetViewContainer(&container), AAX_SUCCESS);
    expectTheOutcomeOf(GetParam());
}

TEST_P(Within, TheClipboard) {
    for (const char* const button : {"PR1K", "PR2K"}) {
        if (!editor) {
            editor = ACFPtr<EditorInReach>::Retain(new EditorInReach);
        }
        editor->Initialize(&host);
        editor->SetViewContainer(&container);
        shownView().SetClipboard(clipboard);
        performed = 0;
        clipboard->within = [this] {
            if (++performed == 1) {
                perform(GetParam());
            }
        };
        dispatch([&] {
            VSTGUI::CControl* const control = shownView().GetControl(button);
            control->setValue(1.0F);
            control->valueChanged();
        });
        expectTheOutcomeOf(GetParam());
    }
}

TEST_P(Within, TheEndOfAGestureThatACloseEnds) {
    editor->SetViewContainer(&container);
    shownView().GetControl("Gain")->beginEdit();
    actWithin("release Gain", GetParam());
    editor->SetViewContainer(nullptr);
    expectTheOutcomeOf(GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, Within, testing::ValuesIn(kActs));

TEST_F(DemoGain_GUIReentry, AViewOpensWithoutInitialize) {
    const SharedBitmapsScope scope;
    const auto early = ACFPtr<EditorInReach>::Retain(new EditorInReach);
    EXPECT_EQ(early->SetViewContainer(&container), AAX_SUCCESS);
    ASSERT_NE(early->GetView(), nullptr);
    AAX_Point size{1.0F, 1.0F};
    EXPECT_EQ(early->GetViewSize(&size), AAX_SUCCESS);
    EXPECT_EQ(size.horz, 0.0F) << "no bitmap is loaded";
    EXPECT_EQ(early->TimerWakeup(), AAX_SUCCESS);
    SharedBitmapsScope::load();
    const auto late = ACFPtr<EditorInReach>::Retain(new EditorInReach);
    EXPECT_EQ(late->Initialize(nullptr), -20011);
    EXPECT_EQ(late->SetViewContainer(&container), AAX_SUCCESS);
    late->GetViewSize(&size);
    EXPECT_EQ(size.horz, DemoGain_View::m_hPIBackground->getWidth());
}

// Every sequence of four calls out of twelve.
TEST_F(DemoGain_GUIReentry, NoOrderOfCallsFails) {
    AAX_Rect rect{0.0F, 0.0F, 10.0F, 10.0F};
    AAX_Point size;
    ACFPtr<EditorInReach> one;
    const std::function<AAX_Result()> calls[] = {
        [&] { return one->Initialize(&host); },
        [&] { return one->Initialize(nullptr) == -20011 ? 0 : -1; },
        [&] { return one->Uninitialize(); },
        [&] { return one->SetViewContainer(&container); },
        [&] { return one->SetViewContainer(nullptr); },
        [&] { return one->TimerWakeup(); },
        [&] { return one->ParameterUpdated("Gain") + one->ParameterUpdated(nullptr); },
        [&] { return one->SetControlHighlightInfo("Volume", 1, AAX_eHighlightColor_Green); },
        [&] { return one->Draw(&rect) + one->Draw(nullptr); },
        [&] { return one->GetViewSize(&size) + one->GetViewSize(nullptr); },
        [&] { return one->NotificationReceived(1, nullptr, 0); },
        [&] { return one->GetCustomLabel(AAX_EPlugInStrings{}, nullptr) == -20004 ? 0 : -1; },
    };
    constexpr std::size_t kCalls = std::size(calls);
    constexpr std::size_t kSequences = kCalls * kCalls * kCalls * kCalls;
    for (std::size_t sequence = 0; sequence < kSequences; ++sequence) {
        one = ACFPtr<EditorInReach>::Retain(new EditorInReach);
        for (std::size_t rest = sequence, i = 0; i < 4; ++i, rest /= kCalls) {
            ASSERT_EQ(calls[rest % kCalls](), AAX_SUCCESS) << "call " << rest % kCalls << " of " << sequence;
        }
    }
}

// The editor's own controller is the one to ask where the data model is a host's proxy.
TEST_F(DemoGain_GUIReentry, MetersOfAProxyAreReadFromTheEditorsController) {
    ACFPtr<ThreeParameters> proxy = ACFPtr<ThreeParameters>::Retain(new ThreeParameters);
    host.offer(IID_IAAXEffectParametersV1, proxy.Get());
    controller.meters[cDemoGain_MeterID[eMeterTap_GainReductionLeft]] = 0.25F;
    editor->Uninitialize();
    editor->Initialize(&host);
    editor->SetViewContainer(&container);
    EXPECT_EQ(editor->TimerWakeup(), AAX_SUCCESS);
    EXPECT_LT(shownView().GetControl("METERGR1")->getValue(), 0.6F);
}

} // namespace
} // namespace varno::test
