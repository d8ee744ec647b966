/// A plug-in while it is active.
#ifndef VARNO_FORMATS_CLAP_AUDIOSIDE_H
#define VARNO_FORMATS_CLAP_AUDIOSIDE_H

#include "CLAP/Clap/Plugin.h"
#include "CLAP/HostCalls.h"
#include "CLAP/ParameterList.h"
#include "CLAP/ValueEvents.h"
#include "CLAP/ValueExchange.h"
#include "Shared/RunningEffect.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <vector>

namespace varno {

/// Runs the effect for a host: takes values at the frames of their events, and those that the main thread
/// has set at the start of a buffer. A value that arrives before the first frame holds at once; later,
/// continuous ones glide. Nothing of the main thread is waited for.
class AudioSide {
public:
    /// What everything outlives.
    struct Surroundings {
        const ParameterList& parameters;
        ValueExchange& values;
        const HostCalls& host;
    };

    /// At the present values. The quality is that of `setup` until the end. @throws HostError where the rate
    /// is refused [main]
    AudioSide(std::shared_ptr<Module> module, const RunSetup& setup, const Surroundings& surroundings);

    /// Frames by which the sound is late. [any]
    std::int32_t latencyFrames() const noexcept { return mEffect.oversampling().latencyFrames(); }
    /// The quality that it was made with. [any]
    std::int32_t quality() const noexcept { return mQuality; }
    /// What a meter shows, 0 to 1. @param tap below meters() [any]
    float meter(std::size_t tap) const noexcept { return mMeters[tap].load(std::memory_order_relaxed); }
    std::size_t meters() const noexcept { return mMeters.size(); }

    /// Clears the sound so far. [audio]
    void reset() noexcept;
    /// Processes a buffer of any length; input and output may be the same memory. No lock, no allocation, no
    /// system call. [audio]
    clap_process_status process(const clap_process_t& process) noexcept;
    /// Exchanges events without a buffer. @param in, out may be null [audio]
    void flush(const clap_input_events_t* in, const clap_output_events_t* out) noexcept;

private:
    bool point(const clap_process_t& process) noexcept;
    void takeChanges() noexcept;
    std::uint32_t receive(const clap_input_events_t& events, std::uint32_t next,
                          std::uint32_t frame) noexcept;
    void apply(std::size_t parameter) noexcept;
    void processBuffer(std::int32_t frames) noexcept;

    Surroundings mAround;
    std::int32_t mQuality;
    RunningEffect mEffect;
    EventSender mSender;
    std::vector<std::atomic<float>> mMeters;
    bool mIsStarting = true;           ///< No frame has been processed yet.
    std::vector<const float*> mInputs; ///< Of the present buffer, as the next two.
    std::vector<float*> mOutputs;
};

} // namespace varno

#endif
