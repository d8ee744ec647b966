#ifndef VARNO_APPS_VARNO_LIVE_RTAUDIOBACKEND_H
#define VARNO_APPS_VARNO_LIVE_RTAUDIOBACKEND_H

#include "LiveBackend.h"
#include "RtAudioFunctions.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>

namespace varno {

/// The default devices of PulseAudio or, where none answers, of ALSA, through the RtAudio library. Rate and
/// block length are what was asked for, or the nearest that the device has, and stay.
class RtAudioBackend : public LiveBackend {
public:
    /// Opens the devices. @throws SoundUnavailable where there are none or they refuse
    RtAudioBackend(const RtAudioFunctions& audio, const LiveRequest& request);
    ~RtAudioBackend() override;

    std::string description() const override { return "RtAudio, " + mSystem; }
    const LiveStatus& status() const override { return *mStatus; }
    void start(LiveProcess process) override;
    void check() override;

private:
    struct System {
        const char* name;
        rtaudio_api_t api;
    };
    static const System kSystems[2]; ///< In the order in which they are tried.

    void open(const System& system);
    void openStream();
    void close();
    int process(void* output, void* input, unsigned frames, bool hasOverrun) noexcept;

    RtAudioFunctions mAudio;
    LiveRequest mRequest;
    std::string mSystem;
    rtaudio_t mStream = nullptr;
    std::optional<LiveStatus> mStatus;
    LiveProcess mProcess;
    std::atomic<std::int64_t> mFrames{0}; ///< Processed so far.
    std::int64_t mLastFrames = 0;         ///< At the last check.
    std::chrono::steady_clock::time_point mLastCheck;
};

} // namespace varno

#endif
