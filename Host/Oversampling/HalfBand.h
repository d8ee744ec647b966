/// Half-band low-pass filters: from a design rule to their coefficients.
#ifndef VARNO_HOST_OVERSAMPLING_HALFBAND_H
#define VARNO_HOST_OVERSAMPLING_HALFBAND_H

#include <array>
#include <cstddef>

namespace varno {

/// Modified Bessel function of the first kind and order 0, by its power series: additions, multiplications
/// and divisions alone, which every machine and compiler rounds alike. [any]
constexpr double besselI0(double x) {
    constexpr double kNothing = 1e-18; // far below what a rounded sum can hold
    double sum = 1.0;
    double term = 1.0;
    for (double k = 1.0; term > sum * kNothing; k += 1.0) {
        term *= x * x / (4.0 * k * k);
        sum += term;
    }
    return sum;
}

/// Square root of 0 to 1, by Newton's method from above; it ends where rounding lets it fall no further.
/// [any]
constexpr double squareRoot(double x) {
    double root = 1.0;
    double next = (root + x) / 2.0;
    while (next < root) {
        root = next;
        next = (root + x / root) / 2.0;
    }
    return x > 0.0 ? root : 0.0;
}

/// Parameter of a Kaiser window whose filter attenuates its stop band by that many dB, above 50 (J. F.
/// Kaiser, "Nonrecursive digital filter design using the I0-sinh window function", 1974). [any]
constexpr double kaiserBeta(double attenuationDB) {
    constexpr double kSlope = 0.1102;
    constexpr double kOffsetDB = 8.7;
    return kSlope * (attenuationDB - kOffsetDB);
}

/// A half-band filter of linear phase of 4 * kPairs - 1 coefficients. That in its middle is 0.5; of the
/// others every second is 0, and the rest are pairs of equal ones. Its pass band ends as far below a quarter
/// of the sample rate as its stop band begins above.
template<std::size_t kPairs>
struct HalfBand {
    /// How many samples (of the higher rate) it delays the sound; odd.
    static constexpr std::size_t kDelay = 2 * kPairs - 1;

    /// The pairs from the ends to the middle: pair i lies 2 * (kPairs - i) - 1 samples from it.
    std::array<float, kPairs> pairs;

    /// The windowed ideal filter: a sine cardinal, of which its signs and 1 / distance remain, times a Kaiser
    /// window. The sum of all coefficients is 1: a constant passes unchanged. Computed in double precision
    /// and rounded once.
    static constexpr HalfBand kaiser(double attenuationDB) {
        const double beta = kaiserBeta(attenuationDB);
        std::array<double, kPairs> exact{};
        double sum = 0.0;
        for (std::size_t i = 0; i < kPairs; ++i) {
            const auto distance = static_cast<double>(2 * (kPairs - i) - 1);
            const double place = distance / static_cast<double>(kDelay + 1);
            const double window = besselI0(beta * squareRoot(1.0 - place * place)) / besselI0(beta);
            const double sign = (kPairs - i) % 2 == 1 ? 1.0 : -1.0;
            exact[i] = sign * window / distance;
            sum += exact[i];
        }
        HalfBand filter{};
        for (std::size_t i = 0; i < kPairs; ++i) {
            filter.pairs[i] = static_cast<float>(exact[i] * 0.25 / sum);
        }
        return filter;
    }
};

} // namespace varno

#endif
