#include "Artwork/Geometry.h"

#include <gtest/gtest.h>
#include <iterator>

namespace varno {
namespace {

using DemoGain_ViewLayout::Art;
using DemoGain_ViewLayout::BitmapOf;
using DemoGain_ViewLayout::kControls;

TEST(Placement, ControlsLieWithinTheView) {
    EXPECT_TRUE(viewBox().contains(statusBox()));
    for (const auto& control : kControls) {
        EXPECT_TRUE(viewBox().contains(controlBox(control))) << control.mID;
    }
}

TEST(Placement, ControlsKeepApart) {
    for (std::size_t i = 0; i < std::size(kControls); ++i) {
        EXPECT_FALSE(controlBox(kControls[i]).overlaps(statusBox())) << kControls[i].mID;
        for (std::size_t j = i + 1; j < std::size(kControls); ++j) {
            EXPECT_FALSE(controlBox(kControls[i]).overlaps(controlBox(kControls[j])))
                << kControls[i].mID << " and " << kControls[j].mID;
        }
    }
}

TEST(Placement, TheTableOfBitmapsIsInTheOrderOfItsIndex) {
    for (const auto& bitmap : DemoGain_ViewLayout::kBitmaps) {
        EXPECT_EQ(bitmap.mFile, BitmapOf(bitmap.mArt).mFile);
    }
}

TEST(Placement, KeysAndLampsAreWholePixelsWide) {
    EXPECT_EQ(0, BitmapOf(Art::kRatio).mWidth % BitmapOf(Art::kRatio).mPictures);
    EXPECT_EQ(0, BitmapOf(Art::kMeterOff).mWidth % DemoGain_ViewLayout::kMeterSteps);
}

TEST(Placement, BoxesThatShareAnEdgeDoNotOverlap) {
    constexpr Box kBox = {10, 20, 30, 40};
    EXPECT_FALSE(kBox.overlaps({40, 20, 5, 5}));
    EXPECT_FALSE(kBox.overlaps({10, 60, 5, 5}));
    EXPECT_TRUE(kBox.overlaps({39, 59, 5, 5}));
    EXPECT_TRUE(kBox.contains(kBox));
    EXPECT_FALSE(kBox.contains({10, 20, 31, 40}));
}

} // namespace
} // namespace varno
