#ifndef VARNO_AUDIOFILE_QUANTIZER_H
#define VARNO_AUDIOFILE_QUANTIZER_H

#include "AudioFile/Dither.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace varno {

/// Turns samples of full scale +-1 into integers: times 2^(bits-1), the same factor that reading divides by,
/// so that an integer comes back as it was; rounded to nearest, ties to even; limited to the range of the
/// integer. A value that is no number becomes 0.
class SampleQuantizer {
public:
    /// @param bits 2 to 32 @param dither added before rounding @param channels each of which gets noise of
    /// its own
    SampleQuantizer(int bits, Dither dither, std::size_t channels);

    /// Quantizes the next interleaved samples, each into the uppermost bits of an integer, zeros below.
    /// @param out as many integers as there are samples; 16 bits only where the quantizer makes no more
    void quantize(std::span<const float> samples, std::int16_t* out);
    void quantize(std::span<const float> samples, std::int32_t* out);
    void quantize(std::span<const double> samples, std::int16_t* out);
    void quantize(std::span<const double> samples, std::int32_t* out);

    /// Samples so far that lay more than half a step beyond full scale, or were no number.
    std::int64_t clipped() const { return mClipped; }

private:
    template<class Sample, class Integer>
    void quantizeInPieces(std::span<const Sample> samples, Integer* out);
    void addNoise(double* steps, std::size_t count);

    int mBits;
    std::vector<TpdfNoise> mNoise; // one per channel; empty without dither
    std::size_t mNextNoise = 0;    // the channel of the next sample
    std::int64_t mClipped = 0;
};

} // namespace varno

#endif
