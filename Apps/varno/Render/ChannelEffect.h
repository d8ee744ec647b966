#ifndef VARNO_APPS_VARNO_RENDER_CHANNELEFFECT_H
#define VARNO_APPS_VARNO_RENDER_CHANNELEFFECT_H

#include "AudioFile/Block.h"
#include "Render/BlockProcessor.h"
#include "Render/ChannelGroups.h"
#include "Render/RenderReport.h"
#include "Render/RenderSession.h"
#include "Render/SampleLevels.h"

#include <optional>
#include <vector>

namespace varno {

/// The effect on one group of a file's channels, and the levels of these. One thread.
class ChannelEffect {
public:
    /// Makes an instance at the settings of the session. @throws CommandError; HostError
    ChannelEffect(RenderSession& session, ChannelGroup channels, double rateHz);

    const Instance& instance() const { return mEffect->instance; }
    int latencyFrames() const { return mEffect->effect.latencyFrames(); }

    /// To be called once, before all that follows. @param steps by frame
    void start(std::vector<AutomationStep> steps);
    BlockProcessor& processor() { return *mProcessor; }

    /// What comes before the effect: levels, middle and sides where the options ask for them. @param block
    /// just read
    void prepare(AudioBlock& block);
    /// Processes the frames in place.
    void process(AudioBlock& block);
    /// What comes behind it. @param block that has been processed
    void restore(AudioBlock& block);
    /// The levels of the output. @param block as it will be written
    void measure(const AudioBlock& block);

    /// What was measured, at the end.
    GroupReport report() const;

private:
    void point(AudioBlock& block);

    const RenderOptions& mOptions;
    ChannelGroup mChannels;
    bool mIsMidSide;
    SessionEffect mEffect;
    std::optional<BlockProcessor> mProcessor;
    std::vector<float*> mSamples; ///< Where point() has found the group's.
    SampleLevels mIn;
    SampleLevels mOut;
};

} // namespace varno

#endif
