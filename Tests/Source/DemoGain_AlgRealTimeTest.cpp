// The routine calls no allocator, lock, file or wait, whatever its input.
#include "Tests/Support/AlgFixture.h"
#include "Tests/Support/RealTimeGuard.h"
#include "Tests/Support/Signal.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

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

INSTANTIATE_TEST_SUITE_P(Variants, DemoGain_AlgRealTime, testing::ValuesIn(algVariants()),
                         testing::PrintToStringParamName());

} // namespace
} // namespace varno::test
