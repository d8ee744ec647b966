#include "Window/WindowProperties.h"

#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowIconTest : public testing::Test {
protected:
    // A picture of one colour. @param alpha 1 for one without an alpha channel
    void makePicture(const std::string& folder, int width, int height, double red, double alpha) const {
        const CairoSurface picture(cairo_image_surface_create(
            alpha < 1.0 ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_RGB24, width, height));
        cairo_t* context = cairo_create(picture.get());
        cairo_set_source_rgba(context, red, 0.0, 1.0, alpha);
        cairo_set_operator(context, CAIRO_OPERATOR_SOURCE);
        cairo_paint(context);
        cairo_destroy(context);
        std::filesystem::create_directories(mFolder.path() / "icons" / folder);
        const auto file = mFolder.path() / "icons" / folder / "varno-s.png";
        ASSERT_EQ(cairo_surface_write_to_png(picture.get(), file.c_str()), CAIRO_STATUS_SUCCESS);
    }

    TemporaryFolder mFolder;
};

TEST_F(WindowIconTest, HoldsPixelsWithStraightAlpha) {
    makePicture("2x1", 2, 1, 1.0, 128.0 / 255.0);
    EXPECT_THAT(windowIcon(mFolder.path()), ElementsAre(2, 1, 0x80FF00FF, 0x80FF00FF));
}

TEST_F(WindowIconTest, APictureWithoutAlphaIsOpaque) {
    makePicture("1x2", 1, 2, 0.0, 1.0);
    EXPECT_THAT(windowIcon(mFolder.path()), ElementsAre(1, 2, 0xFF0000FF, 0xFF0000FF));
}

TEST_F(WindowIconTest, WhatIsTransparentHasNoColour) {
    makePicture("1x1", 1, 1, 1.0, 0.0);
    EXPECT_THAT(windowIcon(mFolder.path()), ElementsAre(1, 1, 0));
}

TEST_F(WindowIconTest, HoldsEverySize) {
    makePicture("1x1", 1, 1, 0.0, 1.0);
    makePicture("16x16", 16, 16, 0.0, 1.0);
    EXPECT_EQ(windowIcon(mFolder.path()).size(), 3U + 2U + 16U * 16U);
}

TEST_F(WindowIconTest, WithoutPicturesThereIsNone) {
    EXPECT_THAT(windowIcon({}), IsEmpty());
    EXPECT_THAT(windowIcon(mFolder.path()), IsEmpty());
    std::filesystem::create_directories(mFolder.path() / "icons" / "16x16");
    EXPECT_THAT(windowIcon(mFolder.path()), IsEmpty());
    writeFile(mFolder.path() / "icons" / "16x16" / "varno-s.png", "no picture");
    EXPECT_THAT(windowIcon(mFolder.path()), IsEmpty());
}

} // namespace
} // namespace varno::test
