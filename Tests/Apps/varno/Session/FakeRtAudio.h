#ifndef VARNO_TESTS_APPS_VARNO_SESSION_FAKERTAUDIO_H
#define VARNO_TESTS_APPS_VARNO_SESSION_FAKERTAUDIO_H

#include "Session/RtAudioBackend.h"

#include <string>
#include <vector>

/// An RtAudio library whose devices a test makes up.

namespace varno::test {

/// One at a time: the library's functions know no object.
class FakeRtAudio {
public:
    FakeRtAudio();
    FakeRtAudio(const FakeRtAudio&) = delete;
    FakeRtAudio& operator=(const FakeRtAudio&) = delete;
    ~FakeRtAudio();

    static RtAudioFunctions functions();

    // What the machine is like.
    std::vector<rtaudio_api_t> apisWithDevices = {RTAUDIO_API_LINUX_PULSE, RTAUDIO_API_LINUX_ALSA};
    std::vector<rtaudio_api_t> unknownApis;
    const char* refusal = nullptr; ///< Of streams.
    bool refusesToStart = false;
    unsigned blockFrames = 300; ///< Whatever was asked for.
    unsigned rateHz = 44'100;   ///< Likewise.

    // What the program has done.
    rtaudio_api_t api = RTAUDIO_API_UNSPECIFIED;
    int openInstances = 0;
    rtaudio_stream_parameters_t input{};
    rtaudio_stream_parameters_t output{};
    bool hasInput = false;
    unsigned wantedRateHz = 0;
    unsigned wantedFrames = 0;
    rtaudio_stream_options_t options{};
    rtaudio_cb_t process = nullptr;
    void* self = nullptr;
};

} // namespace varno::test

#endif
