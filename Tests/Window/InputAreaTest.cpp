#include "Window/InputArea.h"

#include "Tests/Window/WindowFixture.h"

#include <X11/keysym.h>

#include <optional>

namespace varno::test {
namespace {

using testing::AnyOf;
using testing::Contains;
using testing::Not;
using testing::Pair;

class InputAreaTest : public WindowFixture {
protected:
    void click(Place place, Button button = Button::kLeft) {
        mPointer.move(onScreen(place));
        mPointer.press(button);
        mPointer.release(button);
        settle();
    }

    std::vector<ButtonEvent> mReported;
    InputArea mArea{mConnection, mShell, [this](const ButtonEvent& event) { mReported.push_back(event); }};
};

TEST_F(InputAreaTest, ReceivesButtonsInPlaceOfWhatIsBelow) {
    mArea.setArea({40, 50, 60, 20});
    mArea.show();
    settle();
    mPointer.hold({Modifier::kControl, Modifier::kAlt});
    mPointer.move(onScreen({45, 57}));
    mPointer.press(Button::kRight);
    mPointer.move(onScreen({200, 150}));
    mPointer.release(Button::kRight);
    mPointer.releaseAll();
    settle();

    ASSERT_EQ(mReported.size(), 2U);
    EXPECT_TRUE(mReported[0].isDown);
    EXPECT_EQ(mReported[0].button, 3);
    EXPECT_EQ(mReported[0].modifiers, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1);
    EXPECT_EQ(mReported[0].place, (WindowPlace{5, 7}));
    EXPECT_EQ(mReported[0].rootPlace, (WindowPlace{145, 157}));
    EXPECT_NE(mReported[0].timeMs, 0U);
    EXPECT_FALSE(mReported[1].isDown);
    EXPECT_EQ(mReported[1].place, (WindowPlace{160, 100}));
    EXPECT_THAT(viewEvents(), Not(Contains(Pair(AnyOf(XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE), testing::_))));
}

TEST_F(InputAreaTest, LeavesEverythingElseToTheView) {
    const Picture before = picture();
    mArea.setArea({40, 50, 60, 20});
    mArea.show();
    settle();
    EXPECT_EQ(picture(), before); // it is not seen
    click({39, 50});
    click({100, 50});
    click({40, 70});
    EXPECT_TRUE(mReported.empty());
    EXPECT_EQ(viewEvents().size(), 6U);
    click({99, 69});
    EXPECT_EQ(mReported.size(), 2U);
    mArea.setArea({0, 0, 10, 10});
    settle();
    click({99, 69});
    EXPECT_EQ(mReported.size(), 2U);
    click({9, 9});
    EXPECT_EQ(mReported.size(), 4U);
    mArea.hide();
    settle();
    click({9, 9});
    EXPECT_EQ(mReported.size(), 4U);
}

TEST_F(InputAreaTest, ComesAboveAViewThatIsNew) {
    mArea.setArea({40, 50, 60, 20});
    mArea.show();
    settle();
    makeChild();
    click({45, 55});
    EXPECT_TRUE(mReported.empty());
    mArea.raise();
    settle();
    click({45, 55});
    EXPECT_EQ(mReported.size(), 2U);
}

TEST_F(InputAreaTest, LocksAreNoModifiers) {
    mArea.setArea({40, 50, 60, 20});
    mArea.show();
    settle();
    mKeyboard.tap(XK_Caps_Lock);
    mKeyboard.tap(XK_Num_Lock);
    click({45, 55});
    mKeyboard.tap(XK_Caps_Lock);
    mKeyboard.tap(XK_Num_Lock);
    ASSERT_EQ(mReported.size(), 2U);
    EXPECT_EQ(mReported[0].modifiers, 0);
    EXPECT_EQ(mReported[1].modifiers, 0);
}

TEST_F(InputAreaTest, MayEndInItsOwnReport) {
    std::optional<InputArea> area;
    int reports = 0;
    area.emplace(mConnection, mShell, [&](const ButtonEvent&) {
        ++reports;
        area.reset();
    });
    area->setArea({40, 50, 60, 20});
    area->show();
    settle();
    click({45, 55});
    EXPECT_EQ(reports, 1);
}

} // namespace
} // namespace varno::test
