#include "Toolkit/VSTGUI_Library.h"

#include "vstgui/lib/cbitmap.h"
#include "vstgui/lib/controls/ccontrol.h"
#include "vstgui/lib/cresourcedescription.h"
#include "vstgui/lib/events.h"
#include "vstgui/lib/platform/platformfactory.h"

#include <cstdlib>
#include <gtest/gtest.h>

namespace {

bool isFound(const char* file) {
    return VSTGUI::makeOwned<VSTGUI::CBitmap>(VSTGUI::CResourceDescription(file))->isLoaded();
}

TEST(VSTGUI_LibraryTest, FindsBitmapsInTheFolderOfTheLastCall) {
    const char* const file = "Varno_simple_knob.png";
    UseVSTGUI({});
    EXPECT_FALSE(isFound(file));
    UseVSTGUI(VARNO_RESOURCES);
    EXPECT_TRUE(isFound(file));
    EXPECT_FALSE(isFound("no such file.png"));
    UseVSTGUI("/nowhere");
    EXPECT_FALSE(isFound(file));
}

// In a process of its own, in which nothing has used the library before.
TEST(VSTGUI_LibraryDeathTest, IsReadyWithoutAFolderForBitmaps) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto useAndEnd = [] {
        UseVSTGUI();
        VSTGUI::getPlatformFactory(); // ends the process where there is none
        const bool isOff = VSTGUI::CControl::CheckDefaultValueEventFunc != nullptr;
        std::exit(isOff && VSTGUI::CBitmap(VSTGUI::CCoord{2}, VSTGUI::CCoord{2}).isLoaded() ? 0 : 1);
    };
    EXPECT_EXIT(useAndEnd(), testing::ExitedWithCode(0), "");
}

TEST(VSTGUI_LibraryTest, SwitchesTheLibrarysOwnDefaultClickOff) {
    UseVSTGUI({});
    VSTGUI::MouseDownEvent event(VSTGUI::CPoint(), VSTGUI::MouseButton::Left);
    event.modifiers.add(VSTGUI::ModifierKey::Control);
    EXPECT_FALSE(VSTGUI::CControl::CheckDefaultValueEventFunc(nullptr, event));
}

} // namespace
