#ifndef VARNO_AUDIOFILE_QUANTIZER_H
#define VARNO_AUDIOFILE_QUANTIZER_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace varno {

/// What is added before an output is rounded to fewer bits than its input has.
enum class Dither {
    kNone,
    kTpdf, ///< noise of triangular distribution, two steps wide: the error does not depend on the signal
};

/// The dither of the name tpdf or none; nothing for any other text.
std::optional<Dither> ditherFromName(std::string_view name);

/// Noise of triangular distribution over -1 to 1 steps of the output, mean 0. Every run produces the same
/// sequence.
class TpdfNoise {
public:
    /// @param channel index; each channel has another sequence
    explicit TpdfNoise(std::uint64_t channel);

    /// The next value, in steps.
    double next();

private:
    double uniform(); // 0 to 1, 1 excluded

    std::uint64_t mState;
};

/// Turns samples of full scale +-1 into integers: times 2^(bits-1), the same factor that reading divides by,
/// so that an integer keeps its value; rounded to nearest, ties to even; limited to the range of the integer.
/// Not-a-number becomes 0. One thread at a time.
class SampleQuantizer {
public:
    /// @param bits 2 to 32
    /// @param dither added before rounding
    /// @param channels number of interleaved channels; each has noise of its own
    SampleQuantizer(int bits, Dither dither, std::size_t channels);

    /// Quantizes the next interleaved samples, each into the uppermost bits of an integer, zeros below.
    /// @param out as many integers as there are samples; 16 bits only where the quantizer has 16 bits or
    ///         fewer
    void quantize(std::span<const float> samples, std::int16_t* out);
    void quantize(std::span<const float> samples, std::int32_t* out);
    void quantize(std::span<const double> samples, std::int16_t* out);
    void quantize(std::span<const double> samples, std::int32_t* out);

    /// Samples so far that lay more than half a step beyond full scale, or were not a number.
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
