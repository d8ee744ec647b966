#include "GUI/DemoGain_GUI_VST/DemoGain_Controls.h"

#include "Tests/Source/GUI/DemoGain_GUI_VST/ControlFixture.h"

#include "vstgui/lib/coffscreencontext.h"

#include <cmath>

namespace varno::test {
namespace {

using VSTGUI::kAlt;
using VSTGUI::kControl;
using VSTGUI::kLButton;
using VSTGUI::kShift;

class DemoGain_AnimKnobVSTTest : public ControlFixture {
protected:
    static constexpr int kPictures = 5;

    template<class Knob>
    Knob* make() {
        return add(
            new Knob(place(), &listener, kTag, kPictures, kSide, pictures(kPictures), VSTGUI::CPoint(0, 0)));
    }

    // How far a drag of 20 units to the right turns a knob.
    float drag(VSTGUI::CView& knob, std::int32_t keys) {
        auto& control = dynamic_cast<VSTGUI::CControl&>(knob);
        control.setValue(0.5F);
        press(knob, kLButton, at(20, 20));
        move(knob, kLButton | keys, at(40, 20));
        release(knob, kLButton | keys, at(40, 20));
        return control.getValue() - 0.5F;
    }

    // The colour at the middle of the knob's left edge when it is drawn, and at its centre.
    std::pair<VSTGUI::CColor, VSTGUI::CColor> drawnColours(VSTGUI::CView& knob) {
        const auto context = VSTGUI::COffscreenContext::create(VSTGUI::CPoint(100, 100));
        context->beginDraw();
        knob.draw(context);
        context->endDraw();
        const auto pixels = VSTGUI::owned(VSTGUI::CBitmapPixelAccess::create(context->getBitmap()));
        std::pair<VSTGUI::CColor, VSTGUI::CColor> colours;
        pixels->setPosition(static_cast<std::uint32_t>(kLeft) + 1,
                            static_cast<std::uint32_t>(kTop + kSide / 2));
        pixels->getColor(colours.first);
        pixels->setPosition(static_cast<std::uint32_t>(kLeft + kSide / 2),
                            static_cast<std::uint32_t>(kTop + kSide / 2));
        pixels->getColor(colours.second);
        return colours;
    }
};

TEST_F(DemoGain_AnimKnobVSTTest, AControlDragIsAsFineAsAShiftDragOfTheBase) {
    VSTGUI::CFrame::kDefaultKnobMode = VSTGUI::kLinearMode;
    const float coarse = drag(*make<VSTGUI::CAnimKnob>(), 0);
    const float fine = drag(*make<VSTGUI::CAnimKnob>(), kShift);
    EXPECT_GT(coarse, fine);
    EXPECT_GT(fine, 0.0F);

    auto* const knob = make<DemoGain_AnimKnobVST>();
    EXPECT_EQ(drag(*knob, 0), coarse);
    EXPECT_EQ(drag(*knob, kShift), fine);
    EXPECT_EQ(drag(*knob, kControl), fine);
    EXPECT_EQ(drag(*knob, kControl | kShift), fine);
}

// How far a press and a move of one unit, far from the knob's hand, turn a knob.
class DemoGain_KnobModeTest : public DemoGain_AnimKnobVSTTest {
protected:
    float jump(VSTGUI::CControl& knob, std::int32_t keys) {
        knob.setValue(0.1F);
        press(knob, kLButton | keys, at(38, 20));
        move(knob, kLButton | keys, at(38, 21));
        release(knob, kLButton | keys, at(38, 21));
        EXPECT_FALSE(knob.isEditing());
        return std::abs(knob.getValue() - 0.1F);
    }

    static constexpr float kSmall = 0.02F;
};

// The library's knob would turn to the mouse with the Alt key.
TEST_F(DemoGain_KnobModeTest, WhereKnobsFollowALineNoPressMakesOneJump) {
    VSTGUI::CFrame::kDefaultKnobMode = VSTGUI::kLinearMode;
    auto* const knob = make<DemoGain_AnimKnobVST>();
    for (const std::int32_t keys :
         {0, +kShift, +kControl, kAlt | kShift, kAlt | kControl, kAlt | kShift | kControl}) {
        EXPECT_LT(jump(*knob, keys), kSmall) << keys;
    }
}

TEST_F(DemoGain_KnobModeTest, TheLibrarysOwnModeIsKept) {
    VSTGUI::CFrame::kDefaultKnobMode = VSTGUI::kCircularMode;
    auto* const knob = make<DemoGain_AnimKnobVST>();
    EXPECT_GT(jump(*knob, 0), 0.5F);
    EXPECT_EQ(jump(*knob, 0), jump(*make<VSTGUI::CAnimKnob>(), 0));
    EXPECT_LT(jump(*knob, kAlt | kShift), kSmall) << "a line, with this key";
}

TEST_F(DemoGain_AnimKnobVSTTest, APressThatIsLeftToTheKnobIsOfferedAsADragToo) {
    auto* const knob = make<DemoGain_AnimKnobVST>();
    knob->SetViewContainer(&host);
    knob->SetParamID("Mix");
    press(*knob, kLButton, at(20, 30));
    EXPECT_EQ(host.takeOffers(), (Log{"down Mix 0", "drag Mix 0"}));
    release(*knob, kLButton, at(20, 30));
}

TEST_F(DemoGain_AnimKnobVSTTest, ShowsTheHighlightAsARing) {
    auto* const knob = make<DemoGain_AnimKnobVST>();
    const VSTGUI::CColor nothing = drawnColours(*knob).first;
    EXPECT_EQ(nothing.alpha, 0);
    const VSTGUI::CColor blue(0, 0, 200, 255);
    knob->setCoronaColor(blue);
    EXPECT_EQ(drawnColours(*knob).first, nothing);

    knob->setHighLite(true);
    EXPECT_TRUE(knob->getHighLite());
    EXPECT_EQ(knob->getCoronaColor(), blue);
    EXPECT_EQ(drawnColours(*knob).first, blue);
    EXPECT_EQ(drawnColours(*knob).second, nothing);

    knob->setHighLite(false);
    EXPECT_EQ(drawnColours(*knob).first, nothing);
}

TEST_F(DemoGain_AnimKnobVSTTest, HasNoRingBeforeItIsGivenAColour) {
    auto* const knob = make<DemoGain_AnimKnobVST>();
    knob->setHighLite(true);
    EXPECT_EQ(drawnColours(*knob).first.alpha, 0);
}

} // namespace
} // namespace varno::test
