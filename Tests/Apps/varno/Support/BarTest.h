/// The window of `varno edit` with the bar, used with mouse and keys.
#ifndef VARNO_TESTS_APPS_VARNO_SUPPORT_BARTEST_H
#define VARNO_TESTS_APPS_VARNO_SUPPORT_BARTEST_H

#include "Surround/FaceLayout.h"
#include "Tests/Apps/varno/Support/EffectWindowTest.h"
#include "Tests/Support/Popups.h"

#include <fstream>

namespace varno::test {

/// Places are in the program's window, wherever it lies on the screen.
class BarTest : public EffectWindowTest {
protected:
    static Place middleOf(BarLayout::Button button) {
        const Box box = BarLayout::row(button).place;
        return {box.x + box.width / 2, box.y + box.height / 2};
    }
    static Place middleOf(const std::string& id) {
        const Box box = FaceLayout::boxOf(*FaceLayout::controlOf(id));
        return {box.x + box.width / 2, BarLayout::kHeight + box.y + box.height / 2};
    }
    /// Lets the program answer what has happened: its clock has 30 ticks a second.
    static void pause() { std::this_thread::sleep_for(std::chrono::milliseconds(120)); }

    /// Whether the keys reach the program: its unseen window has the focus. On the window around it, they
    /// would go to the widget library's window under the pointer.
    bool receivesKeys() const {
        const xcb_window_t focus = mPerson.focus();
        if (!mPerson.isWithin(focus, window())) {
            return false;
        }
        const XReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            mPerson.connection(), xcb_get_window_attributes(mPerson.connection(), focus), nullptr));
        return attributes && attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY;
    }

    /// Waits until the program has handled all that the server has sent to it: it sleeps, time and again.
    void awaitIdle(const Subprocess& program) const {
        constexpr int kTimes = 5;
        constexpr std::chrono::milliseconds kBetween(10);
        int times = 0;
        EXPECT_TRUE(eventually([&] {
            mPerson.synchronise();
            times = isAsleep(program) ? times + 1 : 0;
            std::this_thread::sleep_for(kBetween);
            return times == kTimes;
        }));
    }

    /// Waits until what has happened is seen: the face's controls do not change any more.
    void settle() const {
        constexpr Area kStill = {0, BarLayout::kHeight, kWidth, 200};
        Picture last = picture(kStill);
        eventually([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(250));
            const Picture now = picture(kStill);
            const bool isStill = now == last;
            last = now;
            return isStill;
        });
    }

    void point(Place place) { mPointer.move(corner() + place); }
    void click(Place place, Button button = Button::kLeft) {
        point(place);
        mPointer.press(button);
        pause();
        mPointer.release(button);
        pause();
    }
    void doubleClick(Place place) {
        point(place);
        for (int i = 0; i < 2; ++i) {
            mPointer.press();
            mPointer.release();
            pause();
        }
        pause();
    }
    void wheel(Place place, Button direction, int steps = 1) {
        point(place);
        for (int i = 0; i < steps; ++i) {
            mPointer.press(direction);
            mPointer.release(direction);
        }
        pause();
        // The library ends the gesture of a wheel after half a second.
        std::this_thread::sleep_for(std::chrono::milliseconds(600));
    }
    void key(xcb_keysym_t symbol, const std::vector<xcb_keysym_t>& held = {}) const {
        mKeyboard.tap(symbol, held);
        pause();
    }
    void type(const std::string& letters) const {
        for (const char letter : letters) {
            key(static_cast<xcb_keysym_t>(letter));
        }
    }
    /// The open menu, on the screen; empty for none.
    Area menu() const { return shownPopup(mPerson, kMenuType); }
    bool isMenuOpen() const { return menu().width > 0; }
    bool opensMenu() const {
        return eventually([&] { return isMenuOpen(); });
    }
    bool closesMenu() const {
        return eventually([&] { return !isMenuOpen(); });
    }
    bool isTipShown() const { return shownPopup(mPerson, kTipType).width > 0; }

    /// The options that an ended program has printed for settings that are not saved.
    static std::string settingsIn(const Outcome& outcome) {
        constexpr std::string_view kBefore = "they come back with: varno edit ";
        const auto at = outcome.err.find(kBefore);
        return at == std::string::npos ? outcome.err : outcome.err.substr(at + kBefore.size());
    }
    /// Closes the window; what settingsIn() returns then.
    std::string settingsOf(Subprocess& program) const {
        settle();
        awaitIdle(program);
        close();
        return settingsIn(program.wait());
    }

    /// Whether its window's thread waits.
    static bool isAsleep(const Subprocess& program) {
        std::ifstream file("/proc/" + std::to_string(program.pid()) + "/stat");
        std::string text;
        std::getline(file, text);
        const auto nameEnd = text.rfind(')'); // the name may hold anything
        return nameEnd != std::string::npos && text.compare(nameEnd, 3, ") S") == 0;
    }

    /// What the artwork leaves free, where the face shows that it is bypassed.
    static constexpr Area kFreeFace = {
        DemoGain_ViewLayout::kFreeArea.mLeft, BarLayout::kHeight + DemoGain_ViewLayout::kFreeArea.mTop,
        DemoGain_ViewLayout::kFreeArea.mRight - DemoGain_ViewLayout::kFreeArea.mLeft,
        DemoGain_ViewLayout::kFreeArea.mBottom - DemoGain_ViewLayout::kFreeArea.mTop};
};

} // namespace varno::test

#endif
