/// Test signals. Each is the same on every run and machine; the channels of a signal differ from each other.
#ifndef VARNO_TESTS_SUPPORT_SIGNALSOURCES_H
#define VARNO_TESTS_SUPPORT_SIGNALSOURCES_H

#include "Tests/Support/Signal.h"

#include <cstddef>
#include <cstdint>

namespace varno::test {

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

} // namespace varno::test

#endif
