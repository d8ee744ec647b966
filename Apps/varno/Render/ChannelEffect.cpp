#include "Render/ChannelEffect.h"

#include "DemoGain_MeterLaw.h"
#include "Render/MidSide.h"

#include <algorithm>
#include <utility>

namespace varno {
namespace {

constexpr std::size_t kMidSideChannels = 2;

// Nothing for a render that is bypassed throughout. The effect describes its meters in the order of the taps.
std::optional<double> gainReductionDB(const Instance& instance, const BlockProcessor& processor) {
    if (!processor.wasActive()) {
        return std::nullopt;
    }
    std::optional<double> result;
    const auto& largest = processor.largestMeters();
    const auto& meters = instance.effect().meters;
    for (std::size_t tap = 0; tap < std::min(meters.size(), largest.size()); ++tap) {
        if (integerProperty(meters[tap].properties, AAX_eProperty_Meter_Kind) ==
            AAX_eMeterKind_GainReduction) {
            result = std::max(result.value_or(0.0), largest[tap] / -double{DemoGain::kMeterPerDB});
        }
    }
    return result;
}

} // namespace

ChannelEffect::ChannelEffect(RenderSession& session, ChannelGroup channels, double rateHz)
    : mOptions(session.options()),
      mChannels(std::move(channels)),
      mIsMidSide(mOptions.midSide && mChannels.size() == kMidSideChannels),
      mEffect(session.makeEffect(static_cast<int>(mChannels.size()), rateHz)),
      mSamples(mChannels.size()) {
}

void ChannelEffect::start(std::vector<AutomationStep> steps) {
    mProcessor.emplace(mEffect->effect, std::move(steps), mOptions.blockFrames);
}

void ChannelEffect::point(AudioBlock& block) {
    std::ranges::transform(mChannels, mSamples.begin(),
                           [&](int channel) { return block.samples()[channel]; });
}

void ChannelEffect::prepare(AudioBlock& block) {
    point(block);
    for (const float* const samples : mSamples) {
        mIn.add(samples, block.frames());
    }
    if (mIsMidSide) {
        toMidSide(mSamples[0], mSamples[1], block.frames());
    }
}

void ChannelEffect::process(AudioBlock& block) {
    point(block);
    mProcessor->process(mSamples.data(), block.frames());
}

void ChannelEffect::restore(AudioBlock& block) {
    if (mIsMidSide) {
        point(block);
        toLeftRight(mSamples[0], mSamples[1], block.frames());
    }
}

void ChannelEffect::measure(const AudioBlock& block) {
    for (const int channel : mChannels) {
        mOut.add(block.samples()[channel], block.frames());
    }
}

GroupReport ChannelEffect::report() const {
    return {.channels = mChannels,
            .peakIn = mIn.peak(),
            .peakOut = mOut.peak(),
            .gainReductionDB = gainReductionDB(mEffect->instance, *mProcessor),
            .unusableSamples = mIn.unusable()};
}

} // namespace varno
