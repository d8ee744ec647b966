#include "GUI/DemoGain_GUI_VST/DemoGain_Controls.h"

#include "Tests/Source/GUI/DemoGain_GUI_VST/ControlFixture.h"

namespace varno::test {
namespace {

using VSTGUI::kLButton;

class DemoGain_KickButtonVSTTest : public ControlFixture {
protected:
    DemoGain_KickButtonVST* const button =
        add(new DemoGain_KickButtonVST(place(), &listener, kTag, kSide, pictures(2), VSTGUI::CPoint(0, 0)));
};

TEST_F(DemoGain_KickButtonVSTTest, AClickReportsOnceDownAndOnceUp) {
    press(*button, kLButton, at(20, 20));
    EXPECT_EQ(listener.take(), Log{"begin"});
    EXPECT_EQ(button->getValue(), 1.0F);
    release(*button, kLButton, at(20, 20));
    EXPECT_EQ(listener.take(), (Log{"value 1", "value 0", "end"}));
}

TEST_F(DemoGain_KickButtonVSTTest, AnAbandonedClickReportsUpOnly) {
    press(*button, kLButton, at(20, 20));
    move(*button, kLButton, at(-20, 20));
    EXPECT_EQ(button->getValue(), 0.0F);
    release(*button, kLButton, at(-20, 20));
    EXPECT_EQ(listener.take(), (Log{"begin", "value 0", "end"}));
}

TEST_F(DemoGain_KickButtonVSTTest, TheReturnKeyReportsDownAndThenUp) {
    key(*button, VSTGUI::VirtualKey::Return);
    EXPECT_EQ(listener.take(), (Log{"begin", "value 1"}));
    key(*button, VSTGUI::VirtualKey::Return, VSTGUI::EventType::KeyUp);
    EXPECT_EQ(listener.take(), (Log{"value 0", "end"}));
}

TEST_F(DemoGain_KickButtonVSTTest, ComesUpWhereTheHostTakesTheRelease) {
    button->SetViewContainer(&host);
    button->SetParamID("PR1K");
    host.takesUp = true;
    press(*button, kLButton, at(20, 20));
    ASSERT_EQ(button->getValue(), 1.0F);
    release(*button, kLButton, at(20, 20));
    EXPECT_EQ(button->getValue(), 0.0F);
    EXPECT_EQ(listener.take(), (Log{"begin", "end"}));
}

TEST_F(DemoGain_KickButtonVSTTest, AnOptionClickAtRestPressesNothing) {
    button->setDefaultValue(button->getMin());
    press(*button, kLButton | VSTGUI::kAlt, at(20, 20));
    EXPECT_EQ(listener.take(), (Log{"begin", "end"}));
}

} // namespace
} // namespace varno::test
