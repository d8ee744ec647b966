#include "Tests/Endurance/LongRun.h"

#include "DemoGain_Oversampling.h"
#include "Tests/Support/ResidentGrowth.h"
#include "Tests/Support/Signal.h"
#include "Tests/Support/Subprocess.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace varno::test {

namespace {

constexpr std::int32_t kLongestBuffer = 2000;
constexpr std::array<std::int32_t, 12> kBufferFrames = {1,   7,   32,  64,  128,  333,
                                                        512, 512, 512, 700, 1024, kLongestBuffer};
constexpr const char* kBypass = "MasterBypassID";
// Readings of memory: after each hundredth.
constexpr int kParts = 100;
constexpr int kWarmUp = 5;
// One buffer of so many has unusable samples.
constexpr std::uint32_t kBadEvery = 1000;
// Settings with which the output is compared at the end.
constexpr int kComparedSettings = 4;
// Longer than the slowest release takes to end.
constexpr double kSilenceSeconds = 30.0;

constexpr std::size_t framesIn(double seconds) {
    return static_cast<std::size_t>(seconds * kLongRunRateHz);
}

void append(Signal& ioSignal, const Signal& more) {
    for (std::size_t channel = 0; channel < ioSignal.size(); ++channel) {
        ioSignal[channel].insert(ioSignal[channel].end(), more[channel].begin(), more[channel].end());
    }
}

Signal makeSound(std::uint32_t seed) {
    Signal sound(kLongRunChannels);
    append(sound, swell(kLongRunChannels, framesIn(4.0), seed, 6.0));
    append(sound, drums(kLongRunChannels, framesIn(6.0), kLongRunRateHz, seed + 1));
    append(sound, silence(kLongRunChannels, framesIn(2.0)));
    append(sound, sweep(kLongRunChannels, framesIn(2.0), kLongRunRateHz));
    append(sound, noise(kLongRunChannels, framesIn(2.0), seed + 2, -20.0));
    append(sound, subnormals(kLongRunChannels, framesIn(1.0), seed + 3));
    append(sound, step(kLongRunChannels, framesIn(2.0), 0.0));
    return sound;
}

// Without a branch for each sample, which would take as long as the effect.
bool isFinite(const std::vector<float>& samples, std::int32_t frames) {
    constexpr std::uint32_t kExponent = 0x7F800000;
    std::uint32_t bad = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(frames); ++i) {
        bad |= (std::bit_cast<std::uint32_t>(samples[i]) & kExponent) == kExponent ? 1U : 0U;
    }
    return bad == 0;
}

double drawnValue(std::mt19937& ioRandom) {
    return static_cast<double>(ioRandom()) / static_cast<double>(std::mt19937::max());
}

// All values at random, without the bypass.
void setAll(Instance& instance, std::mt19937& ioRandom) {
    for (const ParameterInfo& parameter : instance.parameters()) {
        const double value = drawnValue(ioRandom);
        instance.setNormalized(parameter.id, parameter.isMasterBypass ? 0.0 : value);
    }
}

class LongRun {
public:
    LongRun(LongRunEffect& effect, const LongRunPlan& plan)
        : mEffect(effect),
          mPlan(plan),
          mRandom(plan.seed),
          mSound(makeSound(plan.seed)),
          mBad(kLongRunChannels, std::vector<float>(kLongestBuffer)),
          mOutput(mBad),
          mSaved(effect.instance().save()) {}

    LongRunReport run() {
        ResidentGrowth resident(kWarmUp, kParts);
        std::ptrdiff_t allocated = 0;
        for (int part = 0; part < kParts; ++part) {
            const std::int64_t end = mPlan.frames * (part + 1) / kParts;
            while (mFrames < end) {
                buffer(static_cast<std::int32_t>(std::min<std::int64_t>(drawnFrames(), end - mFrames)));
            }
            resident.after(part);
            allocated = part == kWarmUp ? allocatedBytes() : allocated;
            if (mPlan.onProgress) {
                mPlan.onProgress(mFrames);
            }
        }
        mReport.residentBytes = resident.bytes();
        mReport.allocatedBytes = allocatedBytes() - allocated;
        mReport.positionError = mEffect.position() - mFrames;
        return mReport;
    }

private:
    std::uint32_t drawn(std::size_t below) { return static_cast<std::uint32_t>(mRandom() % below); }
    std::int32_t drawnFrames() { return kBufferFrames[drawn(kBufferFrames.size())]; }

    void buffer(std::int32_t frames) {
        const auto wanted = static_cast<std::size_t>(frames);
        if (mFrames >= mNextChange) {
            changeSettings();
            mNextChange = mFrames + drawn(framesIn(2.0));
            mAt = drawn(framesOf(mSound)); // another passage
        }
        if (mAt + wanted > framesOf(mSound)) {
            mAt = 0;
        }
        std::array<const float*, kLongRunChannels> inputs{mSound[0].data() + mAt, mSound[1].data() + mAt};
        // What is bypassed passes on whatever comes.
        if (drawn(kBadEvery) == 0 && mEffect.instance().normalized(kBypass) < 0.5) {
            spoil(inputs, wanted);
        }
        std::array<float*, kLongRunChannels> outputs{mOutput[0].data(), mOutput[1].data()};
        mEffect.process(inputs.data(), outputs.data(), frames);
        mAt += wanted;
        mFrames += frames;
        ++mReport.buffers;
        const bool isGood = isFinite(mOutput[0], frames) && isFinite(mOutput[1], frames);
        mReport.badBuffers += isGood ? 0 : 1;
        readMeters();
    }

    void spoil(std::array<const float*, kLongRunChannels>& ioInputs, std::size_t frames) {
        constexpr float kInfinity = std::numeric_limits<float>::infinity();
        constexpr std::array<float, 4> kBadSamples = {std::numeric_limits<float>::quiet_NaN(), kInfinity,
                                                      -kInfinity, std::numeric_limits<float>::max()};
        for (std::size_t channel = 0; channel < kLongRunChannels; ++channel) {
            std::copy_n(ioInputs[channel], frames, mBad[channel].begin());
            mBad[channel][drawn(frames)] = kBadSamples[drawn(kBadSamples.size())];
            ioInputs[channel] = mBad[channel].data();
        }
        ++mReport.badInputs;
    }

    void readMeters() {
        const MeterBank& meters = mEffect.instance().meters();
        for (std::size_t tap = 0; tap < meters.ids().size(); ++tap) {
            const bool isGood = std::isfinite(meters.value(tap)) && std::isfinite(meters.peak(tap));
            mReport.badMeters += isGood ? 0 : 1;
        }
    }

    void changeSettings() {
        Instance& instance = mEffect.instance();
        const std::vector<ParameterInfo>& parameters = instance.parameters();
        switch (drawn(8)) {
        case 0:
            mEffect.restore(mSaved);
            break;
        case 1:
            setAll(instance, mRandom);
            mSaved = instance.save();
            break;
        case 2: {
            const std::array<BufferValue, 2> values{{{drawn(parameters.size()), drawnValue(mRandom)},
                                                     {drawn(parameters.size()), drawnValue(mRandom)}}};
            instance.setBeforeBuffer(values);
            break;
        }
        default:
            instance.setNormalized(parameters[drawn(parameters.size())].id, drawnValue(mRandom));
            break;
        }
        ++mReport.changes;
    }

    LongRunEffect& mEffect;
    const LongRunPlan& mPlan;
    std::mt19937 mRandom;
    Signal mSound;
    Signal mBad;
    Signal mOutput;
    StoredChunk mSaved;
    LongRunReport mReport;
    std::int64_t mFrames = 0;
    std::int64_t mNextChange = 0;
    std::size_t mAt = 0; // where the sound goes on
};

// What the effect makes of the sound, and after each buffer the values of its meters, as further channels.
Signal outputOf(LongRunEffect& effect, const Signal& sound) {
    constexpr std::size_t kBuffer = 480;
    const MeterBank& meters = effect.instance().meters();
    Signal output(kLongRunChannels, std::vector<float>(framesOf(sound)));
    std::vector<float> readings;
    for (std::size_t at = 0; at < framesOf(sound); at += kBuffer) {
        std::array<const float*, kLongRunChannels> inputs{sound[0].data() + at, sound[1].data() + at};
        std::array<float*, kLongRunChannels> outputs{output[0].data() + at, output[1].data() + at};
        const std::size_t frames = std::min(kBuffer, framesOf(sound) - at);
        effect.process(inputs.data(), outputs.data(), static_cast<std::int32_t>(frames));
        for (std::size_t tap = 0; tap < meters.ids().size(); ++tap) {
            readings.push_back(meters.value(tap));
        }
    }
    output.push_back(std::move(readings));
    return output;
}

// The largest in dBFS; at least -200.
double largestDifferenceDB(const Signal& expected, const Signal& found) {
    constexpr double kNone = 1.0e-10;
    double largest = kNone;
    for (std::size_t channel = 0; channel < expected.size(); ++channel) {
        for (std::size_t i = 0; i < expected[channel].size(); ++i) {
            const double difference =
                std::abs(static_cast<double>(expected[channel][i]) - static_cast<double>(found[channel][i]));
            largest = difference <= largest ? largest : difference; // what is not a number too
        }
    }
    return 20.0 * std::log10(largest);
}

// Gives several settings to the effect and to a new one, and both outputs to `compare`. Before, `prepare`
// makes them ready.
void compareWithNew(LongRunEffect& effect, const LongRunEffectMaker& make, std::uint32_t seed,
                    const std::function<void(LongRunEffect& old, LongRunEffect& fresh)>& prepare,
                    const std::function<void(const Signal& expected, const Signal& found)>& compare) {
    std::mt19937 random(seed);
    const Signal sound = makeSound(seed + 1);
    for (int i = 0; i < kComparedSettings; ++i) {
        setAll(effect.instance(), random);
        const std::unique_ptr<LongRunEffect> fresh = make();
        fresh->restore(effect.instance().save());
        prepare(effect, *fresh);
        const Signal expected = outputOf(*fresh, sound);
        compare(expected, outputOf(effect, sound));
    }
}

} // namespace

LongRunEffect::LongRunEffect(const std::shared_ptr<Module>& module, std::int32_t factor)
    : mInstance(module, {.channels = kLongRunChannels, .sampleRateHz = kLongRunRateHz}),
      mOversampling(mInstance, {.routineLatencyFrames = kDemoGain_LatencyFrames, .factor = factor}) {
}

void LongRunEffect::process(const float* const* inputs, float* const* outputs, std::int32_t frames) {
    mOversampling.process(inputs, outputs, frames);
}

void LongRunEffect::reset() {
    mOversampling.reset();
}

void LongRunEffect::restore(const StoredChunk& chunk) {
    mInstance.restore(chunk);
}

std::int64_t LongRunEffect::position() {
    return mInstance.position();
}

LongRunReport runForLong(const LongRunEffectMaker& make, const LongRunPlan& plan) {
    const std::unique_ptr<LongRunEffect> effect = make();
    LongRunReport report = LongRun(*effect, plan).run();
    const Signal rest = silence(kLongRunChannels, framesIn(kSilenceSeconds));
    report.differenceAfterSilenceDB = -std::numeric_limits<double>::infinity();
    compareWithNew(
        *effect, make, plan.seed,
        [&](LongRunEffect& old, LongRunEffect& fresh) {
            outputOf(old, rest);
            outputOf(fresh, rest);
        },
        [&](const Signal& expected, const Signal& found) {
            report.differenceAfterSilenceDB =
                std::max(report.differenceAfterSilenceDB, largestDifferenceDB(expected, found));
        });
    compareWithNew(
        *effect, make, plan.seed + 1, [](LongRunEffect& old, LongRunEffect& /*fresh*/) { old.reset(); },
        [&](const Signal& expected, const Signal& found) {
            if (report.differenceAfterReset.empty()) {
                report.differenceAfterReset = firstDifference(expected, found);
            }
        });
    return report;
}

} // namespace varno::test
