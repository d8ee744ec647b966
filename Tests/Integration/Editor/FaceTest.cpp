// What the screen shows at each size, beside the same drawn at once by the artwork's generator.
#include "Artwork/EditorPicture.h"
#include "Tests/Integration/Editor/EditorTest.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <ostream>
#include <vector>

namespace DemoGain_ViewLayout {

// The same on every run.
inline void PrintTo(const ArtScale& scale, std::ostream* stream) {
    *stream << scale.mFactor;
}

} // namespace DemoGain_ViewLayout

namespace varno::test {
namespace {

class EditorFace : public EditorTest, public testing::WithParamInterface<DemoGain_ViewLayout::ArtScale> {
protected:
    static double scale() { return GetParam().mFactor; }

    // The window has the size of the editor at scale 1: of a larger one it shows the upper left part. What
    // ends within a pixel ends before it.
    static Area seen() {
        const auto pixels = [](int length) { return std::min(length, static_cast<int>(length * scale())); };
        return {0, 0, pixels(viewArea().width), pixels(viewArea().height)};
    }

    // The generator's picture of an instance's parameters, without reduction.
    static Picture expected(Instance& instance) {
        ShownEditor shown;
        for (const SDemoGain_Parameter& parameter : kDemoGain_Parameters) {
            shown.values[parameter.mIdentifier] = instance.normalized(parameter.mIdentifier);
        }
        const Canvas canvas = drawEditor(Typeface(), scale(), shown);
        cairo_surface_flush(canvas.surface());
        const int width = cairo_image_surface_get_width(canvas.surface());
        const int height = cairo_image_surface_get_height(canvas.surface());
        std::vector<std::uint32_t> pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        std::memcpy(pixels.data(), cairo_image_surface_get_data(canvas.surface()),
                    pixels.size() * sizeof(std::uint32_t));
        for (std::uint32_t& pixel : pixels) {
            pixel &= 0x00FFFFFFU;
        }
        return Picture(width, height, std::move(pixels)).part(seen());
    }

    // How many pixels differ, but for those of the line of text.
    static int differing(const Picture& one, const Picture& other) {
        constexpr int kRoundingOfChannels = 2;
        const Area text = statusArea();
        int count = 0;
        for (int y = 0; y < one.height(); ++y) {
            for (int x = 0; x < one.width(); ++x) {
                const double viewX = x / scale();
                const double viewY = y / scale();
                const bool isText = viewX >= text.x - 1 && viewX <= text.x + text.width &&
                                    viewY >= text.y - 1 && viewY <= text.y + text.height;
                count += !isText && channelDifference(one.at({x, y}), other.at({x, y})) > kRoundingOfChannels
                             ? 1
                             : 0;
            }
        }
        return count;
    }

    testing::AssertionResult showsParameters(EditorWindow& window, Instance& instance) {
        const Picture wanted = expected(instance);
        int left = 0;
        const bool isShown = loop.await([&] {
            left = differing(window.picture(seen()), wanted);
            return left == 0;
        });
        return isShown ? testing::AssertionSuccess()
                       : testing::AssertionFailure() << left << " pixels differ";
    }
};

TEST_P(EditorFace, IsDrawnPixelByPixelAndStaysSoWhereAControlMoves) {
    loop.setScale(scale());
    const auto instance = makeInstance(module());
    const auto window = open(*instance);
    EXPECT_EQ(window->editor().size().horz, std::floor(viewArea().width * scale()));
    EXPECT_EQ(window->editor().size().vert, std::floor(viewArea().height * scale()));
    EXPECT_TRUE(showsParameters(*window, *instance));
    const Place middle = areaOf("HP").middle();
    pointer.move({static_cast<int>(middle.x * scale()), static_cast<int>(middle.y * scale())});
    loop.turn();
    press();
    release();
    EXPECT_EQ(instance->normalized("HP"), 1.0);
    EXPECT_TRUE(showsParameters(*window, *instance));
}

INSTANTIATE_TEST_SUITE_P(Scales, EditorFace, testing::ValuesIn(DemoGain_ViewLayout::kArtScales),
                         [](const auto& tested) {
                             return "At" + std::to_string(std::lround(100 * tested.param.mFactor));
                         });

} // namespace
} // namespace varno::test
