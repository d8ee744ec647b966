#include "AudioFile/Quantizer.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

namespace varno {

namespace {

// SplitMix64: Steele, Lea and Flood, "Fast splittable pseudorandom number generators", 2014.
constexpr std::uint64_t kGoldenGamma = 0x9E3779B97F4A7C15U;
constexpr std::uint64_t kMix1 = 0xBF58476D1CE4E5B9U;
constexpr std::uint64_t kMix2 = 0x94D049BB133111EBU;

// Between the states of channels: no channel reaches another's sequence.
constexpr std::uint64_t kStateDistance = std::uint64_t{1} << 60;

constexpr double kOneIn53Bits = 1.0 / static_cast<double>(std::uint64_t{1} << 53);

// 1.5 * 2^52: adding it leaves no bits for a fraction, so the sum is rounded to nearest, ties to even, as
// every addition is; subtracting it leaves the integer. Valid for magnitudes below 2^51, without a library
// call.
constexpr double kRoundingBias = 6755399441055744.0;

// Samples per piece: the values between the loops stay in the first-level cache.
constexpr std::size_t kPiece = 512;

// None of these loops has a branch, so that the compiler vectorizes them.

// How many samples lie more than half a step beyond full scale or are not a number.
template<class Sample>
int countClipped(const Sample* samples, std::size_t count, double halfStep) {
    // Single precision has no value between its own rounded limit and the limit itself.
    const auto limit = static_cast<Sample>(1.0 + halfStep);
    int clipped = 0;
    for (std::size_t i = 0; i < count; ++i) {
        clipped += std::abs(samples[i]) <= limit ? 0 : 1;
    }
    return clipped;
}

template<class Sample>
void scale(const Sample* samples, std::size_t count, double fullScale, double* steps) {
    for (std::size_t i = 0; i < count; ++i) {
        const double scaled = static_cast<double>(samples[i]) * fullScale;
        steps[i] = scaled == scaled ? scaled : 0.0; // only not-a-number differs from itself
    }
}

template<class Integer>
void round(const double* steps, std::size_t count, double fullScale, int unusedBits, Integer* out) {
    for (std::size_t i = 0; i < count; ++i) {
        const double limited = std::min(std::max(steps[i], -fullScale), fullScale - 1.0);
        const double rounded = (limited + kRoundingBias) - kRoundingBias;
        out[i] = static_cast<Integer>(static_cast<std::int32_t>(rounded) << unusedBits);
    }
}

} // namespace

std::optional<Dither> ditherFromName(std::string_view name) {
    if (name == "tpdf") {
        return Dither::kTpdf;
    }
    if (name == "none") {
        return Dither::kNone;
    }
    return std::nullopt;
}

TpdfNoise::TpdfNoise(std::uint64_t channel)
    : mState((channel + 1) * kStateDistance) {
}

double TpdfNoise::next() {
    const double first = uniform();
    return first - uniform();
}

double TpdfNoise::uniform() {
    mState += kGoldenGamma;
    std::uint64_t z = mState;
    // NOLINTBEGIN(readability-magic-numbers): the shifts of the algorithm
    z = (z ^ (z >> 30)) * kMix1;
    z = (z ^ (z >> 27)) * kMix2;
    z ^= z >> 31;
    return static_cast<double>(z >> 11) * kOneIn53Bits;
    // NOLINTEND(readability-magic-numbers)
}

SampleQuantizer::SampleQuantizer(int bits, Dither dither, std::size_t channels)
    : mBits(bits) {
    for (std::size_t channel = 0; dither == Dither::kTpdf && channel < channels; ++channel) {
        mNoise.emplace_back(channel);
    }
}

void SampleQuantizer::addNoise(double* steps, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) {
        steps[i] += mNoise[mNextNoise].next();
        mNextNoise = mNextNoise + 1 == mNoise.size() ? 0 : mNextNoise + 1;
    }
}

template<class Sample, class Integer>
void SampleQuantizer::quantizeInPieces(std::span<const Sample> samples, Integer* out) {
    const auto fullScale = static_cast<double>(std::int64_t{1} << (mBits - 1));
    const int unusedBits = std::numeric_limits<std::make_unsigned_t<Integer>>::digits - mBits;
    double steps[kPiece];
    for (std::size_t done = 0; done < samples.size(); done += kPiece) {
        const std::size_t length = std::min(kPiece, samples.size() - done);
        mClipped += countClipped(samples.data() + done, length, 0.5 / fullScale);
        scale(samples.data() + done, length, fullScale, steps);
        if (!mNoise.empty()) {
            addNoise(steps, length);
        }
        round(steps, length, fullScale, unusedBits, out + done);
    }
}

void SampleQuantizer::quantize(std::span<const float> samples, std::int16_t* out) {
    quantizeInPieces(samples, out);
}

void SampleQuantizer::quantize(std::span<const float> samples, std::int32_t* out) {
    quantizeInPieces(samples, out);
}

void SampleQuantizer::quantize(std::span<const double> samples, std::int16_t* out) {
    quantizeInPieces(samples, out);
}

void SampleQuantizer::quantize(std::span<const double> samples, std::int32_t* out) {
    quantizeInPieces(samples, out);
}

} // namespace varno
