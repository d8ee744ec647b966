#include "Tests/Host/FixtureAlgorithm.h"

#include "Tests/Host/FixtureFaults.h"
#include "Tests/Host/FixtureParameters.h"

#include <algorithm>
#include <cmath>

namespace varno::fixture {

namespace {

thread_local Sight tSight;
std::function<void()> gHook;

void raise(float& tap, float value) {
    tap = std::max(tap, std::fabs(value));
}

template<std::int32_t kChannels>
void processOne(const Context& context) {
    const float gain = *context.bypass != 0 ? 1.0F : *context.gain;
    for (std::int32_t channel = 0; channel < kChannels; ++channel) {
        for (std::int32_t i = 0; i < *context.frames; ++i) {
            const float in = context.inputs[channel][i];
            context.scratch[i % static_cast<std::int32_t>(kScratchSize / sizeof(float))] = in * gain;
            context.outputs[channel][i] = in * gain;
            raise(context.meters[0], in);
            raise(context.meters[1], in * gain);
        }
    }
    context.state->frames += *context.frames;
    tSight = {tSight.calls + 1,
              *context.frames,
              *context.sampleRateHz,
              *context.clock,
              *context.sideChain,
              context.reserved == nullptr,
              reinterpret_cast<std::uintptr_t>(context.state) % 64 == 0};
}

} // namespace

const Sight& lastSight() {
    return tSight;
}

void setHook(std::function<void()> hook) {
    gHook = std::move(hook);
}

template<std::int32_t kChannels>
void process(void* const begin[], const void* end) {
    for (void* const* instance = begin; instance != end; ++instance) {
        processOne<kChannels>(*static_cast<const Context*>(*instance));
    }
    if (has(Fault::kPostsOnAudioThread)) {
        postFromAnywhere();
    }
    if (gHook) {
        gHook();
    }
}

template void process<1>(void* const begin[], const void* end);
template void process<2>(void* const begin[], const void* end);

} // namespace varno::fixture
