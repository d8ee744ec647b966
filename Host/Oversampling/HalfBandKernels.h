/// The stages that double and halve a sample rate, in one version for each instruction set.
#ifndef VARNO_HOST_OVERSAMPLING_HALFBANDKERNELS_H
#define VARNO_HOST_OVERSAMPLING_HALFBANDKERNELS_H

#include "Host/Oversampling/HalfBand.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace varno {

/// The filters between a rate and its double, its double and its fourfold, and so on. Sound up to 20 kHz at
/// 48 kHz, and to 19 kHz at 44.1 kHz, passes; what lies above 28 kHz (at 48 kHz) is attenuated by 97 dB. The
/// higher the rate, the wider the band between, and the shorter the filter.
inline constexpr auto kFirstHalfBand = HalfBand<21>::kaiser(98.0);
inline constexpr auto kSecondHalfBand = HalfBand<6>::kaiser(100.0);
inline constexpr auto kThirdHalfBand = HalfBand<5>::kaiser(110.0);

/// Stages there are: the highest factor is 8.
inline constexpr std::size_t kHalfBandStages = 3;
/// Pairs of coefficients of each stage.
inline constexpr std::array<std::size_t, kHalfBandStages> kHalfBandPairs = {
    kFirstHalfBand.pairs.size(), kSecondHalfBand.pairs.size(), kThirdHalfBand.pairs.size()};

/// How many samples before the first one a stage reads.
constexpr std::size_t halfBandHistory(std::size_t stage) {
    return 2 * kHalfBandPairs[stage] - 1;
}
/// How many samples of its higher rate a stage delays the sound, in either direction.
constexpr std::size_t halfBandDelay(std::size_t stage) {
    return 2 * kHalfBandPairs[stage] - 1;
}

/// Samples smaller than this (-400 dBFS) count as 0, so that no later product or sum is a denormal, which
/// processors treat differently.
inline constexpr float kLeastSample = 1e-20F;
/// Samples above this in magnitude, infinite or not a number count as 0: one of them would else take the
/// whole length of a filter with it.
inline constexpr float kMostSample = 1e30F;

/// Memory that a kernel may read and write behind the samples it is called for, in samples.
inline constexpr std::size_t kKernelSlack = 32;

/// For a stage: frames is the count at the lower rate; `in`, `even` and `odd` have halfBandHistory samples
/// before the first. [audio]
struct HalfBandStage {
    /// Doubles the rate: 2 * frames samples to `out`. Of each two the first is the sum over all pairs from
    /// the ends of the filter to its middle, each the coefficient times the sum of both samples, times 2; the
    /// second is the sample in the middle of the filter. What counts as 0 is 0.
    void (*raise)(const float* in, float* out, std::size_t frames);
    /// Halves the rate: frames samples to `out`, each the sum over all pairs as above, of odd samples, and
    /// then half the even sample in the middle.
    void (*lower)(const float* even, const float* odd, float* out, std::size_t frames);
};

/// The kernels as built for one instruction set. All give the same samples to the bit.
struct HalfBandKernels {
    std::string_view name; ///< As VARNO_SIMD names it.
    std::int64_t target;   ///< The instruction set, as Highway numbers it.
    std::array<HalfBandStage, kHalfBandStages> stages;
    /// Copies samples; what counts as 0 is 0. [audio]
    void (*copyUsable)(const float* in, float* out, std::size_t frames);
    /// Distributes 2 * frames samples to those of even and of odd number; what counts as 0 is 0. [audio]
    void (*separateUsable)(const float* in, float* even, float* odd, std::size_t frames);
};

/// Every version that was built, the fastest first; the last one runs on every processor of this
/// architecture. [any]
std::span<const HalfBandKernels> halfBandKernels();

/// Whether this processor has what the version needs. [any]
bool canRun(const HalfBandKernels& kernels);

/// The version named in the environment variable VARNO_SIMD if it was built and this processor can run it,
/// and otherwise the fastest one that it can run. [main]
const HalfBandKernels& chooseHalfBandKernels();

} // namespace varno

#endif
