// Processing a buffer calls no allocator, lock, file or wait; changing parameters calls no allocator.
#include "Tests/Integration/HostedEffect.h"
#include "Tests/Support/RealTimeGuard.h"
#include "Tests/Support/Signal.h"

namespace varno::test {
namespace {

class RealTime : public HostedEffect {};

TEST_F(RealTime, holdsWhileParametersMove) {
    std::mt19937 random(20260106);
    for (const std::size_t channels : {std::size_t{1}, std::size_t{2}}) {
        const auto instance = makeInstance(module(), static_cast<std::int32_t>(channels));
        const Signal input = swell(channels, 4096, 1, 12.0);
        Signal output = input;
        for (std::size_t start = 0; start < 4096; start += 512) {
            automate(*instance, randomValues(random));
            instance->setNormalized("MasterBypassID", start % 1024 == 0 ? 0.0 : 1.0);
            const float* inputs[2] = {input[0].data() + start, input[channels - 1].data() + start};
            float* outputs[2] = {output[0].data() + start, output[channels - 1].data() + start};
            RealTimeScope scope;
            instance->process(inputs, outputs, 512);
            instance->process(inputs, outputs, 0);
            const RealTimeReport report = scope.finish();
            ASSERT_TRUE(report.clean()) << textOf(report);
        }
    }
}

TEST_F(RealTime, takesNoMemoryWhereValuesMove) {
    const auto instance = makeInstance(module());
    const StoredChunk saved = instance->save();
    const std::vector<ParameterInfo>& parameters = instance->parameters();
    const auto moveAll = [&](double value) {
        for (const ParameterInfo& parameter : parameters) {
            instance->setNormalized(parameter.id, value);
            instance->requestNormalized(parameter.id, 1.0 - value);
        }
        instance->idle();
        EXPECT_FALSE(instance->equals(saved));
    };
    moveAll(0.25); // the queue of requests grows once
    RealTimeScope scope;
    moveAll(0.75);
    const RealTimeReport report = scope.finish();
    EXPECT_EQ(report.allocations, 0) << textOf(report);
    EXPECT_EQ(instance->normalized("Gain"), 0.25);
}

} // namespace
} // namespace varno::test
