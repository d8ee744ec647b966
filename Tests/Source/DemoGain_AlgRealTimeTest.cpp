// The routine calls no allocator, lock, file or wait, whatever its input.
#include "Tests/Support/AlgFixture.h"
#include "Tests/Support/RealTimeGuard.h"
#include "Tests/Support/Signal.h"

#include <gtest/gtest.h>

#include <array>
#include <deque>
#include <limits>
#include <random>
#include <vector>

namespace varno::test {
namespace {

// Processes `input` in place, in buffers of `block` frames, counting from the very first one.
RealTimeReport reportOf(AlgInstance& instance, Signal input, std::int32_t block) {
    std::vector<float*> buffers(input.size());
    const auto frames = static_cast<std::int32_t>(framesOf(input));
    RealTimeScope scope;
    for (std::int32_t start = 0; start + block <= frames; start += block) {
        for (std::size_t channel = 0; channel < input.size(); ++channel) {
            buffers[channel] = input[channel].data() + start;
        }
        instance.process(buffers.data(), buffers.data(), block);
    }
    return scope.finish();
}

class DemoGain_AlgRealTime : public testing::TestWithParam<AlgVariant> {};

TEST_P(DemoGain_AlgRealTime, RandomParametersAndBlocks) {
    std::mt19937 engine(6);
    for (std::uint32_t i = 0; i < 200; ++i) {
        AlgInstance instance(GetParam(), kSampleRates[i % std::size(kSampleRates)]);
        instance.set(randomParameters(engine));
        const RealTimeReport report =
            reportOf(instance, swell(GetParam(), 1024, i, 24.0), i % 2 == 0 ? 32 : 512);
        ASSERT_TRUE(report.clean()) << textOf(report);
    }
}

TEST_P(DemoGain_AlgRealTime, BadInputAndRecovery) {
    AlgInstance instance(GetParam(), 48000.0);
    Signal input = subnormals(GetParam(), 1024, 3);
    input[0][5] = std::numeric_limits<float>::quiet_NaN();
    input[0][6] = std::numeric_limits<float>::infinity();
    input[0][7] = std::numeric_limits<float>::max();
    instance.field(eAlgFieldID_GainLin) = std::numeric_limits<float>::quiet_NaN();
    instance.state().mHp.b0 = std::numeric_limits<float>::infinity();
    const RealTimeReport report = reportOf(instance, input, 64);
    EXPECT_TRUE(report.clean()) << textOf(report);
}

TEST_P(DemoGain_AlgRealTime, InstancesSideBySide) {
    constexpr std::size_t kInstances = 7;
    std::deque<AlgInstance> instances;
    std::vector<SDemoGain_Alg_Context*> contexts;
    Signal audio = noise(2 * kInstances, 64, 4, 0.0);
    std::vector<std::array<float*, 2>> buffers;
    for (std::size_t i = 0; i < kInstances; ++i) {
        buffers.push_back({audio[2 * i].data(), audio[2 * i + 1].data()});
    }
    for (std::size_t i = 0; i < kInstances; ++i) {
        AlgInstance& instance = instances.emplace_back(GetParam(), 48000.0);
        instance.attach(buffers[i].data(), buffers[i].data(), 64);
        contexts.push_back(&instance.context());
    }
    RealTimeScope scope;
    DemoGain_ProcessInstances(*GetParam().routine, GetParam(), contexts.data(), contexts.data() + kInstances);
    const RealTimeReport report = scope.finish();
    EXPECT_TRUE(report.clean()) << textOf(report);
}

INSTANTIATE_TEST_SUITE_P(Variants, DemoGain_AlgRealTime, testing::ValuesIn(algVariants()),
                         testing::PrintToStringParamName());

} // namespace
} // namespace varno::test
