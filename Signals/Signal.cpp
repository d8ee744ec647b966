#include "Signals/Signal.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <iomanip>
#include <limits>
#include <numbers>
#include <random>
#include <sstream>

namespace varno::signals {

std::string bitsText(float value) {
    std::ostringstream text;
    text << std::setprecision(std::numeric_limits<float>::max_digits10) << value << " (0x" << std::hex
         << std::setw(8) << std::setfill('0') << std::bit_cast<std::uint32_t>(value) << ')';
    return text.str();
}

std::string firstDifference(const std::vector<float>& expected, const std::vector<float>& found) {
    if (expected.size() != found.size()) {
        return "lengths " + std::to_string(expected.size()) + " and " + std::to_string(found.size());
    }
    for (std::size_t i = 0; i < expected.size(); ++i) {
        if (std::bit_cast<std::uint32_t>(expected[i]) != std::bit_cast<std::uint32_t>(found[i])) {
            return "index " + std::to_string(i) + ": expected " + bitsText(expected[i]) + ", found " +
                   bitsText(found[i]);
        }
    }
    return {};
}

std::string firstDifference(const Signal& expected, const Signal& found) {
    if (expected.size() != found.size()) {
        return "channels " + std::to_string(expected.size()) + " and " + std::to_string(found.size());
    }
    for (std::size_t channel = 0; channel < expected.size(); ++channel) {
        const std::string difference = firstDifference(expected[channel], found[channel]);
        if (!difference.empty()) {
            return "channel " + std::to_string(channel) + ", " + difference;
        }
    }
    return {};
}

namespace {

// Makes each sample of each channel by `sampleOf(channel, frame)`.
template<class SampleOf>
Signal make(std::size_t channels, std::size_t frames, SampleOf sampleOf) {
    Signal signal(channels, std::vector<float>(frames));
    for (std::size_t channel = 0; channel < channels; ++channel) {
        for (std::size_t frame = 0; frame < frames; ++frame) {
            signal[channel][frame] = static_cast<float>(sampleOf(channel, frame));
        }
    }
    return signal;
}

// Evenly distributed from -1 to 1; the same numbers with every standard library.
class Noise {
public:
    explicit Noise(std::uint32_t seed)
        : mEngine(seed) {}
    double operator()() {
        return 2.0 * static_cast<double>(mEngine()) / static_cast<double>(std::mt19937::max()) - 1.0;
    }

private:
    std::mt19937 mEngine;
};

double ratio(std::size_t part, std::size_t whole) {
    return static_cast<double>(part) / static_cast<double>(whole);
}

} // namespace

float amplitudeOf(double dBFS) {
    return static_cast<float>(std::pow(10.0, dBFS / 20.0));
}

Signal noise(std::size_t channels, std::size_t frames, std::uint32_t seed, double peakDB) {
    Noise next(seed);
    const double peak = amplitudeOf(peakDB);
    return make(channels, frames, [&](std::size_t, std::size_t) { return peak * next(); });
}

Signal swell(std::size_t channels, std::size_t frames, std::uint32_t seed, double peakDB) {
    constexpr double kStartDB = -90.0;
    Noise next(seed);
    return make(channels, frames, [&](std::size_t, std::size_t frame) {
        return amplitudeOf(kStartDB + (peakDB - kStartDB) * ratio(frame, frames)) * next();
    });
}

Signal sweep(std::size_t channels, std::size_t frames, double sampleRate) {
    constexpr double kStartHz = 20.0;
    const double octaves = std::log(0.45 * sampleRate / kStartHz);
    const double scale =
        2.0 * std::numbers::pi * kStartHz * static_cast<double>(frames) / sampleRate / octaves;
    return make(channels, frames, [&](std::size_t channel, std::size_t frame) {
        const double phase = scale * std::expm1(octaves * ratio(frame, frames));
        return std::sin(phase + static_cast<double>(channel) * std::numbers::pi / 2.0);
    });
}

Signal drums(std::size_t channels, std::size_t frames, double sampleRate, std::uint32_t seed) {
    constexpr double kHitsPerSecond = 8.0;
    constexpr double kDecaySeconds = 0.03;
    constexpr double kBassHz = 60.0;
    Noise next(seed);
    const double peak = amplitudeOf(6.0);
    return make(channels, frames, [&](std::size_t channel, std::size_t frame) {
        const double seconds = static_cast<double>(frame) / sampleRate + static_cast<double>(channel) * 0.01;
        const double sinceHit = std::fmod(seconds, 1.0 / kHitsPerSecond);
        const bool rests = std::fmod(seconds * kHitsPerSecond, 4.0) >= 3.0;
        const double bass = std::sin(2.0 * std::numbers::pi * kBassHz * sinceHit);
        const double hit = peak * std::exp(-sinceHit / kDecaySeconds) * (0.5 * next() + 0.5 * bass);
        return rests ? 0.0 : hit;
    });
}

Signal silence(std::size_t channels, std::size_t frames) {
    return Signal(channels, std::vector<float>(frames));
}

Signal impulse(std::size_t channels, std::size_t frames) {
    return make(channels, frames, [](std::size_t channel, std::size_t frame) {
        return frame == 10 * (channel + 1) ? 1.0 : 0.0;
    });
}

Signal step(std::size_t channels, std::size_t frames, double levelDB) {
    const double level = amplitudeOf(levelDB);
    return make(channels, frames, [&](std::size_t channel, std::size_t frame) {
        const bool up = frame >= frames / 4 && frame < frames - frames / 4;
        return up ? (channel % 2 == 0 ? level : -level) : 0.0;
    });
}

Signal subnormals(std::size_t channels, std::size_t frames, std::uint32_t seed) {
    constexpr std::uint32_t kAllButExponent = 0x807FFFFF;
    std::mt19937 engine(seed);
    Signal signal(channels, std::vector<float>(frames));
    for (std::vector<float>& samples : signal) {
        for (float& sample : samples) {
            sample = std::bit_cast<float>(static_cast<std::uint32_t>(engine()) & kAllButExponent);
        }
    }
    return signal;
}

} // namespace varno::signals
