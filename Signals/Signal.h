/// Test signals and exact comparison of signals.
#ifndef VARNO_SIGNALS_SIGNAL_H
#define VARNO_SIGNALS_SIGNAL_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace varno::signals {

/// Samples of each channel.
using Signal = std::vector<std::vector<float>>;

/// Frames of a signal; 0 without channels.
inline std::size_t framesOf(const Signal& signal) {
    return signal.empty() ? 0 : signal.front().size();
}

/// Where two runs of floats first differ in their bits, as text; empty where they do not.
std::string firstDifference(const std::vector<float>& expected, const std::vector<float>& found);

/// Where two signals first differ in their bits, as text; empty where they do not.
std::string firstDifference(const Signal& expected, const Signal& found);

/// The bits of a float, for messages and exact comparison.
std::string bitsText(float value);

/// Linear amplitude of a level in dBFS.
float amplitudeOf(double dBFS);

/// White noise, evenly distributed up to a peak of `peakDB` dBFS.
Signal noise(std::size_t channels, std::size_t frames, std::uint32_t seed, double peakDB);

/// Noise whose level rises from -90 dBFS to `peakDB` dBFS over its length, so that it meets every level.
Signal swell(std::size_t channels, std::size_t frames, std::uint32_t seed, double peakDB);

/// Full-scale sine rising from 20 Hz to 0.45 of the sample rate; each further channel a quarter period later.
Signal sweep(std::size_t channels, std::size_t frames, double sampleRate);

/// Decaying bursts of noise and low sine that peak at +6 dBFS, eight per second, with rests between.
Signal drums(std::size_t channels, std::size_t frames, double sampleRate, std::uint32_t seed);

Signal silence(std::size_t channels, std::size_t frames);

/// A single full-scale sample: in channel c at frame 10 * (c + 1).
Signal impulse(std::size_t channels, std::size_t frames);

/// A constant of `levelDB` dBFS from a quarter to three quarters of the length, silence around it. Every
/// second channel is of opposite sign.
Signal step(std::size_t channels, std::size_t frames, double levelDB);

/// Samples below the smallest normal number, of random sign and size.
Signal subnormals(std::size_t channels, std::size_t frames, std::uint32_t seed);

} // namespace varno::signals

#endif
