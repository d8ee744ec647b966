#include "Render/ChannelEffect.h"

#include "Render/MeterLevels.h"
#include "Render/MidSide.h"

#include <algorithm>
#include <utility>

namespace varno {
namespace {

constexpr std::size_t kMidSideChannels = 2;

// Nothing for a render that is bypassed throughout.
std::optional<double> gainReductionDB(const Instance& instance, const BlockProcessor& processor) {
    return processor.wasActive() ? reductionDB(instance, processor.largestMeters()) : std::nullopt;
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
