#ifndef VARNO_APPS_VARNO_LIVE_LIVEBACKEND_H
#define VARNO_APPS_VARNO_LIVE_LIVEBACKEND_H

#include "LiveStatus.h"

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

namespace varno {

/// Processes a block: one pointer per channel that was asked for. Real-time and without exceptions.
using LiveProcess = std::function<void(const float* const* inputs, float* const* outputs, int frames)>;

/// Most channels in each direction.
inline constexpr int kMostLiveChannels = 2;

/// The processed signal comes one frame late: the detector hears one sample more than the main path.
inline constexpr int kEffectLatencyFrames = 1;

/// What a sound system is asked for.
struct LiveRequest {
    std::string name = "varno"; // by which others know the program
    int inputs = 2;             // channels, 0 to kMostLiveChannels
    int outputs = 2;            // channels, 1 to kMostLiveChannels
    bool shallConnect = true;   // to the system's capture and playback, where that is not done anyway
    int latencyFrames = kEffectLatencyFrames;
    double rateHz = 48'000.0; // where the sound system leaves the choice
    int blockFrames = 256;    // likewise
};

/// A sound system cannot be had: not installed, not running, without devices. what() says which of it.
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
    /// Processes from here on, on a thread of the sound system. Called once.
    /// @throws SoundUnavailable where the sound system refuses
    virtual void start(LiveProcess process) = 0;
    /// Finds out what the sound system does not tell by itself. To be called some times a second after
    /// start().
    virtual void check() {}
};

} // namespace varno

#endif
