#include "Window/Scale.h"

#include "Tests/Window/SettingsBytes.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

TEST(DesktopScale, IsPlainWithoutAnyWord) {
    EXPECT_EQ(desktopScale({}, ""), 1.0);
    EXPECT_EQ(desktopScale({}, "*background:\tgrey\nXft.hinting:\t1\n"), 1.0);
}

TEST(DesktopScale, FollowsTheDotsPerInch) {
    EXPECT_EQ(desktopScale({}, "Xft.dpi:\t192\n"), 2.0);
    EXPECT_EQ(
        desktopScale({}, "*customization:\t-color\nXft.antialias:\t1\nXft.dpi:\t144\nXft.rgba:\tnone\n"),
        1.5);
    EXPECT_EQ(desktopScale({}, "Xft.dpi: 120"), 1.25);
    EXPECT_EQ(desktopScale({}, "  Xft.dpi:96.0 \r\n"), 1.0);
    EXPECT_EQ(desktopScale({}, "Xft.dpi:\t96\nXft.dpi:\t288\n"), 3.0); // the last counts
}

TEST(DesktopScale, GdkScaleGoesBeforeTheDesktop) {
    EXPECT_EQ(desktopScale("3", "Xft.dpi:\t192\n"), 3.0);
    EXPECT_EQ(desktopScale("1", "Xft.dpi:\t192\n"), 1.0);
    EXPECT_EQ(desktopScale("1.25", ""), 1.25);
}

TEST(DesktopScale, WhatMakesNoSenseIsNotSet) {
    for (const char* text : {"", "x", "0", "-2", "nan", "inf", "0.4", "8.1", "2x"}) {
        EXPECT_EQ(desktopScale(text, "Xft.dpi:\t192\n"), 2.0) << text;
    }
    for (const char* text : {"Xft.dpi:", "Xft.dpi:\tmany", "Xft.dpi:\t0", "Xft.dpi:\t-96", "Xft.dpi:\t1e9",
                             "Xft.dpi:\tnan", "Xft.dpi 192", "myXft.dpi:\t192", "\n\n\n"}) {
        EXPECT_EQ(desktopScale({}, text), 1.0) << text;
    }
}

TEST(DesktopScale, FollowsTheDesktopsSettings) {
    constexpr std::int32_t kTwice = 2 * 96 * 1024;
    for (const bool isBigEndian : {false, true}) {
        SettingsBytes settings(isBigEndian);
        settings.text("Gtk/FontName", "Sans 10")
            .colour("Net/Tint")
            .integer("Xft/Hinting", 1)
            .integer("Xft/DPI", kTwice)
            .text("Net/ThemeName", "x");
        EXPECT_EQ(desktopScale({}, "", settings.bytes()), 2.0);
        EXPECT_EQ(desktopScale({}, "Xft.dpi:\t144\n", settings.bytes()), 2.0);
        EXPECT_EQ(desktopScale("3", "Xft.dpi:\t144\n", settings.bytes()), 3.0);
    }
    EXPECT_EQ(desktopScale({}, "", SettingsBytes().integer("Xft/DPI", 120 * 1024).bytes()), 1.25);
}

TEST(DesktopScale, SettingsThatSayNothingLeaveItToTheResources) {
    const std::string resources = "Xft.dpi:\t144\n";
    for (const std::int32_t value : {-1, 0, 96, 96 * 1024 * 9}) {
        EXPECT_EQ(desktopScale({}, resources, SettingsBytes().integer("Xft/DPI", value).bytes()), 1.5);
    }
    EXPECT_EQ(desktopScale({}, resources, SettingsBytes().text("Xft/DPI", "192").bytes()), 1.5);
    EXPECT_EQ(desktopScale({}, resources, SettingsBytes().integer("Xft/DP", 192 * 1024).bytes()), 1.5);
    EXPECT_EQ(desktopScale({}, resources, SettingsBytes().integer("Xft/DPI2", 192 * 1024).bytes()), 1.5);
    EXPECT_EQ(
        desktopScale({}, resources, SettingsBytes().unknown("New").integer("Xft/DPI", 192 * 1024).bytes()),
        1.5);
}

TEST(DesktopScale, SettingsThatAreCutOffAreReadToTheirEnd) {
    const std::string whole =
        SettingsBytes().text("Gtk/FontName", "Sans 10").integer("Xft/DPI", 192 * 1024).bytes();
    EXPECT_EQ(desktopScale({}, "", whole), 2.0);
    for (std::size_t size = 0; size < whole.size(); ++size) {
        EXPECT_EQ(desktopScale({}, "", whole.substr(0, size)), 1.0) << size;
    }
}

} // namespace
} // namespace varno::test
