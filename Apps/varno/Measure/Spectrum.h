/// The spectrum of one second of sound, at whole frequencies in Hz.
#ifndef VARNO_APPS_VARNO_MEASURE_SPECTRUM_H
#define VARNO_APPS_VARNO_MEASURE_SPECTRUM_H

#include <span>
#include <vector>

namespace varno {

/// What the ear takes for the range of sound, Hz.
inline constexpr int kLowestAudibleHz = 16;
inline constexpr int kHighestAudibleHz = 20'000;

/// The spectrum of a tone whose frequency is a whole number of Hz, so that it and all that becomes of it
/// repeats every second: each frequency stands alone, and no window is needed.
class ToneSpectrum {
public:
    /// @param second as many samples as the sample rate in Hz
    /// @param toneHz below half the rate
    ToneSpectrum(std::span<const float> second, int toneHz);

    /// Power of the tone: half the square of its peak value.
    double tone() const { return power(mToneHz); }
    /// Sum of the powers of its second and higher harmonics up to half the rate.
    double harmonics() const;
    /// Sum of the powers of all products that are no harmonic, kLowestAudibleHz to kHighestAudibleHz.
    double inharmonics() const;
    /// The frequency of the largest of these in Hz.
    int largestInharmonicHz() const;
    /// Power at a frequency in Hz, up to half the rate.
    double power(int frequencyHz) const { return mPowers[static_cast<std::size_t>(frequencyHz)]; }

private:
    /// Calls `receive` with the frequency of each product that is no harmonic.
    template<class Receive>
    void forEachInharmonic(Receive receive) const;

    int mToneHz;
    std::vector<double> mPowers; ///< By frequency in Hz.
};

/// dB of a ratio of powers. [any]
double powerDecibels(double ratio);

} // namespace varno

#endif
