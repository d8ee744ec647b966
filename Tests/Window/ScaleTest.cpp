#include "Window/Scale.h"

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

} // namespace
} // namespace varno::test
