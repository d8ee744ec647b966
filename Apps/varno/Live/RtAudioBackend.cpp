#include "RtAudioBackend.h"

#include "SignalsBlocked.h"

#include <array>
#include <cstring>

namespace varno {
namespace {

constexpr int kSuccess = 0;

// A device or a server that has gone is not told through the library's C interface: its reads and writes fail
// at once from then on, and blocks come as fast as the processor makes them. This many times real time is
// none any more,
constexpr double kRunawaySpeed = 2.0;
// beyond what may have been waiting, as after a pause of the machine.
constexpr double kLongestBurstS = 1.0;

} // namespace

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
    if (result != kSuccess) {
        const char* const reason = mAudio.error(mStream);
        throw SoundUnavailable(reason == nullptr ? "refuses the stream" : reason);
    }
    mStatus.emplace(mAudio.get_stream_sample_rate(mStream), static_cast<int>(frames));
}

void RtAudioBackend::start(LiveProcess process) {
    const SignalsBlocked inItsThreads;
    mProcess = std::move(process);
    mLastCheck = std::chrono::steady_clock::now();
    if (mAudio.start_stream(mStream) != kSuccess) {
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

// Channels lie one behind the other.
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
    mProcess(inputs.data(), outputs.data(), static_cast<int>(frames));
    return kSuccess;
}

} // namespace varno
