/// Tests of the window on a screen, which use the mouse as a person does.
#ifndef VARNO_TESTS_FORMATS_LV2_UI_WINDOWTEST_H
#define VARNO_TESTS_FORMATS_LV2_UI_WINDOWTEST_H

#include "Surround/BarLayout.h"
#include "Tests/Formats/LV2/UI/WindowHost.h"
#include "Tests/Integration/Editor/BundleArt.h"
#include "Tests/Support/FakeInput.h"
#include "Tests/Support/OwnUserFolders.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace varno::test {

/// Ports of the stereo plug-in.
inline constexpr std::uint32_t kGain = 4;
inline constexpr std::uint32_t kHighPass = 5;
inline constexpr std::uint32_t kAuto = 9;
inline constexpr std::uint32_t kVolume = 11;
inline constexpr std::uint32_t kMix = 14;
inline constexpr std::uint32_t kEnabled = 17;
inline constexpr std::uint32_t kReductionLeft = 18;
inline constexpr std::uint32_t kQuality = 23;

/// On an X server that all tests of the program share.
class WindowTest : public ::testing::Test {
protected:
    WindowTest();

    static const std::string& display();

    /// A host whose window shows the editor.
    std::unique_ptr<WindowHost> show(const HostManners& manners = {});
    /// Idle calls until the condition holds; false where it still does not at a generous deadline.
    template<typename Condition>
    static bool await(WindowHost& host, Condition condition);

    // The mouse. Each of these returns when the window has received its events.

    void point(WindowHost& host, const std::string& id, Place inControl);
    void press(WindowHost& host);
    void release(WindowHost& host);
    void click(WindowHost& host, const std::string& id);
    void click(WindowHost& host, BarLayout::Button button);
    /// Turns a knob by a change of its value.
    void turnKnob(WindowHost& host, const std::string& id, double change);

    /// Waits until a control shows that picture of its bitmap, or of another of the same size.
    ::testing::AssertionResult shows(WindowHost& host, const std::string& id, int picture);
    ::testing::AssertionResult shows(WindowHost& host, const std::string& id, const Picture& expected);

    const OwnUserFolders folders;
    const XClient client{display()};
    Pointer pointer{client};
    const BundleArt art;

private:
    void pointAt(WindowHost& host, Place inWindow);
    static void settle(WindowHost& host);

    Place mOnScreen;
};

} // namespace varno::test

#include "Tests/Support/Eventually.h"

template<typename Condition>
bool varno::test::WindowTest::await(WindowHost& host, Condition condition) {
    return eventually([&] {
        host.turn();
        return condition();
    });
}

#endif
