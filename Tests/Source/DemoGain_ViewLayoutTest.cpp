#include "DemoGain_ViewLayout.h"

#include <gtest/gtest.h>

#include <string>

namespace varno::test {
namespace {

using namespace DemoGain_ViewLayout;

// Where people click, and what the files of a bundle must hold.
TEST(DemoGain_ViewLayout, PicturesHaveTheirSizes) {
    std::string text;
    for (const Bitmap& bitmap : kBitmaps) {
        text += std::string(bitmap.mFile) + ' ' + std::to_string(bitmap.mWidth) + 'x' +
                std::to_string(bitmap.mHeight) + ' ' + std::to_string(bitmap.mPictures) + '\n';
    }
    EXPECT_EQ(text, "Varno_simple_sfondo.png 690x390 1\n"
                    "Varno_simple_knob.png 62x62 131\n"
                    "Varno_GRmeter_off.png 336x16 1\n"
                    "Varno_GRmeter_on.png 336x16 1\n"
                    "Varno_simple_switch.png 36x24 2\n"
                    "Varno_simple_ratio.png 232x30 8\n"
                    "Varno_PresetPulsCopy.png 120x20 2\n"
                    "Varno_PresetPulsPaste.png 120x20 2\n");
}

TEST(DemoGain_ViewLayout, EveryPictureStandsInTheRowOfItsName) {
    int row = 0;
    for (const Bitmap& bitmap : kBitmaps) {
        EXPECT_EQ(static_cast<int>(bitmap.mArt), row++) << bitmap.mFile;
        EXPECT_EQ(&BitmapOf(bitmap.mArt), &bitmap);
    }
}

} // namespace
} // namespace varno::test
