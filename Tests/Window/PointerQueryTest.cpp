#include "Window/PointerQuery.h"

#include "Tests/Window/WindowFixture.h"

#include <X11/keysym.h>

namespace varno::test {
namespace {

class PointerQueryTest : public WindowFixture {
protected:
    // The answer on one of the next ticks.
    std::optional<PointerState> answer() {
        std::optional<PointerState> state;
        EXPECT_TRUE(eventually([&] {
            state = mQuery.answer();
            return state.has_value();
        }));
        return state;
    }

    PointerQuery mQuery{mConnection, mShell};
};

TEST_F(PointerQueryTest, ReportsThePlaceInTheWindow) {
    mPointer.move(onScreen({7, 9}));
    EXPECT_EQ(mQuery.now(), (PointerState{{7, 9}, {107, 109}, true, 0, 0}));
    mPointer.move({0, 0});
    EXPECT_EQ(mQuery.now(), (PointerState{{-100, -100}, {0, 0}, false, 0, 0}));
    for (const auto& [place, isInside] :
         {std::pair{Place{0, 0}, true}, {{299, 199}, true}, {{300, 199}, false}, {{0, -1}, false}}) {
        mPointer.move(onScreen(place));
        EXPECT_EQ(mQuery.now()->isInside, isInside) << place.x << ' ' << place.y;
    }
}

TEST_F(PointerQueryTest, ReportsWhatIsHeld) {
    mKeyboard.tap(XK_Num_Lock);
    mPointer.hold({Modifier::kShift});
    mPointer.press(Button::kRight);
    const auto state = mQuery.now();
    mPointer.releaseAll();
    mKeyboard.tap(XK_Num_Lock);
    ASSERT_TRUE(state);
    EXPECT_EQ(state->modifiers, XCB_MOD_MASK_SHIFT);
    EXPECT_EQ(state->buttons, 1U << 2);
}

TEST_F(PointerQueryTest, IsNotInsideWhereAnotherWindowIsAbove) {
    mPointer.move(onScreen({50, 50}));
    {
        const XWindow other(mPerson, {140, 140, 30, 30});
        EXPECT_FALSE(mQuery.now()->isInside);
        EXPECT_EQ(mQuery.now()->place, (WindowPlace{50, 50}));
        mPointer.move(onScreen({20, 20}));
        EXPECT_TRUE(mQuery.now()->isInside);
        mPointer.move(onScreen({50, 50}));
    }
    EXPECT_TRUE(mQuery.now()->isInside);
}

TEST_F(PointerQueryTest, FollowsAWindowThatIsPutIntoAnother) {
    mPointer.move(onScreen({50, 50}));
    EXPECT_TRUE(mQuery.now()->isInside);
    const XWindow frame(mPerson, {110, 110, 400, 400});
    xcb_reparent_window(mPerson.connection(), mShell, frame.id(), 20, 20);
    mPerson.synchronise();
    EXPECT_EQ(mQuery.now(), (PointerState{{20, 20}, {150, 150}, true, 0, 0}));
    mPointer.move({120, 120}); // on the frame
    EXPECT_FALSE(mQuery.now()->isInside);
}

TEST_F(PointerQueryTest, WithoutTheWindowThereIsNone) {
    mPerson.destroyWindow(mShell);
    EXPECT_EQ(mQuery.now(), std::nullopt);
    mQuery.ask();
    mConnection.sync();
    EXPECT_EQ(mQuery.answer(), std::nullopt);
    mQuery.ask();
    EXPECT_EQ(mQuery.answer(), std::nullopt);
}

TEST_F(PointerQueryTest, AnswersLaterWithoutWaiting) {
    EXPECT_EQ(mQuery.answer(), std::nullopt); // nothing was asked
    mPointer.move(onScreen({7, 9}));
    mQuery.ask();
    EXPECT_EQ(answer(), (PointerState{{7, 9}, {107, 109}, true, 0, 0}));
    EXPECT_EQ(mQuery.answer(), std::nullopt); // taken
    mPointer.move(onScreen({8, 9}));
    mQuery.ask();
    mConnection.sync();
    mPointer.move(onScreen({20, 20}));
    mQuery.ask(); // one is under way
    EXPECT_EQ(answer()->place, (WindowPlace{8, 9}));
}

// A program ends its questions at any time.
TEST_F(PointerQueryTest, MayEndBeforeTheAnswer) {
    {
        PointerQuery other(mConnection, mShell);
        other.ask();
    }
    settle();
    mQuery.ask();
    mConnection.sync();
    EXPECT_TRUE(answer());
}

} // namespace
} // namespace varno::test
