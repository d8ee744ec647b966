#include "DemoGain_Alg.h"
#include "DemoGain_MeterLaw.h"
#include "Tests/Source/GUI/DemoGain_GUI_VST/ViewFixture.h"
#include "Tests/Source/GUI/HostMouse.h"
#include "Tests/Support/FakeHostServices.h"

#include "vstgui/lib/events.h"

#include <gmock/gmock.h>

#include <optional>

namespace {

std::optional<std::uint64_t> gFrameTicks; // Milliseconds; the system's clock where there are none.

} // namespace

// The linker's option --wrap makes these names: the view's reading of the clock comes here.
extern "C" std::uint64_t __real__ZNK6VSTGUI6CFrame8getTicksEv(const VSTGUI::CFrame* frame);
extern "C" std::uint64_t __wrap__ZNK6VSTGUI6CFrame8getTicksEv(const VSTGUI::CFrame* frame);
extern "C" std::uint64_t __wrap__ZNK6VSTGUI6CFrame8getTicksEv(const VSTGUI::CFrame* frame) {
    return gFrameTicks ? *gFrameTicks : __real__ZNK6VSTGUI6CFrame8getTicksEv(frame);
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using varno::test::ViewFixture;

class DemoGain_ViewInteraction : public ViewFixture {
protected:
    // Meters of an instance: reduction of both sides and averaged levels.
    void readMeters(float left, float right, float input, float output) {
        const float values[] = {left, right, input, output};
        for (std::size_t tap = 0; tap < std::size(values); ++tap) {
            controller.meters[cDemoGain_MeterID[tap]] = values[tap];
        }
    }
    float shown(const char* id) const { return view->GetControl(id)->getValue(); }
};

struct Gesture {
    const char* mID;
    float mValue;
    const char* mCall;
    const char* mStatus;
    bool mRestarts;
};

constexpr Gesture kGestures[] = {
    {"Gain", 0.25F, "set Gain 0.25", "Gain -50.00", true},
    {"HP", 1.0F, "set HP 1", "Hi Pass", true},
    {"Band", 1.0F, "set Band 1", "Band Pass", true},
    {"Atk", 0.25F, "set Atk 0.25", "Attack 25.00", true},
    {"Rls", 0.125F, "set Rls 0.125", "Release 12.50", true},
    {"UK", 1.0F, "set UK 1", "UK Mode", true},
    {"ASw", 1.0F, "set ASw 1", "Auto Gain", false},
    {"LinkSw", 1.0F, "set LinkSw 1", "Stereo Link", false},
    {"HSw", 1.0F, "set HSw 1", "Harmonic select", false},
    {"Volume", 0.75F, "set Volume 0.75", "Volume 50.00", false},
    {"Hot", 0.5F, "set Hot 0.5", "Hottitude 50.00", true},
    {"Ratio", 0.5F, "set Ratio 0.5", "Ratio", true},
    {"Mix", 1.0F, "set Mix 1", "Mix 100.00", true},
};

// Gestures.

TEST_F(DemoGain_ViewInteraction, EveryControlAsksForItsValueAndNamesItself) {
    for (const Gesture& gesture : kGestures) {
        EXPECT_THAT(move(gesture.mID, gesture.mValue), ElementsAre(gesture.mCall));
        EXPECT_EQ(status(), gesture.mStatus);
        EXPECT_FALSE(view->IsMatchingRequested()) << "automatic gain is off";
    }
}

TEST_F(DemoGain_ViewInteraction, WithAutoGainOnSomeGesturesMatchTheVolumeAnew) {
    automate("ASw", 1.0);
    for (const Gesture& gesture : kGestures) {
        openView();
        EXPECT_THAT(move(gesture.mID, gesture.mValue), ElementsAre(gesture.mCall));
        EXPECT_EQ(view->IsMatchingRequested(), gesture.mRestarts) << gesture.mID;
    }
}

TEST_F(DemoGain_ViewInteraction, HottitudeWithAutoGainOffShowsItsValueOnly) {
    move("Hot", 0.333F);
    EXPECT_EQ(status(), "Hottitude 33.30");
    EXPECT_FALSE(view->IsMatchingRequested());
}

TEST_F(DemoGain_ViewInteraction, AutoGainIsOnAboveTheMiddleOnly) {
    automate("ASw", 0.5);
    move("Hot", 0.3F);
    EXPECT_FALSE(view->IsMatchingRequested());
    automate("ASw", 0.51);
    move("Hot", 0.4F);
    EXPECT_TRUE(view->IsMatchingRequested());
}

TEST_F(DemoGain_ViewInteraction, AutoGainThatCannotBeReadIsOff) {
    automate("ASw", 1.0);
    model->unreadable = {"ASw"};
    move("Hot", 0.3F);
    EXPECT_FALSE(view->IsMatchingRequested());
}

TEST_F(DemoGain_ViewInteraction, TouchesAndReleasesByTag) {
    for (const DemoGain_ViewLayout::Control& row : DemoGain_ViewLayout::kControls) {
        VSTGUI::CControl* const control = view->GetControl(row.mID);
        view->controlBeginEdit(control);
        view->controlEndEdit(control);
        const auto calls = model->takeCalls();
        if (row.mKind == DemoGain_ViewLayout::Kind::kMeter) {
            EXPECT_THAT(calls, IsEmpty());
        } else {
            EXPECT_THAT(calls,
                        ElementsAre(std::string("touch ") + row.mID, std::string("release ") + row.mID));
        }
    }
}

TEST_F(DemoGain_ViewInteraction, AStrangeTagIsAssertedAndDoesNothing) {
    const varno::ListeningHost listener;
    VSTGUI::CControl* const control = view->GetControl("Gain");
    for (const std::int32_t tag : {-1, 0, 2, 16, 17, 20}) {
        control->setTag(tag);
        view->controlBeginEdit(control);
        view->controlEndEdit(control);
        ASSERT_THAT(listener.assertions(), IsEmpty());
    }
    automate("ASw", 1.0);
    view->valueChanged(control);
    ASSERT_EQ(listener.assertions().size(), 1U);
    EXPECT_EQ(listener.assertions().front().note, "0");
    EXPECT_THAT(model->takeCalls(), IsEmpty());
    EXPECT_EQ(status(), "---");
    EXPECT_FALSE(view->IsMatchingRequested());
}

// The library brings the releases of both buttons to what was pressed last, if to anything.
TEST_F(DemoGain_ViewInteraction, ASecondPressEndsTheGestureUnderWay) {
    varno::test::HostMouse mouse;
    openView(&mouse);
    VSTGUI::CFrame& frame = *view->getFrame();
    frame.attached(&frame); // as opening does, which needs a window
    const auto dispatch = [&](auto event, const char* id, VSTGUI::MouseButton button) {
        event.mousePosition = view->GetControl(id)->getViewSize().getCenter();
        event.buttonState.add(button);
        frame.dispatchEvent(event);
    };
    for (const bool takesDown : {false, true}) {
        mouse.takesDown = takesDown;
        for (const char* const second : {"Gain", "Volume"}) {
            dispatch(VSTGUI::MouseDownEvent(), "Gain", VSTGUI::MouseButton::Left);
            dispatch(VSTGUI::MouseDownEvent(), second, VSTGUI::MouseButton::Right);
            dispatch(VSTGUI::MouseUpEvent(), second, VSTGUI::MouseButton::Right);
            dispatch(VSTGUI::MouseUpEvent(), second, VSTGUI::MouseButton::Left);
            std::vector<std::string> offers = mouse.takeOffers();
            std::erase(offers, "drag Gain 0");
            EXPECT_THAT(offers, ElementsAre("down Gain 0", "up Gain 0", std::string("down ") + second + " 16",
                                            std::string("up ") + second + " 16"));
            EXPECT_FALSE(view->GetControl("Gain")->isEditing());
        }
    }
    EXPECT_THAT(model->takeCalls(), ElementsAre("touch Gain", "release Gain", "touch Gain", "release Gain"));
}

TEST_F(DemoGain_ViewInteraction, WithoutParametersNothingHappens) {
    view = VSTGUI::owned(new DemoGain_View(nullptr, nullptr, nullptr, nullptr));
    view->SetClipboard(clipboard);
    clipboard->content = "";
    const varno::ListeningHost listener;
    for (const DemoGain_ViewLayout::Control& row : DemoGain_ViewLayout::kControls) {
        VSTGUI::CControl* const control = view->GetControl(row.mID);
        control->setValue(1.0F);
        view->controlBeginEdit(control);
        view->valueChanged(control);
        view->controlEndEdit(control);
        view->ShowParameter(row.mID);
        EXPECT_EQ(control->getValue(), 1.0F);
    }
    view->Tick(1000);
    EXPECT_EQ(status(), "---");
    EXPECT_THAT(listener.assertions(), IsEmpty());
}

// The gain's compensation.

TEST_F(DemoGain_ViewInteraction, MoreGainLowersTheVolumeAtOnce) {
    automate("ASw", 1.0);
    automate("Gain", 0.4);
    automate("Volume", 0.45);
    move("Gain", 0.5F);
    answer();
    EXPECT_NEAR(valueOf("Gain"), 0.5, 1e-6);
    EXPECT_NEAR(valueOf("Volume"), 0.35, 1e-6);
    EXPECT_THAT(move("Gain", 0.4F), ElementsAre("set Gain 0.4"));
    answer();
    EXPECT_NEAR(valueOf("Volume"), 0.35, 1e-6) << "less gain never raises the volume";
    EXPECT_TRUE(view->IsMatchingRequested());
}

// A host that carries requests out at once has the new gain already: there is nothing to compensate.
TEST_F(DemoGain_ViewInteraction, ReadsAutoGainBeforeTheGainIsWrittenAndTheLevelsAfter) {
    automate("ASw", 1.0);
    automate("Gain", 0.4);
    std::vector<std::string> calls;
    model->within = [&](const std::string& call) { calls.push_back(call); };
    move("Gain", 0.5F);
    model->within = nullptr;
    EXPECT_THAT(calls, ElementsAre("get ASw", "set Gain", "get Gain", "get Volume", "set Volume"));
}

TEST_F(DemoGain_ViewInteraction, TheVolumeIsLoweredToZeroAtTheMost) {
    automate("ASw", 1.0);
    automate("Gain", 0.1);
    automate("Volume", 0.3);
    EXPECT_THAT(move("Gain", 1.0F), ElementsAre("set Gain 1", "set Volume 0"));
}

TEST_F(DemoGain_ViewInteraction, MoreGainWithAutoGainOffLeavesTheVolume) {
    automate("Gain", 0.1);
    EXPECT_THAT(move("Gain", 1.0F), ElementsAre("set Gain 1"));
}

// What the host changes.

TEST_F(DemoGain_ViewInteraction, ShowsEveryParameterAndWritesNone) {
    for (const Gesture& gesture : kGestures) {
        automate(gesture.mID, gesture.mValue);
        view->ShowParameter(gesture.mID);
        EXPECT_EQ(shown(gesture.mID), gesture.mValue) << gesture.mID;
    }
    EXPECT_THAT(model->takeCalls(), IsEmpty());
    EXPECT_EQ(status(), "---");
}

TEST_F(DemoGain_ViewInteraction, ShowsNothingForWhatIsNoParameterOfAControl) {
    for (const char* id : {"PR1K", "PR2K", "METERGR1", "METERGR2", "MasterBypassID", "Nobody", "", "gain"}) {
        view->ShowParameter(id);
    }
    for (const char* id : {"PR1K", "PR2K"}) {
        EXPECT_EQ(shown(id), 0.0F);
    }
    EXPECT_THAT(model->takeCalls(), IsEmpty());
}

TEST_F(DemoGain_ViewInteraction, AParameterThatCannotBeReadLeavesItsControl) {
    automate("Mix", 0.75);
    view->ShowParameter("Mix");
    model->unreadable = {"Mix"};
    automate("Mix", 0.25);
    view->ShowParameter("Mix");
    EXPECT_EQ(shown("Mix"), 0.75F);
}

// Meters.

TEST_F(DemoGain_ViewInteraction, MetersShowReductionUpsideDown) {
    readMeters(0.0F, 1.0F, 0.0F, 0.0F);
    view->Tick(1000);
    EXPECT_EQ(shown("METERGR1"), 1.0F);
    EXPECT_NEAR(shown("METERGR2"), -0.0051F, 1e-5F);
    readMeters(0.5F, 0.25F, 0.0F, 0.0F);
    view->Tick(1030);
    EXPECT_EQ(shown("METERGR1"), DemoGain_MeterValue(0.5F));
    EXPECT_EQ(shown("METERGR2"), DemoGain_MeterValue(0.25F));
}

TEST_F(DemoGain_ViewInteraction, MetersThatCannotBeReadShowNoReduction) {
    readMeters(0.5F, 0.5F, 0.0F, 0.0F);
    view->Tick(1000);
    controller.meters.clear();
    view->Tick(1030);
    EXPECT_EQ(shown("METERGR1"), 1.0F);
    EXPECT_EQ(shown("METERGR2"), 1.0F);
}

TEST_F(DemoGain_ViewInteraction, AModelWithoutHostShowsNoReduction) {
    readMeters(0.5F, 0.5F, 1.0F, 1.0F);
    model->Uninitialize();
    view->Tick(1000);
    EXPECT_EQ(shown("METERGR1"), 1.0F);
    EXPECT_EQ(shown("METERGR2"), 1.0F);
}

// The volume's matching.

TEST_F(DemoGain_ViewInteraction, MatchesTheVolumeAfterAGesture) {
    automate("ASw", 1.0);
    readMeters(0.0F, 0.0F, 1.0F, 0.5F);
    move("Hot", 0.5F);
    view->Tick(1000);
    EXPECT_FALSE(view->IsMatchingRequested());
    EXPECT_THAT(model->takeCalls(), IsEmpty()) << "the input's peak is taken after the time is";
    for (std::uint32_t tick = 1; tick <= 11; ++tick) {
        view->Tick(1000 + tick);
        answer();
    }
    EXPECT_NEAR(valueOf("Volume"), 0.65051, 1e-5);
}

TEST_F(DemoGain_ViewInteraction, TheHostsTimerCountsInTheLower32BitsOfTheFramesClock) {
    automate("ASw", 1.0);
    readMeters(0.0F, 0.0F, 1.0F, 0.5F);
    move("Hot", 0.5F);
    gFrameTicks = 0x5'0000'0000;
    view->TimerWakeup();
    view->TimerWakeup();
    EXPECT_THAT(model->takeCalls(), IsEmpty()) << "the clock reads 0, the time before the signal";
    gFrameTicks = 0x5'0001'0000;
    view->TimerWakeup();
    gFrameTicks.reset();
    EXPECT_EQ(model->takeCalls().size(), 1U) << "65,536 ms measure at once";
}

TEST_F(DemoGain_ViewInteraction, WithoutAGestureTheVolumeStays) {
    automate("ASw", 1.0);
    readMeters(0.0F, 0.0F, 1.0F, 0.5F);
    for (std::uint32_t tick = 0; tick < 100; ++tick) {
        view->Tick(1000 * tick);
    }
    EXPECT_THAT(model->takeCalls(), IsEmpty());
}

TEST_F(DemoGain_ViewInteraction, TurningAutoGainOnDoesNotMatchYet) {
    readMeters(0.0F, 0.0F, 1.0F, 0.5F);
    move("ASw", 1.0F);
    answer();
    for (std::uint32_t tick = 0; tick < 100; ++tick) {
        view->Tick(1000 * tick);
    }
    EXPECT_THAT(model->takeCalls(), IsEmpty());
    move("Mix", 0.5F);
    EXPECT_TRUE(view->IsMatchingRequested());
}

// Gestures that the end of the view interrupts.

TEST_F(DemoGain_ViewInteraction, AViewThatGoesReleasesWhatIsTouched) {
    view->GetControl("Gain")->beginEdit();
    view->GetControl("Mix")->beginEdit();
    view->GetControl("Mix")->beginEdit();
    EXPECT_THAT(model->takeCalls(), ElementsAre("touch Gain", "touch Mix"));
    view = nullptr;
    EXPECT_THAT(model->takeCalls(), ElementsAre("release Gain", "release Mix"));
}

} // namespace
