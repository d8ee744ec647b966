#include "RtAudioFunctions.h"

#include "SharedLibrary.h"

namespace varno {
namespace {

// Of the ALSA library: it prints whatever it meets, also where there is just no card.
using AlsaErrorHandler = void(const char* file, int line, const char* function, int error, const char* format,
                              ...);
using AlsaSetErrorHandler = int(AlsaErrorHandler* handler);

void keepQuiet(const char*, int, const char*, int, const char*, ...) {
}

} // namespace

// The number is that of the library's binary interface, to which the header belongs: RtAudio 5.
RtAudioFunctions loadRtAudio() {
    const SharedLibrary library("librtaudio.so.6");
    RtAudioFunctions audio{};
    library.find("rtaudio_create", audio.create);
    library.find("rtaudio_destroy", audio.destroy);
    library.find("rtaudio_error", audio.error);
    library.find("rtaudio_show_warnings", audio.show_warnings);
    library.find("rtaudio_current_api", audio.current_api);
    library.find("rtaudio_device_count", audio.device_count);
    library.find("rtaudio_get_default_input_device", audio.get_default_input_device);
    library.find("rtaudio_get_default_output_device", audio.get_default_output_device);
    library.find("rtaudio_open_stream", audio.open_stream);
    library.find("rtaudio_start_stream", audio.start_stream);
    library.find("rtaudio_get_stream_sample_rate", audio.get_stream_sample_rate);
    AlsaSetErrorHandler* setErrorHandler = nullptr;
    library.findOptional("snd_lib_error_set_handler", setErrorHandler);
    if (setErrorHandler != nullptr) {
        setErrorHandler(keepQuiet);
    }
    return audio;
}

} // namespace varno
