#ifndef VARNO_APPS_VARNO_RENDER_DEMOLOOP_H
#define VARNO_APPS_VARNO_RENDER_DEMOLOOP_H

#include <array>
#include <cstdint>
#include <vector>

namespace varno {

inline constexpr int kDemoLoopRateHz = 48'000;
inline constexpr int kDemoLoopChannels = 2;
inline constexpr std::int64_t kDemoLoopFrames =
    8 * kDemoLoopRateHz; ///< Four bars of 4/4 at 120 beats per minute.

/// Left and right, full scale +-1.
using StereoSamples = std::array<std::vector<float>, kDemoLoopChannels>;

/// A loop of drums and bass, kDemoLoopFrames long, peak -3 dBFS. Synthesised by basic arithmetic alone, so
/// that every machine and compiler makes the same samples.
StereoSamples makeDemoLoop();

} // namespace varno

#endif
