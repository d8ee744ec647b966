#include "AudioFile/Dither.h"

namespace varno {

namespace {

// SplitMix64: Steele, Lea and Flood, "Fast splittable pseudorandom number generators", 2014.
constexpr std::uint64_t kGoldenGamma = 0x9E3779B97F4A7C15U;
constexpr std::uint64_t kMix1 = 0xBF58476D1CE4E5B9U;
constexpr std::uint64_t kMix2 = 0x94D049BB133111EBU;

constexpr std::uint64_t kStateDistance = std::uint64_t{1}
                                         << 60; // far apart: no channel reaches another's sequence
constexpr double kOneIn53Bits = 1.0 / static_cast<double>(std::uint64_t{1} << 53);

} // namespace

std::optional<Dither> ditherFromOption(std::string_view text) {
    if (text == "tpdf") {
        return Dither::kTpdf;
    }
    if (text == "none") {
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
    z = (z ^ (z >> 30)) * kMix1;
    z = (z ^ (z >> 27)) * kMix2;
    z ^= z >> 31;
    return static_cast<double>(z >> 11) * kOneIn53Bits;
}

} // namespace varno
