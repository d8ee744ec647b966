/// The mouse, and the modifier keys that go with it, as the X server gets them from a person.
#ifndef VARNO_TESTS_SUPPORT_POINTER_H
#define VARNO_TESTS_SUPPORT_POINTER_H

#include "Tests/Support/XClient.h"

#include <set>
#include <vector>

namespace varno::test {

enum class Modifier { Shift, Control, Alt };

enum class Button { Left = 1, Middle = 2, Right = 3, WheelUp = 4, WheelDown = 5 };

/// Every operation returns when the server has told its clients. What is still down at the end is let go.
class Pointer {
public:
    explicit Pointer(const XClient& client);
    Pointer(const Pointer&) = delete;
    Pointer& operator=(const Pointer&) = delete;
    ~Pointer() { letGo(); }

    /// To a place on the screen.
    void move(Place place);
    void press(Button button = Button::Left);
    void release(Button button = Button::Left);
    /// Holds exactly these keys down from now on.
    void hold(const std::set<Modifier>& modifiers);
    /// Buttons and keys up.
    void letGo();

private:
    void fake(std::uint8_t type, std::uint8_t detail, Place place = {});

    const XClient& mClient;
    std::set<Modifier> mHeld;
    std::set<Button> mPressed;
};

} // namespace varno::test

#endif
