#include "Session/RtAudioBackend.h"

#include "CommandLine/Interruption.h"
#include "Session/SharedLibrary.h"

#include <array>
#include <cstring>

namespace varno {
namespace {

// Of the ALSA library, which prints every error, also that there is no card.
using AlsaErrorHandler = void(const char* file, int line, const char* function, int error, const char* format,
                              ...);
using AlsaSetErrorHandler = int(AlsaErrorHandler* handler);

void ignoreAlsaError(const char*, int, const char*, int, const char*, ...) {
}

constexpr int kRtAudioSuccess = 0;

// The library's C interface does not report that a device or server has ended: its reads and writes then fail
// at once, and blocks come as fast as the processor makes them. The stream has ended if more frames than
// these limits allow were processed between two checks.
constexpr double kRunawaySpeed = 2.0;  // times real time
constexpr double kLongestBurstS = 1.0; // of blocks that may have waited, as after a pause of the machine

} // namespace

// The name has the number of the library's binary interface, to which the header belongs.
RtAudioFunctions loadRtAudio() {
    const SharedLibrary library(VARNO_RTAUDIO_SONAME);
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
        setErrorHandler(ignoreAlsaError);
    }
    return audio;
}

const RtAudioBackend::System RtAudioBackend::kSystems[2] = {
    {"PulseAudio", RTAUDIO_API_LINUX_PULSE},
    {"ALSA", RTAUDIO_API_LINUX_ALSA},
};

RtAudioBackend::RtAudioBackend(const RtAudioFunctions& audio, const LiveRequest& request)
    : mAudio(audio),
      mRequest(request) {
    const SignalsBlocked inItsThreads;
    std::string refusals;
    for (const auto& system : kSystems) {
        try {
            open(system);
            return;
        } catch (const SoundUnavailable& refusal) {
            close();
            refusals += (refusals.empty() ? "" : ", ") + std::string(system.name) + ": " + refusal.what();
        }
    }
    throw SoundUnavailable(refusals);
}

RtAudioBackend::~RtAudioBackend() {
    close();
}

void RtAudioBackend::close() {
    if (mStream != nullptr) {
        mAudio.destroy(mStream);
        mStream = nullptr;
    }
}

void RtAudioBackend::open(const System& system) {
    mSystem = system.name;
    mStream = mAudio.create(system.api);
    if (mStream == nullptr || mAudio.current_api(mStream) != system.api) {
        throw SoundUnavailable("not known to the library");
    }
    mAudio.show_warnings(mStream, 0);
    if (mAudio.device_count(mStream) < 1) {
        throw SoundUnavailable("no device");
    }
    openStream();
}

void RtAudioBackend::openStream() {
    const auto channels = [](int count) { return static_cast<unsigned>(count); };
    rtaudio_stream_parameters_t input{mAudio.get_default_input_device(mStream), channels(mRequest.inputs), 0};
    rtaudio_stream_parameters_t output{mAudio.get_default_output_device(mStream), channels(mRequest.outputs),
                                       0};
    rtaudio_stream_options_t options{};
    options.flags = RTAUDIO_FLAGS_NONINTERLEAVED; // real-time scheduling is announced on standard error
    std::strncpy(options.name, mRequest.name.c_str(), sizeof options.name - 1);
    auto frames = static_cast<unsigned>(mRequest.blockFrames);
    const int result = mAudio.open_stream(
        mStream, &output, mRequest.inputs > 0 ? &input : nullptr, RTAUDIO_FORMAT_FLOAT32,
        static_cast<unsigned>(mRequest.rateHz), &frames,
        [](void* out, void* in, unsigned count, double, rtaudio_stream_status_t status, void* self) {
            return static_cast<RtAudioBackend*>(self)->process(out, in, count, status != 0);
        },
        this, &options, nullptr);
    if (result != kRtAudioSuccess) {
        const char* const reason = mAudio.error(mStream);
        throw SoundUnavailable(reason == nullptr ? "refuses the stream" : reason);
    }
    mStatus.emplace(mAudio.get_stream_sample_rate(mStream), static_cast<int>(frames));
}

void RtAudioBackend::start(LiveProcess process) {
    const SignalsBlocked inItsThreads;
    mProcess = std::move(process);
    mLastCheck = std::chrono::steady_clock::now();
    if (mAudio.start_stream(mStream) != kRtAudioSuccess) {
        throw SoundUnavailable(mSystem + " does not start the stream");
    }
}

void RtAudioBackend::check() {
    const auto now = std::chrono::steady_clock::now();
    const std::int64_t frames = mFrames.load(std::memory_order_relaxed);
    const double elapsedS = std::chrono::duration<double>(now - mLastCheck).count();
    const double mostFrames = kRunawaySpeed * (elapsedS + kLongestBurstS) * mStatus->rateHz();
    if (static_cast<double>(frames - mLastFrames) > mostFrames) {
        mStatus->end("the device does not keep time any more");
    }
    mLastCheck = now;
    mLastFrames = frames;
}

// The channels are not interleaved: one follows the other.
int RtAudioBackend::process(void* output, void* input, unsigned frames, bool hasOverrun) noexcept {
    if (hasOverrun) {
        mStatus->countOverrun();
    }
    std::array<const float*, kMostLiveChannels> inputs{};
    std::array<float*, kMostLiveChannels> outputs{};
    for (std::size_t i = 0; i < static_cast<std::size_t>(mRequest.inputs); ++i) {
        inputs[i] = static_cast<const float*>(input) + i * frames;
    }
    for (std::size_t i = 0; i < static_cast<std::size_t>(mRequest.outputs); ++i) {
        outputs[i] = static_cast<float*>(output) + i * frames;
    }
    mFrames.fetch_add(frames, std::memory_order_relaxed);
    if (mRequest.statistics != nullptr) {
        // It does not state when a block began.
        const MeasuredBlock measured(
            *mRequest.statistics,
            {.lastsNs = blockLengthNs(frames, mStatus->rateHz()), .lostBlocks = hasOverrun ? 1 : 0});
        mProcess(inputs.data(), outputs.data(), static_cast<int>(frames));
    } else {
        mProcess(inputs.data(), outputs.data(), static_cast<int>(frames));
    }
    return kRtAudioSuccess;
}

} // namespace varno
