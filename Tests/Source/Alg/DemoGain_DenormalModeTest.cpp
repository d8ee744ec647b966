#include "Alg/DemoGain_DenormalMode.h"

#include "Tests/Support/AlgFixture.h"
#include "Tests/Support/Signal.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace varno::test::denormalMode {

namespace {

// Changes the mode for a test and restores it afterwards.
class CallersMode {
public:
    explicit CallersMode(const SDemoGain_FloatMode& mode)
        : mSaved(DemoGain_ReadFloatMode()) {
        DemoGain_WriteFloatMode(mode);
    }
    CallersMode(const CallersMode&) = delete;
    CallersMode& operator=(const CallersMode&) = delete;
    ~CallersMode() { DemoGain_WriteFloatMode(mSaved); }

private:
    SDemoGain_FloatMode mSaved;
};

// Modes a caller may have, beside the one in which programs start.
std::vector<SDemoGain_FloatMode> callersModes() {
    std::vector<SDemoGain_FloatMode> modes = {kDemoGain_StartFloatMode, kDemoGain_AudioFloatMode};
#if defined(__x86_64__)
    modes.push_back({0x3F80U, 0});            // rounds down
    modes.push_back({0x5F80U, 0});            // rounds up
    modes.push_back({0x7F80U, 0});            // rounds towards zero
    modes.push_back({0x1FBFU, 0});            // every exception flag is set
    modes.push_back({0x1F80U & ~0x0E80U, 0}); // invalid, division by zero, overflow and underflow not masked
    modes.push_back({0x0000U, 0});            // nothing masked
#else
    modes.push_back({std::uint64_t{1} << 22, 0}); // rounds up
    modes.push_back({std::uint64_t{2} << 22, 0}); // rounds down
    modes.push_back({std::uint64_t{3} << 22, 0}); // rounds towards zero
    modes.push_back({0, 0x1FU});                  // exception flags are set
#endif
    return modes;
}

// Through volatile operands, and not inlined, so that the product is computed at the place of the call.
[[gnu::noinline]] float multiplied(const volatile float& a, const volatile float& b) {
    return a * b;
}

float halved(const volatile float& value) {
    const volatile float half = 0.5F;
    return multiplied(value, half);
}

TEST(DemoGain_DenormalMode, FlushesDenormalsWhileItLivesOnly) {
    volatile float smallest = std::numeric_limits<float>::min();
    volatile float subnormal = std::numeric_limits<float>::denorm_min() * 64.0F;
    const CallersMode caller(kDemoGain_StartFloatMode);
    volatile float scale = 1e30F;
    SDemoGain_FloatMode mode{};
    float result = 1.0F;
    float product = 1.0F;
    EXPECT_NE(halved(smallest), 0.0F);
    {
        const DemoGain_DenormalMode audioMode;
        mode = DemoGain_ReadFloatMode();
        result = halved(smallest);
        product = multiplied(subnormal, scale);
    }
    // Compared in the caller's mode: in the audio mode a subnormal number would equal zero.
    EXPECT_EQ(mode.mControl & kDemoGain_AudioFloatMode.mControl, kDemoGain_AudioFloatMode.mControl);
    EXPECT_EQ(result, 0.0F) << "a result is flushed to zero";
    EXPECT_EQ(product, 0.0F) << "an operand is zero";
    EXPECT_NE(halved(smallest), 0.0F);
    EXPECT_NE(multiplied(subnormal, scale), 0.0F);
}

TEST(DemoGain_DenormalMode, RestoresTheCallersModeToTheBit) {
    for (const SDemoGain_FloatMode& mode : callersModes()) {
        SDemoGain_FloatMode before{};
        SDemoGain_FloatMode after{};
        {
            const CallersMode caller(mode);
            before = DemoGain_ReadFloatMode();
            { const DemoGain_DenormalMode audioMode; }
            after = DemoGain_ReadFloatMode();
        }
        EXPECT_EQ(before.mControl, mode.mControl);
        EXPECT_EQ(after, before);
    }
}

TEST(DemoGain_DenormalMode, TheRoutineSoundsTheSameInEveryCallersModeAndRestoresIt) {
    // Noise that decays into denormals, then the largest samples that are processed.
    Signal input = noise(2, 4096, 9, 6.0);
    for (std::vector<float>& samples : input) {
        for (std::size_t n = 0; n < samples.size(); ++n) {
            samples[n] *= std::pow(10.0F, -static_cast<float>(n) / 80.0F);
        }
        samples.back() = 1e30F;
    }
    AlgInstance plain(2, 48000.0);
    plain.set(withSwitches({}, 7));
    const Signal expected = renderChecked(plain.processor(), input).output;
    for (const SDemoGain_FloatMode& mode : callersModes()) {
        AlgInstance instance(2, 48000.0);
        instance.set(withSwitches({}, 7));
        SDemoGain_FloatMode after{};
        const auto process = [&](const float* const* inputs, float* const* outputs, std::int32_t frames) {
            const CallersMode caller(mode);
            instance.process(inputs, outputs, frames);
            after = DemoGain_ReadFloatMode();
        };
        const RenderOutcome found = renderChecked(process, input);
        EXPECT_EQ(firstDifference(expected, found.output), "") << std::hex << mode.mControl;
        EXPECT_EQ(firstDifference(plain, instance), "") << std::hex << mode.mControl;
        EXPECT_EQ(after, mode);
    }
}

TEST(DemoGain_DenormalMode, NoSubnormalLeavesTheRoutine) {
    for (const float mix : {0.0F, 0.001F, 0.5F, 1.0F}) {
        Signal input = subnormals(2, 3000, 21);
        for (std::size_t n = 0; n < 2000; n += 2) {
            input[0][n] = 1e-30F * input[0][n] + 1e-37F; // on both sides of the smallest normal number
        }
        AlgInstance instance(2, 48000.0);
        AlgParameters parameters;
        parameters.mix = mix;
        parameters.volume = 0.0F;
        parameters.gain = 0.0F;
        instance.set(parameters);
        const Signal output = renderChecked(instance.processor(), input).output;
        for (const std::vector<float>& samples : output) {
            for (const float sample : samples) {
                ASSERT_NE(std::fpclassify(sample), FP_SUBNORMAL) << sample;
            }
        }
    }
}

} // namespace
} // namespace varno::test::denormalMode
