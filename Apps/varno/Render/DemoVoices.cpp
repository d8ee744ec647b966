#include "Render/DemoVoices.h"

#include "AudioFile/Quantizer.h"
#include "Render/DemoLoop.h"

#include <cmath>
#include <cstddef>
#include <numbers>

// NOLINTBEGIN(readability-magic-numbers): the numbers are the score and the sound of the demo, each beside
// what it shapes
namespace varno {
namespace {

constexpr double kRateHz = kDemoLoopRateHz;

std::size_t framesIn(double seconds) {
    return static_cast<std::size_t>(seconds * kRateHz);
}

// sin(2 pi turns) by the Taylor series on a quarter turn, where its error is below 1e-9: the system's sine
// may differ in the last bit from one library to the next.
double sine(double turns) {
    double x = turns - std::floor(turns + 0.5); // -1/2 to 1/2
    if (x > 0.25) {
        x = 0.5 - x;
    } else if (x < -0.25) {
        x = -0.5 - x;
    }
    const double angle = 2.0 * std::numbers::pi * x;
    const double square = angle * angle;
    double sum = 1.0;
    for (int n = 13; n >= 3; n -= 2) {
        sum = 1.0 - sum * square / (n * (n - 1));
    }
    return angle * sum;
}

// An envelope that falls to about 1/e in the given time.
class Decay {
public:
    explicit Decay(double seconds)
        : mFactor(1.0 - 1.0 / (seconds * kRateHz)) {}
    double next() { return mValue *= mFactor; }

private:
    double mFactor;
    double mValue = 1.0;
};

class SineTone {
public:
    double next(double pitchHz) {
        mTurns += pitchHz / kRateHz;
        return sine(mTurns);
    }

private:
    double mTurns = 0.0;
};

// Two-pole state-variable filter (Chamberlin): low and high pass at once. For cut-offs below a sixth of the
// rate.
class Filter {
public:
    void run(double input, double cutoffHz, double damping) {
        const double f = 2.0 * sine(0.5 * cutoffHz / kRateHz);
        mLow += f * mBand;
        mHigh = input - mLow - damping * mBand;
        mBand += f * mHigh;
    }
    double low() const { return mLow; }
    double high() const { return mHigh; }

private:
    double mLow = 0.0;
    double mBand = 0.0;
    double mHigh = 0.0;
};

// One-pole low pass for any cut-off.
class SoftLowPass {
public:
    explicit SoftLowPass(double cutoffHz)
        : mShare(radiansPerFrame(cutoffHz) / (1.0 + radiansPerFrame(cutoffHz))) {}
    double next(double input) { return mValue += mShare * (input - mValue); }

private:
    static double radiansPerFrame(double cutoffHz) { return 2.0 * std::numbers::pi * cutoffHz / kRateHz; }

    double mShare;
    double mValue = 0.0;
};

// A sawtooth whose step is rounded over two samples (PolyBLEP), so that it aliases little.
class Saw {
public:
    double next(double pitchHz) {
        const double step = pitchHz / kRateHz;
        mPhase += step;
        mPhase -= std::floor(mPhase);
        double value = 2.0 * mPhase - 1.0;
        if (mPhase < step) {
            const double t = mPhase / step;
            value -= t + t - t * t - 1.0;
        } else if (mPhase > 1.0 - step) {
            const double t = (mPhase - 1.0) / step;
            value -= t * t + t + t + 1.0;
        }
        return value;
    }

private:
    double mPhase = 0.0;
};

double warm(double x) {
    return x / (1.0 + 0.5 * std::abs(x));
}

// The last 5 ms of a note fade linearly to zero, so that none ends with a click.
double fadeOut(std::size_t frame, std::size_t frames) {
    const double left = static_cast<double>(frames - frame) / (0.005 * kRateHz);
    return left < 1.0 ? left : 1.0;
}

// Noise between two cut-offs.
Note bandNoise(std::uint64_t variant, double seconds, double decayS, double lowHz, double highHz) {
    Note note(framesIn(seconds));
    TpdfNoise noise(variant);
    Decay amplitude(decayS);
    Filter highPass;
    SoftLowPass lowPass(highHz);
    for (std::size_t i = 0; i < note.size(); ++i) {
        highPass.run(noise.next(), lowHz, 1.0);
        note[i] = lowPass.next(highPass.high()) * amplitude.next() * fadeOut(i, note.size());
    }
    return note;
}

} // namespace

Note kickNote() {
    Note note(framesIn(0.45));
    SineTone tone;
    Decay slap(0.004);
    Decay fall(0.028);
    Decay amplitude(0.14);
    TpdfNoise noise(0);
    for (std::size_t i = 0; i < note.size(); ++i) {
        const double pitchHz = 47.0 + 170.0 * fall.next();
        const double body = 1.6 * amplitude.next() * tone.next(pitchHz);
        note[i] = warm(body + 0.35 * slap.next() * noise.next()) * fadeOut(i, note.size());
    }
    return note;
}

Note snareBodyNote() {
    Note note(framesIn(0.25));
    SineTone low;
    SineTone high;
    Decay fall(0.012);
    Decay amplitude(0.055);
    for (std::size_t i = 0; i < note.size(); ++i) {
        const double bend = 1.0 + 0.5 * fall.next();
        const double tone = low.next(182.0 * bend) + 0.6 * high.next(331.0 * bend);
        note[i] = warm(tone * amplitude.next()) * fadeOut(i, note.size());
    }
    return note;
}

Note snareWiresNote(std::uint64_t variant) {
    return bandNoise(variant, 0.32, 0.085, 900.0, 4000.0);
}

Note hatNote(double decayS, std::uint64_t variant) {
    Note note = bandNoise(variant, 6.0 * decayS, decayS, 6800.0, 12000.0);
    // Inharmonic partials, as of cymbals.
    constexpr double kRingsHz[] = {5213.0, 6337.0, 7411.0, 8923.0, 10267.0};
    Decay amplitude(decayS);
    double turns = 0.0;
    for (double& sample : note) {
        const double loudness = 0.09 * amplitude.next();
        turns += 1.0 / kRateHz;
        for (const double pitchHz : kRingsHz) {
            sample += loudness * sine(turns * pitchHz);
        }
    }
    for (std::size_t i = 0; i < note.size(); ++i) {
        note[i] *= fadeOut(i, note.size());
    }
    return note;
}

Note shakerNote(std::uint64_t variant) {
    Note note = bandNoise(variant, 0.09, 0.025, 3600.0, 7000.0);
    const auto rise = static_cast<double>(framesIn(0.012)); // grains swell before they hit
    for (std::size_t i = 0; i < note.size() && static_cast<double>(i) < rise; ++i) {
        note[i] *= static_cast<double>(i) / rise;
    }
    return note;
}

Note bassNote(double pitchHz, double lengthS, double accent) {
    Note note(framesIn(lengthS));
    Saw saw;
    SineTone sub;
    Filter filter;
    Decay pluck(0.09);
    Decay amplitude(0.55);
    const auto attack = static_cast<double>(framesIn(0.003));
    for (std::size_t i = 0; i < note.size(); ++i) {
        const double cutoffHz = 180.0 + (700.0 + 1500.0 * accent) * pluck.next();
        filter.run(saw.next(pitchHz), cutoffHz, 0.6);
        const double swell = static_cast<double>(i) < attack ? static_cast<double>(i) / attack : 1.0;
        const double voice = 0.8 * filter.low() + 0.6 * sub.next(pitchHz);
        note[i] = warm(1.4 * voice) * amplitude.next() * swell * fadeOut(i, note.size());
    }
    return note;
}

} // namespace varno
// NOLINTEND(readability-magic-numbers)
