#ifndef VARNO_APPS_VARNO_LIVE_RTAUDIOFUNCTIONS_H
#define VARNO_APPS_VARNO_LIVE_RTAUDIOFUNCTIONS_H

#include <rtaudio/rtaudio_c.h>

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

} // namespace varno

#endif
