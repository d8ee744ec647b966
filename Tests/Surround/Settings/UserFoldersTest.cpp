#include "Surround/Settings/UserFolders.h"

#include "Tests/Support/EnvironmentVariable.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

TEST(UserFolders, areThoseOfTheVariables) {
    const EnvironmentVariable home("HOME", "/people/somebody");
    const EnvironmentVariable data("XDG_DATA_HOME", "/data");
    const EnvironmentVariable config("XDG_CONFIG_HOME", "/config");
    EXPECT_EQ(userPresetFolder(), "/data/varno-s/presets");
    EXPECT_EQ(userPreferencesFile(), "/config/varno-s/window.txt");
}

TEST(UserFolders, areBelowHomeWithoutUsableVariables) {
    const EnvironmentVariable home("HOME", "/people/somebody");
    for (const char* value : {"", "relative/folder"}) {
        const EnvironmentVariable data("XDG_DATA_HOME", value);
        const EnvironmentVariable config("XDG_CONFIG_HOME", value);
        EXPECT_EQ(userPresetFolder(), "/people/somebody/.local/share/varno-s/presets");
        EXPECT_EQ(userPreferencesFile(), "/people/somebody/.config/varno-s/window.txt");
    }
}

TEST(UserFolders, areEmptyWithoutHome) {
    const EnvironmentVariable home("HOME", "");
    const EnvironmentVariable data("XDG_DATA_HOME", "");
    const EnvironmentVariable config("XDG_CONFIG_HOME", "");
    EXPECT_TRUE(userPresetFolder().empty());
    EXPECT_TRUE(userPreferencesFile().empty());
}

} // namespace
} // namespace varno::test
