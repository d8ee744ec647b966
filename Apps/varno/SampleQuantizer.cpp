#include "SampleQuantizer.h"

#include <algorithm>
#include <cmath>

namespace varno {

namespace {

// 1.5 * 2^52: adding it leaves no bits for a fraction, so the sum is rounded to nearest, ties to even, as
// every addition is; taking it away leaves the integer. Holds for magnitudes below 2^51 and costs no library
// call.
constexpr double kRoundingBias = 6755399441055744.0;

constexpr int kWordBits = 32;

} // namespace

SampleQuantizer::SampleQuantizer(int bits, Dither dither, int channel)
    : mScale(static_cast<double>(std::int64_t{1} << (bits - 1))),
      mStep(static_cast<std::int32_t>(std::uint32_t{1} << (kWordBits - bits))),
      mDither(dither),
      mNoise(static_cast<std::uint64_t>(channel)) {
}

std::int32_t SampleQuantizer::quantize(double sample) {
    double steps = sample * mScale;
    if (!(std::abs(steps) <= mScale + 0.5))
        ++mClipped;
    if (std::isnan(steps))
        steps = 0.0;
    if (mDither == Dither::kTpdf)
        steps += mNoise.next();
    steps = std::clamp(steps, -mScale, mScale - 1.0);
    const double rounded = (steps + kRoundingBias) - kRoundingBias;
    return static_cast<std::int32_t>(rounded) * mStep;
}

} // namespace varno
