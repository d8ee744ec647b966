#ifndef VARNO_APPS_VARNO_SESSION_LIVEBACKEND_H
#define VARNO_APPS_VARNO_SESSION_LIVEBACKEND_H

#include "CommandLine/CommandTable.h"
#include "DemoGain_Oversampling.h"
#include "DemoGain_SampleRates.h"
#include "Host/HostOptions.h"
#include "Session/BlockStatistics.h"
#include "Session/LiveStatus.h"

#include <chrono>
#include <functional>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace varno {

/// Processes a block: one pointer per requested channel. Real-time and without exceptions. [audio]
using LiveProcess = std::function<void(const float* const* inputs, float* const* outputs, int frames)>;

/// Most channels in each direction.
inline constexpr int kMostLiveChannels = 2;

/// The sample rates of --rate.
inline constexpr NumberRange kSampleRates = {.least = DemoGain_SampleRates::kLowestHz,
                                             .most = DemoGain_SampleRates::kHighestHz,
                                             .usual = kDefaultSampleRateHz};
inline constexpr int kUsualPeriodFrames = 256;

/// What the program requests of a sound system.
struct LiveRequest {
    std::string name = "varno"; ///< As other programs show it.
    int inputs = 2;             ///< Channels, 0 to kMostLiveChannels.
    int outputs = 2;            ///< Channels, 1 to kMostLiveChannels.
    bool shallConnect = true;   ///< To the system's capture and playback, where connections are optional.
    int latencyFrames = kDemoGain_LatencyFrames; ///< Of what is processed, until setLatency().
    double rateHz = kDefaultSampleRateHz;        ///< Where the sound system leaves the choice.
    int blockFrames = kUsualPeriodFrames;        ///< Likewise.
    /// Where blocks are measured, and outlives the sound system; null: they are not.
    BlockStatistics* statistics = nullptr;
};

/// How often a session calls LiveBackend::check().
inline constexpr std::chrono::milliseconds kSoundCheckPeriod(100);

/// A sound system is not available: not installed, not running, without devices. what() states which.
class SoundUnavailable : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A sound system with the program as its client. Made and destroyed by one thread. [main]
class LiveBackend {
public:
    LiveBackend() = default;
    LiveBackend(const LiveBackend&) = delete;
    LiveBackend& operator=(const LiveBackend&) = delete;
    /// Returns once nothing processes any more.
    virtual ~LiveBackend() = default;

    /// What it is, for people: "JACK client varno".
    virtual std::string description() const = 0;
    /// Rate, block length, overruns, end. [any]
    virtual const LiveStatus& status() const = 0;
    /// Starts processing, on a thread of the sound system. Called once.
    /// @throws SoundUnavailable where the sound system refuses
    virtual void start(LiveProcess process) = 0;
    /// The latency of what is processed from now on, in frames, for sound systems that report it.
    virtual void setLatency(int /*frames*/) {}
    /// Detects what the sound system does not report itself. To be called every kSoundCheckPeriod after
    /// start().
    virtual void check() {}
};

/// The word for the first sound system that is available.
inline constexpr std::string_view kAnyBackend = "auto";

/// A kind of sound system.
struct BackendEntry {
    std::string_view word; ///< On the command line: "jack".
    std::string_view name; ///< For people: "JACK".
    /// Throws SoundUnavailable.
    std::unique_ptr<LiveBackend> (*open)(const LiveRequest& request);
};

/// All of them, the preferred first.
std::span<const BackendEntry> backends();

/// Opens the sound system of that word, or with kAnyBackend the first available one.
/// @throws SoundUnavailable which names what was tried and why it failed, in one line
std::unique_ptr<LiveBackend> openBackend(std::string_view word, const LiveRequest& request,
                                         std::span<const BackendEntry> entries = backends());

} // namespace varno

#endif
