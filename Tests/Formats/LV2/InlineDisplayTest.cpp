// What a host that has inline displays is shown of the gain reduction.
#include "LV2/InlineDisplay.h"
#include "DemoGain_MeterLaw.h"
#include "DemoGain_Palette.h"
#include "LV2/Ports.h"
#include "Tests/Formats/LV2/HostedPlugin.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace varno::test {
namespace {

constexpr std::uint32_t kFrames = 512;

struct DrawRequests {
    int count = 0;
    LV2_Inline_Display feature = {this, [](void* handle) { ++static_cast<DrawRequests*>(handle)->count; }};
};

const LV2_Inline_Display_Interface& displayInterface() {
    return *static_cast<const LV2_Inline_Display_Interface*>(
        lv2_descriptor(0)->extension_data(LV2_INLINEDISPLAY__interface));
}

// A row of a picture, as numbers.
std::vector<std::uint32_t> rowOf(const LV2_Inline_Display_Image_Surface& picture, int row) {
    const auto* const pixels = reinterpret_cast<const std::uint32_t*>(picture.data + row * picture.stride);
    return {pixels, pixels + picture.width};
}

class InlineDisplayOfPlugin : public testing::TestWithParam<std::uint32_t> {
protected:
    InlineDisplayOfPlugin() {
        const LV2_Feature feature = {LV2_INLINEDISPLAY__queue_draw, &mRequests.feature};
        const LV2_Feature* const features[] = {&feature, nullptr};
        mHandle = descriptor().instantiate(&descriptor(), 48000.0, "/nowhere/", features);
        for (std::uint32_t channel = 0; channel < 2 * channels(); ++channel) {
            descriptor().connect_port(mHandle, channel, mSound.data());
        }
        descriptor().activate(mHandle);
    }
    ~InlineDisplayOfPlugin() override { descriptor().cleanup(mHandle); }

    static const LV2_Descriptor& descriptor() { return *lv2_descriptor(GetParam()); }
    static std::uint32_t channels() { return static_cast<std::uint32_t>(kPluginUris[GetParam()].channels); }

    void runOver(float level, int buffers) {
        for (int buffer = 0; buffer < buffers; ++buffer) {
            for (std::uint32_t frame = 0; frame < kFrames; ++frame) {
                mSound[frame] = frame % 64 < 32 ? level : -level;
            }
            descriptor().run(mHandle, kFrames);
        }
    }
    std::ptrdiff_t litColumns(std::uint32_t width = 100) {
        const auto* const picture = displayInterface().render(mHandle, width, 12);
        return std::ranges::count(rowOf(*picture, 5), 0xFF000000U | DemoGain_Palette::kLit);
    }

    DrawRequests mRequests;
    std::vector<float> mSound = std::vector<float>(kFrames);
    LV2_Handle mHandle = nullptr;
};

TEST_P(InlineDisplayOfPlugin, isDrawnWhereTheReductionChanges) {
    runOver(0.0F, 10);
    EXPECT_EQ(mRequests.count, 0) << "there is nothing new to see in silence";
    EXPECT_EQ(litColumns(), 0);
    runOver(0.9F, 100);
    EXPECT_GT(mRequests.count, 3);
    EXPECT_GT(litColumns(), 30);
    // It falls back slowly, and to its very end.
    const int loud = mRequests.count;
    runOver(0.0F, 2000);
    EXPECT_GT(mRequests.count, loud);
    EXPECT_EQ(litColumns(), 0);
    const int silent = mRequests.count;
    runOver(0.0F, 100);
    EXPECT_EQ(mRequests.count, silent);
}

TEST_P(InlineDisplayOfPlugin, isABarFromTheRight) {
    runOver(0.9F, 100);
    const auto* const picture = displayInterface().render(mHandle, 80, 12);
    ASSERT_NE(picture, nullptr);
    EXPECT_EQ(picture->width, 80);
    EXPECT_EQ(picture->height, 12);
    EXPECT_EQ(picture->stride, 80 * 4);
    const auto row = rowOf(*picture, 5);
    EXPECT_EQ(row.front(), 0xFF000000U | DemoGain_Palette::kRecess);
    EXPECT_EQ(row.back(), 0xFF000000U | DemoGain_Palette::kLit);
    EXPECT_TRUE(std::ranges::is_sorted(row));
    // The ground is its edge.
    EXPECT_EQ(rowOf(*picture, 0).back(), 0xFF000000U | DemoGain_Palette::kRecess);
    EXPECT_EQ(rowOf(*picture, 11).back(), 0xFF000000U | DemoGain_Palette::kRecess);
}

TEST_P(InlineDisplayOfPlugin, keepsTheSizeThatItIsGiven) {
    const auto& display = displayInterface();
    EXPECT_EQ(display.render(mHandle, 0, 12), nullptr);
    EXPECT_EQ(display.render(mHandle, 100, 0), nullptr);
    EXPECT_EQ(display.render(mHandle, 1, 1)->height, 1);
    EXPECT_EQ(display.render(mHandle, 30, 500)->height, 12);
    const auto* const large = display.render(mHandle, std::numeric_limits<std::uint32_t>::max(),
                                             std::numeric_limits<std::uint32_t>::max());
    EXPECT_LE(large->width, 4096);
}

INSTANTIATE_TEST_SUITE_P(MonoAndStereo, InlineDisplayOfPlugin, testing::Values(0U, 1U));

TEST(InlineDisplay, isAsLongAsTheEditorsMeter) {
    DrawRequests requests;
    InlineDisplay display(&requests.feature);
    for (const float reduction : {0.1F, 0.3F, 0.7F, 1.0F}) {
        display.show(reduction);
        const auto* const picture = display.render(1000, 12);
        const auto lit = std::ranges::count(rowOf(*picture, 5), 0xFF000000U | DemoGain_Palette::kLit);
        EXPECT_NEAR(static_cast<float>(lit) / 1000.0F, std::min(1.0F - DemoGain_MeterValue(reduction), 1.0F),
                    0.001F);
    }
    EXPECT_EQ(requests.count, 4);
}

TEST(InlineDisplay, asksForNothingThatOneDoesNotSee) {
    DrawRequests requests;
    InlineDisplay display(&requests.feature);
    display.show(0.5F);
    for (int i = 0; i < 100; ++i) {
        display.show(0.5F + 0.00001F * static_cast<float>(i));
    }
    EXPECT_EQ(requests.count, 1);
}

TEST(InlineDisplay, needsNoHostThatHasOne) {
    InlineDisplay display(nullptr);
    display.show(0.5F);
    EXPECT_NE(display.render(10, 10), nullptr);
}

} // namespace
} // namespace varno::test
