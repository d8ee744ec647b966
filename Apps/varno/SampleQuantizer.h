#pragma once

#include "Dither.h"

#include <cstdint>

namespace varno {

/// Turns samples of full scale +-1 into integers: times 2^(bits-1), the same factor that reading divides by,
/// so that an integer comes back as it was; rounded to nearest, ties to even; limited to the range of the
/// integer.
class SampleQuantizer {
public:
    /// @param bits 2 to 32 @param dither added before rounding @param channel for noise that differs by
    /// channel
    SampleQuantizer(int bits, Dither dither, int channel);

    /// The sample in the uppermost bits of 32, zeros below. A value that is no number becomes 0.
    std::int32_t quantize(double sample);

    /// Samples so far that lay more than half a step beyond full scale, or were no number.
    std::int64_t clipped() const { return mClipped; }

private:
    double mScale;
    std::int32_t mStep; // one step in the uppermost bits
    Dither mDither;
    TpdfNoise mNoise;
    std::int64_t mClipped = 0;
};

} // namespace varno
