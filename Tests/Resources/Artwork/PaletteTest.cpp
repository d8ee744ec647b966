#include "Artwork/Palette.h"

#include "Tests/Resources/Artwork/Support/Image.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

TEST(Palette, ReadsAColorsCode) {
    const Color color = rgb(0x0080FF);
    EXPECT_DOUBLE_EQ(0.0, color.red);
    EXPECT_DOUBLE_EQ(128 / 255.0, color.green);
    EXPECT_DOUBLE_EQ(1.0, color.blue);
}

TEST(Palette, MeasuresContrastAsWcagDoes) {
    EXPECT_DOUBLE_EQ(21.0, test::contrast(palette::kBlack, palette::kWhite));
    EXPECT_DOUBLE_EQ(1.0, test::contrast(palette::kLit, palette::kLit));
    EXPECT_NEAR(4.54, test::contrast(rgb(0x767676), palette::kWhite), 0.005)
        << "the known limit of grey on white";
    EXPECT_NEAR(4.48, test::contrast(palette::kWhite, rgb(0x777777)), 0.005);
    EXPECT_NEAR(5.25, test::contrast(rgb(0xFF0000), palette::kBlack), 0.005);
}

TEST(Palette, MixesInProportion) {
    const Color mixed = between(rgb(0x000000), rgb(0xFF00FF), 0.25);
    EXPECT_DOUBLE_EQ(0.25, mixed.red);
    EXPECT_DOUBLE_EQ(0.0, mixed.green);
    EXPECT_DOUBLE_EQ(0.25, mixed.blue);
}

} // namespace
} // namespace varno
