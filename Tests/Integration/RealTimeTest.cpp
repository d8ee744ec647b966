// A buffer of a running instance reaches no allocator, lock, file or wait.
#include "HostedEffect.h"
#include "RealTimeGuard.h"
#include "SignalSources.h"

using namespace varno;
using namespace varno::test;

namespace {

class RealTime : public HostedEffect {};

TEST_F(RealTime, holdsWhileParametersMove) {
    std::mt19937 random(20260106);
    for (const size_t channels : {size_t{1}, size_t{2}}) {
        const auto instance = makeInstance(module(), static_cast<int32_t>(channels));
        const Signal input = swell(channels, 4096, 1, 12.0);
        Signal output = input;
        for (size_t start = 0; start < 4096; start += 512) {
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

} // namespace
