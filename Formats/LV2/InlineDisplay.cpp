#include "LV2/InlineDisplay.h"

#include "DemoGain_MeterLaw.h"
#include "DemoGain_Palette.h"

#include <algorithm>
#include <cmath>
#include <new>

namespace varno {
namespace {

constexpr std::uint32_t kOpaque = 0xFF000000U;
constexpr std::uint32_t kMostPixels = 4096; // in a row
constexpr std::uint32_t kUsualHeight = 12;
// Of the whole bar: about a pixel of a strip.
constexpr float kVisibleStep = 1.0F / 128.0F;

} // namespace

void InlineDisplay::show(float reduction) noexcept {
    if (mHost == nullptr) {
        return;
    }
    const float length = std::clamp(1.0F - DemoGain_MeterValue(reduction), 0.0F, 1.0F);
    // To its very end too.
    const bool isEnd = length == 0.0F && mQueued != 0.0F;
    if (std::fabs(length - mQueued) < kVisibleStep && !isEnd) {
        return;
    }
    mQueued = length;
    mLength.store(length, std::memory_order_relaxed);
    mHost->queue_draw(mHost->handle);
}

LV2_Inline_Display_Image_Surface* InlineDisplay::render(std::uint32_t width,
                                                        std::uint32_t mostHeight) noexcept {
    const std::uint32_t columns = std::min(width, kMostPixels);
    const std::uint32_t rows = std::min(mostHeight, kUsualHeight);
    if (columns == 0 || rows == 0) {
        return nullptr;
    }
    try {
        mPixels.assign(std::size_t{columns} * rows, kOpaque | DemoGain_Palette::kRecess);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    const float length = mLength.load(std::memory_order_relaxed);
    const auto lit = static_cast<std::uint32_t>(std::lround(length * static_cast<float>(columns)));
    // A row of the ground above and below, where there is room.
    const std::uint32_t edge = rows > 2 ? 1 : 0;
    for (std::uint32_t row = edge; row < rows - edge; ++row) {
        const auto end = mPixels.begin() + static_cast<std::ptrdiff_t>((row + 1) * columns);
        std::fill(end - lit, end, kOpaque | DemoGain_Palette::kLit);
    }
    mSurface = {reinterpret_cast<unsigned char*>(mPixels.data()), static_cast<int>(columns),
                static_cast<int>(rows), static_cast<int>(columns * sizeof(std::uint32_t))};
    return &mSurface;
}

} // namespace varno
