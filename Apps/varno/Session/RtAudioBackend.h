#ifndef VARNO_APPS_VARNO_SESSION_RTAUDIOBACKEND_H
#define VARNO_APPS_VARNO_SESSION_RTAUDIOBACKEND_H

#include "Session/LiveBackend.h"

#include <rtaudio/rtaudio_c.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>

namespace varno {

/// The functions of the RtAudio library that this program calls, by their names there without "rtaudio_".
struct RtAudioFunctions {
    decltype(&::rtaudio_create) create;
    decltype(&::rtaudio_destroy) destroy;
    decltype(&::rtaudio_error) error;
    decltype(&::rtaudio_show_warnings) show_warnings;
    decltype(&::rtaudio_current_api) current_api;
    decltype(&::rtaudio_device_count) device_count;
    decltype(&::rtaudio_get_default_input_device) get_default_input_device;
    decltype(&::rtaudio_get_default_output_device) get_default_output_device;
    decltype(&::rtaudio_open_stream) open_stream;
    decltype(&::rtaudio_start_stream) start_stream;
    decltype(&::rtaudio_get_stream_sample_rate) get_stream_sample_rate;
};

/// Loads the library, and with it those of PulseAudio and ALSA. @throws SoundUnavailable where there is none
RtAudioFunctions loadRtAudio();

/// The default devices of PulseAudio or, where none answers, of ALSA, through the RtAudio library. Rate and
/// block length are those of the request, or the nearest that the device has, and do not change.
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
