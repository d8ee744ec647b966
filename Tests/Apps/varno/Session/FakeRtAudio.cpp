#include "Tests/Apps/varno/Session/FakeRtAudio.h"

#include <algorithm>

namespace varno::test {
namespace {

constexpr unsigned kInputDevice = 3;
constexpr unsigned kOutputDevice = 4;

FakeRtAudio* machine = nullptr;

bool has(const std::vector<rtaudio_api_t>& apis, rtaudio_api_t api) {
    return std::ranges::find(apis, api) != apis.end();
}

int openStream(rtaudio_t, rtaudio_stream_parameters_t* output, rtaudio_stream_parameters_t* input,
               rtaudio_format_t, unsigned rateHz, unsigned* frames, rtaudio_cb_t process, void* self,
               rtaudio_stream_options_t* options, rtaudio_error_cb_t) {
    machine->output = *output;
    machine->hasInput = input != nullptr;
    if (input != nullptr) {
        machine->input = *input;
    }
    machine->wantedRateHz = rateHz;
    machine->wantedFrames = *frames;
    machine->options = *options;
    machine->process = process;
    machine->self = self;
    *frames = machine->blockFrames;
    return machine->refusal == nullptr ? 0 : -1;
}

} // namespace

FakeRtAudio::FakeRtAudio() {
    machine = this;
}

FakeRtAudio::~FakeRtAudio() {
    machine = nullptr;
}

RtAudioFunctions FakeRtAudio::functions() {
    RtAudioFunctions audio{};
    audio.create = [](rtaudio_api_t wanted) {
        machine->api = has(machine->unknownApis, wanted) ? RTAUDIO_API_DUMMY : wanted;
        ++machine->openInstances;
        return reinterpret_cast<rtaudio_t>(machine);
    };
    audio.destroy = [](rtaudio_t) { --machine->openInstances; };
    audio.error = [](rtaudio_t) { return machine->refusal; };
    audio.show_warnings = [](rtaudio_t, int) {};
    audio.current_api = [](rtaudio_t) { return machine->api; };
    audio.device_count = [](rtaudio_t) { return has(machine->apisWithDevices, machine->api) ? 1 : 0; };
    audio.get_default_input_device = [](rtaudio_t) { return kInputDevice; };
    audio.get_default_output_device = [](rtaudio_t) { return kOutputDevice; };
    audio.open_stream = openStream;
    audio.start_stream = [](rtaudio_t) { return machine->refusesToStart ? -1 : 0; };
    audio.get_stream_sample_rate = [](rtaudio_t) { return machine->rateHz; };
    return audio;
}

} // namespace varno::test
