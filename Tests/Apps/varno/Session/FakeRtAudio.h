#ifndef VARNO_TESTS_APPS_VARNO_SESSION_FAKERTAUDIO_H
#define VARNO_TESTS_APPS_VARNO_SESSION_FAKERTAUDIO_H

#include "Session/RtAudioBackend.h"

#include <string>
#include <vector>

/// An RtAudio library whose devices a test defines.

namespace varno::test {

/// Only one may exist at a time: the library's functions receive no object.
class FakeRtAudio {
public:
    FakeRtAudio();
    FakeRtAudio(const FakeRtAudio&) = delete;
    FakeRtAudio& operator=(const FakeRtAudio&) = delete;
    ~FakeRtAudio();

    static RtAudioFunctions functions();

    // Properties of the machine.
    std::vector<rtaudio_api_t> apisWithDevices = {RTAUDIO_API_LINUX_PULSE, RTAUDIO_API_LINUX_ALSA};
    std::vector<rtaudio_api_t> unknownApis;
    const char* refusal = nullptr; ///< Why streams are refused; null: they are not.
    bool refusesToStart = false;
    unsigned blockFrames = 300; ///< Whatever was requested.
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
