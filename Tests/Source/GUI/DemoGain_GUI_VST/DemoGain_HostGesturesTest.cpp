#include "GUI/DemoGain_GUI_VST/DemoGain_Controls.h"

#include "Tests/Source/GUI/DemoGain_GUI_VST/ControlFixture.h"

#include <type_traits>

namespace varno::test {
namespace {

using VSTGUI::kAlt;
using VSTGUI::kControl;
using VSTGUI::kLButton;
using VSTGUI::kMouseDownEventHandledButDontNeedMovedOrUpEvents;
using VSTGUI::kMouseEventHandled;
using VSTGUI::kRButton;
using VSTGUI::kShift;
using VSTGUI::MouseButton;

constexpr int kPictures = 5;

// A control of the editor and the library's own, with the same arguments.
struct Knob {
    using Ours = DemoGain_AnimKnobVST;
    using Base = VSTGUI::CAnimKnob;
    template<class Control>
    static Control* make(const VSTGUI::CRect& place, VSTGUI::IControlListener* listener, std::int32_t tag,
                         VSTGUI::CBitmap* bitmap) {
        return new Control(place, listener, tag, kPictures, place.getHeight(), bitmap, VSTGUI::CPoint(0, 0));
    }
};
struct Switch {
    using Ours = DemoGain_SwitchHorVST;
    using Base = VSTGUI::CHorizontalSwitch;
    template<class Control>
    static Control* make(const VSTGUI::CRect& place, VSTGUI::IControlListener* listener, std::int32_t tag,
                         VSTGUI::CBitmap* bitmap) {
        return new Control(place, listener, tag, kPictures, place.getHeight(), kPictures, bitmap,
                           VSTGUI::CPoint(0, 0));
    }
};
struct OnOff {
    using Ours = DemoGain_OnOffButtonVST;
    using Base = VSTGUI::COnOffButton;
    template<class Control>
    static Control* make(const VSTGUI::CRect& place, VSTGUI::IControlListener* listener, std::int32_t tag,
                         VSTGUI::CBitmap* bitmap) {
        return new Control(place, listener, tag, bitmap, 0);
    }
};
struct Kick {
    using Ours = DemoGain_KickButtonVST;
    using Base = VSTGUI::CKickButton;
    template<class Control>
    static Control* make(const VSTGUI::CRect& place, VSTGUI::IControlListener* listener, std::int32_t tag,
                         VSTGUI::CBitmap* bitmap) {
        return new Control(place, listener, tag, place.getHeight(), bitmap, VSTGUI::CPoint(0, 0));
    }
};

template<class Kind>
class DemoGain_HostGesturesTest : public ControlFixture {
protected:
    template<class Control>
    Control* make() {
        return add(Kind::template make<Control>(place(), &listener, kTag, pictures(kPictures)));
    }
    typename Kind::Ours* makeHosted() {
        auto* const control = make<typename Kind::Ours>();
        control->SetViewContainer(&host);
        control->SetParamID("Gain");
        return control;
    }

    // What a control does in everything that a user may do to it: results, calls of the listener and values.
    Log life(VSTGUI::CControl& control) {
        Log log;
        const auto note = [&](auto result) {
            const Log told = listener.take();
            log.push_back(std::to_string(static_cast<int>(result)));
            log.insert(log.end(), told.begin(), told.end());
            log.push_back("at " + std::to_string(control.getValue()));
        };
        // Exactly the left button and the Alt key is left out: it has another effect.
        std::vector<std::int32_t> combinations = {0, +kShift, kAlt | kShift, kControl | kShift};
        // The Control key alone makes our knob's drag a fine one.
        if (!std::is_same_v<Kind, Knob>) {
            combinations.push_back(+kControl);
        }
        for (const std::int32_t keys : combinations) {
            note(press(control, kLButton | keys, at(4, 30)));
            note(move(control, kLButton | keys, at(12, 8)));
            note(move(control, kLButton | keys, at(33, 20)));
            note(release(control, kLButton | keys, at(33, 20)));
            note(press(control, kLButton | keys, at(20, 5)));
            note(move(control, kLButton | keys, at(-20, -5)));
            note(release(control, kLButton | keys, at(-20, -5)));
        }
        for (const std::int32_t state : {0, +kRButton, +VSTGUI::kMButton, kLButton | VSTGUI::kDoubleClick}) {
            note(press(control, state, at(30, 30)));
            note(move(control, state, at(12, 8)));
            note(release(control, state, at(12, 8)));
        }
        note(press(control, kLButton, at(30, 8)));
        note(control.onMouseCancel());
        for (const auto virtualKey :
             {VSTGUI::VirtualKey::Left, VSTGUI::VirtualKey::Up, VSTGUI::VirtualKey::Right,
              VSTGUI::VirtualKey::Down, VSTGUI::VirtualKey::Return}) {
            note(this->key(control, virtualKey));
            note(this->key(control, virtualKey, VSTGUI::EventType::KeyUp));
        }
        // The wheel is left out: its edit ends by a timer of the run loop, which needs a window.
        return log;
    }
};

using Kinds = ::testing::Types<Knob, Switch, OnOff, Kick>;
TYPED_TEST_SUITE(DemoGain_HostGesturesTest, Kinds);

TYPED_TEST(DemoGain_HostGesturesTest, WithoutTheHostIsLikeItsBase) {
    const Log expected = this->life(*this->template make<typename TypeParam::Base>());
    EXPECT_GT(expected.size(), 60U);
    EXPECT_EQ(this->life(*this->template make<typename TypeParam::Ours>()), expected);

    auto* const withoutID = this->template make<typename TypeParam::Ours>();
    withoutID->SetViewContainer(&this->host);
    EXPECT_EQ(this->life(*withoutID), expected);

    auto* const withoutContainer = this->template make<typename TypeParam::Ours>();
    withoutContainer->SetParamID("Gain");
    EXPECT_EQ(this->life(*withoutContainer), expected);
    EXPECT_EQ(this->host.takeOffers(), Log{});
}

TYPED_TEST(DemoGain_HostGesturesTest, WithAHostThatTakesNothingIsLikeItsBase) {
    const Log expected = this->life(*this->template make<typename TypeParam::Base>());
    EXPECT_EQ(this->life(*this->makeHosted()), expected);
    EXPECT_FALSE(this->host.takeOffers().empty());
}

TYPED_TEST(DemoGain_HostGesturesTest, APressThatTheHostTakesNeverReachesTheBase) {
    auto* const control = this->makeHosted();
    const float before = control->getValue();
    this->host.takesDown = true;
    EXPECT_EQ(this->press(*control, kLButton | kShift, this->at(30, 30)), kMouseEventHandled);
    EXPECT_EQ(this->host.takeOffers(), Log{"down Gain 1"});
    EXPECT_FALSE(control->isEditing());

    // The rest of the gesture is offered too, and where it is not taken, it finds nothing under way.
    this->move(*control, kLButton, this->at(4, 4));
    EXPECT_EQ(this->release(*control, kLButton, this->at(4, 4)), kMouseEventHandled);
    EXPECT_EQ(this->host.takeOffers(), (Log{"drag Gain 0", "up Gain 0"}));
    EXPECT_EQ(this->listener.take(), Log{});
    EXPECT_EQ(control->getValue(), before);
}

TYPED_TEST(DemoGain_HostGesturesTest, TheHostsOwnModifiersCount) {
    auto* const control = this->makeHosted();
    this->host.modifiers = 0x02;
    this->host.takesDown = true;
    this->press(*control, kRButton | kControl, this->at(4, 4));
    EXPECT_EQ(this->host.takeOffers(), Log{"down Gain 26"});
}

TYPED_TEST(DemoGain_HostGesturesTest, OnlyADragWithTheLeftButtonIsOffered) {
    auto* const control = this->makeHosted();
    this->host.takesDrag = true;
    this->move(*control, 0, this->at(4, 4));
    this->move(*control, kRButton, this->at(5, 4));
    EXPECT_EQ(this->host.takeOffers(), Log{});
    EXPECT_EQ(this->move(*control, kLButton | kAlt, this->at(6, 4)), kMouseEventHandled);
    EXPECT_EQ(this->host.takeOffers(), Log{"drag Gain 4"});
    EXPECT_EQ(this->listener.take(), Log{});
}

TYPED_TEST(DemoGain_HostGesturesTest, AReleaseThatTheHostTakesEndsTheGesture) {
    auto* const control = this->makeHosted();
    this->press(*control, kLButton, this->at(20, 20));
    ASSERT_TRUE(control->isEditing());
    this->listener.take();
    this->host.takesUp = true;
    EXPECT_EQ(this->release(*control, kLButton, this->at(20, 20)), kMouseEventHandled);
    EXPECT_FALSE(control->isEditing());
    EXPECT_EQ(this->listener.take(), Log{"end"});
}

TYPED_TEST(DemoGain_HostGesturesTest, AnOptionClickSetsTheDefaultValue) {
    auto* const control = this->makeHosted();
    control->setDefaultValue(0.25F);
    control->setValue(1.0F);
    EXPECT_EQ(this->press(*control, kLButton | kAlt, this->at(20, 20)),
              kMouseDownEventHandledButDontNeedMovedOrUpEvents);
    EXPECT_EQ(this->host.takeOffers(), (Log{"down Gain 4", "up Gain 4"}));
    const Log told = this->listener.take();
    ASSERT_EQ(told.size(), 3U);
    EXPECT_EQ(told, (Log{"begin", "value 0.25", "end"}));
}

TYPED_TEST(DemoGain_HostGesturesTest, AnOptionClickOnTheDefaultValueOnlyTouches) {
    auto* const control = this->makeHosted();
    control->setDefaultValue(control->getValue());
    EXPECT_TRUE(control->checkDefaultValue(kLButton | kAlt));
    EXPECT_EQ(this->listener.take(), (Log{"begin", "end"}));
}

TYPED_TEST(DemoGain_HostGesturesTest, OnlyTheExactClickSetsTheDefaultValue) {
    auto* const control = this->makeHosted();
    control->setDefaultValue(0.25F);
    for (const std::int32_t state :
         {+kLButton, +kAlt, kLButton | kAlt | kShift, kLButton | kAlt | kControl, kRButton | kAlt,
          kLButton | kControl, kLButton | kAlt | VSTGUI::kDoubleClick}) {
        EXPECT_FALSE(control->checkDefaultValue(state));
    }
    EXPECT_EQ(this->listener.take(), Log{});
    EXPECT_NE(control->getValue(), 0.25F);
}

TYPED_TEST(DemoGain_HostGesturesTest, AHostThatTakesAnOptionClickKeepsItsValue) {
    auto* const control = this->makeHosted();
    control->setDefaultValue(0.25F);
    this->host.takesDown = true;
    this->press(*control, kLButton | kAlt, this->at(20, 20));
    EXPECT_EQ(this->listener.take(), Log{});
    EXPECT_NE(control->getValue(), 0.25F);
}

TYPED_TEST(DemoGain_HostGesturesTest, EventsOfTheWindowComeTheSameWay) {
    auto* const control = this->makeHosted();
    control->setDefaultValue(0.25F);
    this->host.takesDown = true;
    const VSTGUI::Modifiers controlKey(VSTGUI::ModifierKey::Control);
    // The library's own rule would now set the default value and consume the press.
    EXPECT_TRUE(
        this->template dispatch<VSTGUI::MouseDownEvent>(this->at(20, 20), MouseButton::Left, controlKey));
    this->template dispatch<VSTGUI::MouseMoveEvent>(this->at(25, 20), MouseButton::Left, controlKey);
    this->template dispatch<VSTGUI::MouseUpEvent>(this->at(25, 20), MouseButton::Left, controlKey);
    EXPECT_EQ(this->host.takeOffers(), (Log{"down Gain 8", "drag Gain 8", "up Gain 8"}));
    EXPECT_EQ(this->listener.take(), Log{});
    EXPECT_NE(control->getValue(), 0.25F);
    // Nothing is captured any more.
    this->template dispatch<VSTGUI::MouseMoveEvent>(this->at(190, 90), MouseButton::Left);
    EXPECT_EQ(this->host.takeOffers(), Log{});
}

TYPED_TEST(DemoGain_HostGesturesTest, AfterAnOptionClickNothingIsCaptured) {
    auto* const control = this->makeHosted();
    const VSTGUI::Modifiers alt(VSTGUI::ModifierKey::Alt);
    this->template dispatch<VSTGUI::MouseDownEvent>(this->at(20, 20), MouseButton::Left, alt);
    this->template dispatch<VSTGUI::MouseUpEvent>(this->at(20, 20), MouseButton::Left, alt);
    EXPECT_EQ(this->host.takeOffers(), (Log{"down Gain 4", "up Gain 4"}));
    EXPECT_FALSE(control->isEditing());
}

// The library brings no release for these to a control.
TYPED_TEST(DemoGain_HostGesturesTest, APressThatNobodyHandlesIsReleasedAtOnce) {
    this->makeHosted();
    this->template dispatch<VSTGUI::MouseDownEvent>(this->at(20, 20), MouseButton::Right);
    EXPECT_EQ(this->host.takeOffers(), (Log{"down Gain 16", "up Gain 16"}));
    this->template dispatch<VSTGUI::MouseUpEvent>(this->at(20, 20), MouseButton::Right);
    EXPECT_EQ(this->host.takeOffers(), Log{});
}

TYPED_TEST(DemoGain_HostGesturesTest, ACancelReleases) {
    auto* const control = this->makeHosted();
    for (const bool takesDown : {false, true}) {
        this->host.takesDown = takesDown;
        this->press(*control, kLButton, this->at(20, 20));
        this->host.takeOffers();
        control->onMouseCancel();
        EXPECT_EQ(this->host.takeOffers(), Log{"up Gain 0"});
        EXPECT_FALSE(control->isEditing());
        control->onMouseCancel();
        EXPECT_EQ(this->host.takeOffers(), Log{}) << "once for each press";
    }
}

TYPED_TEST(DemoGain_HostGesturesTest, AnOfferThatEndsLeavesThePresentValue) {
    auto* const control = this->makeHosted();
    this->press(*control, kLButton, this->at(20, 20));
    const float value = control->getValue();
    this->host.takeOffers();
    this->listener.take();
    control->EndOffer();
    EXPECT_EQ(this->host.takeOffers(), Log{"up Gain 0"});
    EXPECT_FALSE(control->isEditing());
    if (std::is_same_v<TypeParam, Kick>) {
        EXPECT_EQ(control->getValue(), 0.0F);
    } else {
        EXPECT_EQ(control->getValue(), value);
    }
    EXPECT_EQ(this->listener.take(), Log{"end"});
    control->EndOffer();
    EXPECT_EQ(this->host.takeOffers(), Log{});
}

TYPED_TEST(DemoGain_HostGesturesTest, AClosedControlDoesNothingMore) {
    auto* const control = this->makeHosted();
    control->SetViewContainer(nullptr);
    control->Close();
    for (const std::int32_t state : {+kLButton, kLButton | kAlt}) {
        EXPECT_EQ(this->press(*control, state, this->at(20, 20)), VSTGUI::kMouseEventNotHandled);
        EXPECT_EQ(this->move(*control, state, this->at(25, 20)), VSTGUI::kMouseEventNotHandled);
        EXPECT_EQ(this->release(*control, state, this->at(25, 20)), VSTGUI::kMouseEventNotHandled);
    }
    EXPECT_EQ(this->listener.take(), Log{});
}

// What reaches the base of a control.
class RecordingBase : public VSTGUI::CControl {
public:
    using CControl::CControl;

    VSTGUI::CMouseEventResult onMouseDown(VSTGUI::CPoint&, const VSTGUI::CButtonState& buttons) override {
        return note(buttons);
    }
    VSTGUI::CMouseEventResult onMouseMoved(VSTGUI::CPoint&, const VSTGUI::CButtonState& buttons) override {
        return note(buttons);
    }
    VSTGUI::CMouseEventResult onMouseUp(VSTGUI::CPoint&, const VSTGUI::CButtonState& buttons) override {
        return note(buttons);
    }
    void draw(VSTGUI::CDrawContext*) override {}
    VSTGUI::CBaseObject* newCopy() const override { return nullptr; }

    std::vector<std::int32_t> states;

private:
    VSTGUI::CMouseEventResult note(const VSTGUI::CButtonState& buttons) {
        states.push_back(buttons());
        return kMouseEventHandled;
    }
};

using DemoGain_HostGesturesStateTest = ControlFixture;

TEST_F(DemoGain_HostGesturesStateTest, TheBaseSeesTheHostsModifiersWithItsOwn) {
    host.modifiers = AAX_eModifiers_Shift | AAX_eModifiers_Option;
    auto* const control = add(new DemoGain_HostGestures<RecordingBase>(place()));
    control->SetViewContainer(&host);
    control->SetParamID("Gain");
    constexpr std::int32_t kState = kLButton | kControl;
    press(*control, kState, at(4, 4));
    move(*control, kState, at(5, 5));
    release(*control, kState, at(5, 5));
    EXPECT_EQ(control->states, std::vector<std::int32_t>(3, kState | kShift | kAlt));
}

} // namespace
} // namespace varno::test
