#include "Render/SampleLevels.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace varno {

// Many independent maxima let the compiler make vector code: it may not reorder the search for a single
// maximum, and keeps a few in separate variables.
void SampleLevels::add(const float* samples, int count) {
    constexpr int kLanes = 64;
    std::array<float, kLanes> peaks{};
    std::array<std::int32_t, kLanes> unusable{};
    const auto take = [&](int i, std::size_t lane) {
        const float magnitude = std::fabs(samples[i]);
        const bool isUsable = isUsableSample(samples[i]);
        peaks[lane] = std::max(peaks[lane], isUsable ? magnitude : 0.0F);
        unusable[lane] += isUsable ? 0 : 1;
    };
    int i = 0;
    for (; i + kLanes <= count; i += kLanes) {
        for (int lane = 0; lane < kLanes; ++lane) {
            take(i + lane, static_cast<std::size_t>(lane));
        }
    }
    for (; i < count; ++i) {
        take(i, 0);
    }
    mPeak = std::max(mPeak, *std::max_element(peaks.begin(), peaks.end()));
    for (const std::int32_t number : unusable) {
        mUnusable += number;
    }
}

} // namespace varno
