#include "Artwork/EditorPicture.h"

#include "Artwork/Artwork.h"
#include "Tests/Resources/Artwork/Support/Bitmaps.h"

#include <fstream>
#include <gmock/gmock.h>
#include <unistd.h>

namespace varno {
namespace {

using test::Image;

TEST(Preview, ShowsEveryControlOnThePanel) {
    const Image preview = Image::of(drawPreview(test::typeface(), 1));
    const Image& panel =
        test::bundlePictures(DemoGain_ViewLayout::Art::kBackground, DemoGain_ViewLayout::kArtScales[0])[0];
    ASSERT_EQ(panel.width(), preview.width());
    ASSERT_EQ(panel.height(), preview.height());
    for (const auto& control : DemoGain_ViewLayout::kControls) {
        const Box box = controlBox(control);
        int changed = 0;
        for (int y = control.mY; y < static_cast<int>(box.bottom()); ++y) {
            for (int x = control.mX; x < static_cast<int>(box.right()); ++x) {
                changed += preview.luminance(x, y) != panel.luminance(x, y) ? 1 : 0;
            }
        }
        EXPECT_GT(changed, box.width * box.height / 2) << control.mID;
    }
}

TEST(Preview, IsAsLargeAsItsScale) {
    EXPECT_EQ(3 * static_cast<int>(viewBox().width), Image::of(drawPreview(test::typeface(), 3)).width());
}

using testing::HasSubstr;
using testing::ThrowsMessage;

class NumberedPicture : public testing::Test {
protected:
    ~NumberedPicture() override { std::filesystem::remove(mFile); }

    const std::filesystem::path mFile =
        std::filesystem::temp_directory_path() / ("varno-numbered-" + std::to_string(::getpid()) + ".png");
    const Typeface& mTypeface = test::typeface();
};

bool differ(const Image& a, const Image& b, int fromX, int fromY, int size) {
    for (int y = fromY; y < fromY + size; ++y) {
        for (int x = fromX; x < fromX + size; ++x) {
            if (a.luminance(x, y) != b.luminance(x, y)) {
                return true;
            }
        }
    }
    return false;
}

TEST_F(NumberedPicture, HasANumberAtTheCornerOfEachControlAndNothingElse) {
    constexpr int kBadge = 14; // pixels from a corner that a number may cover
    for (const int scale : {1, 2}) {
        drawBitmap(DemoGain_ViewLayout::kBitmaps[0], mTypeface, scale).write(mFile);
        const Image plain = Image::read(mFile);
        const Image numbered = Image::of(drawNumbered(mTypeface, mFile));
        ASSERT_EQ(plain.width(), numbered.width());
        ASSERT_EQ(plain.height(), numbered.height());
        for (const auto& control : DemoGain_ViewLayout::kControls) {
            const Box box = controlBox(control);
            EXPECT_TRUE(differ(plain, numbered, control.mX * scale, control.mY * scale, 8 * scale))
                << control.mID;
            const int rightX = static_cast<int>(box.right() - 1) * scale;
            const int bottomY = static_cast<int>(box.bottom() - 1) * scale;
            if (box.width > kBadge && box.height > kBadge) {
                EXPECT_FALSE(differ(plain, numbered, rightX, bottomY, scale)) << control.mID;
            }
        }
    }
}

TEST_F(NumberedPicture, RefusesWhatIsNoPictureOfTheEditor) {
    const auto number = [&] { drawNumbered(mTypeface, mFile); };
    const std::string name = mFile.filename();
    EXPECT_THAT(number, ThrowsMessage<std::runtime_error>(HasSubstr(name + ": cannot be read")));
    std::ofstream(mFile) << "no picture";
    EXPECT_THAT(number, ThrowsMessage<std::runtime_error>(HasSubstr(name + ": cannot be read")));
    constexpr int kOtherSize = 100;
    Canvas(kOtherSize, kOtherSize, 1).write(mFile);
    EXPECT_THAT(number, ThrowsMessage<std::runtime_error>(HasSubstr("another size")));
}

} // namespace
} // namespace varno
