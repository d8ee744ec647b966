#include "GUI/AAX_CVSTGUIButtonState.h"

#include "Tests/Source/GUI/HostMouse.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

std::uint32_t wordOf(const AAX_CVSTGUIButtonState& state) {
    return static_cast<std::uint32_t>(state.GetButtonState()());
}

TEST(AAX_CVSTGUIButtonStateTest, TranslatesEachBitBothWays) {
    struct Pair {
        std::int32_t vstgui;
        std::uint32_t host;
    };
    const Pair pairs[] = {{0x10, 0x01}, {0x80, 0x02}, {0x40, 0x04}, {0x20, 0x08}, {0x08, 0x10}};
    for (const Pair& pair : pairs) {
        const AAX_CVSTGUIButtonState fromVSTGUI(pair.vstgui, nullptr);
        EXPECT_EQ(fromVSTGUI.GetModifiers(), pair.host);
        EXPECT_EQ(wordOf(fromVSTGUI), static_cast<std::uint32_t>(pair.vstgui));
        HostMouse host;
        host.modifiers = pair.host;
        const AAX_CVSTGUIButtonState fromHost(0, &host);
        EXPECT_EQ(fromHost.GetModifiers(), pair.host);
        EXPECT_EQ(wordOf(fromHost), static_cast<std::uint32_t>(pair.vstgui));
    }
}

TEST(AAX_CVSTGUIButtonStateTest, JoinsWhatBothSidesReport) {
    const AAX_CVSTGUIButtonState alone(VSTGUI::kShift | VSTGUI::kControl, nullptr);
    EXPECT_EQ(alone.GetModifiers(), 0x09U);
    EXPECT_EQ(wordOf(alone), 0x30U);

    HostMouse host;
    host.modifiers = 0x02;
    const AAX_CVSTGUIButtonState joined(VSTGUI::kShift | VSTGUI::kControl, &host);
    EXPECT_EQ(joined.GetModifiers(), 0x0BU);
    EXPECT_EQ(wordOf(joined), 0xB0U);
}

TEST(AAX_CVSTGUIButtonStateTest, KeepsWhatHasNoCounterpart) {
    HostMouse host;
    host.modifiers = 0x100;
    const AAX_CVSTGUIButtonState state(VSTGUI::kLButton | VSTGUI::kDoubleClick, &host);
    EXPECT_EQ(state.GetModifiers(), 0x100U);
    EXPECT_EQ(wordOf(state), static_cast<std::uint32_t>(VSTGUI::kLButton | VSTGUI::kDoubleClick));
}

} // namespace
} // namespace varno::test
