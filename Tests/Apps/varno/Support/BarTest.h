/// The window of `varno edit` with the bar, used with mouse and keys.
#ifndef VARNO_TESTS_APPS_VARNO_SUPPORT_BARTEST_H
#define VARNO_TESTS_APPS_VARNO_SUPPORT_BARTEST_H

#include "Surround/FaceLayout.h"
#include "Tests/Apps/varno/Support/EffectWindowTest.h"
#include "Tests/Support/Popups.h"

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
        close();
        return settingsIn(program.wait());
    }

    static constexpr Area kUpperFace = {0, BarLayout::kHeight, kWidth, 150};
};

} // namespace varno::test

#endif
