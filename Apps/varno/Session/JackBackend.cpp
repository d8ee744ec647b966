#include "Session/JackBackend.h"

#include "CommandLine/Console.h"
#include "CommandLine/Interruption.h"
#include "Session/LiveBackend.h"
#include "Session/SharedLibrary.h"

#include <algorithm>
#include <limits>
#include <pthread.h>

namespace varno {
namespace {

constexpr int kJackSuccess = 0;

// The library prints messages of its own, also where there is no server, which the program reports itself.
void ignoreJackMessage(const char*) {
}

std::string serverName() {
    const std::string name = environmentVariable("JACK_DEFAULT_SERVER");
    return name.empty() ? "default" : name;
}

// A function for the library to call, which gets the object as its last argument. When a client is closed,
// the library cancels its threads, at any instruction. What is done here is not interrupted, for that would
// end the program: nothing may be thrown there. So call() itself, which may be, has nothing to clean up and
// no noexcept. No call of the system.
template<class Result, auto kWork>
struct Callback;

template<class Result, class... Values, void (JackBackend::*kWork)(Values...) noexcept>
struct Callback<Result, kWork> {
    static Result call(Values... values, void* self) {
        int before = PTHREAD_CANCEL_ENABLE;
        ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &before);
        work(*static_cast<JackBackend*>(self), values...);
        ::pthread_setcancelstate(before, nullptr); // where the thread ends that was cancelled meanwhile
        return static_cast<Result>(kJackSuccess);
    }

private:
    [[gnu::noinline]] static void work(JackBackend& self, Values... values) noexcept {
        (self.*kWork)(values...);
    }
};

} // namespace

JackFunctions loadJack() {
    const SharedLibrary library(VARNO_JACK_SONAME);
    JackFunctions jack{};
    library.find("jack_set_error_function", jack.set_error_function);
    library.find("jack_set_info_function", jack.set_info_function);
    library.find("jack_client_open", jack.client_open);
    library.find("jack_client_close", jack.client_close);
    library.find("jack_get_client_name", jack.get_client_name);
    library.find("jack_get_sample_rate", jack.get_sample_rate);
    library.find("jack_get_buffer_size", jack.get_buffer_size);
    library.find("jack_set_process_callback", jack.set_process_callback);
    library.find("jack_set_xrun_callback", jack.set_xrun_callback);
    library.find("jack_set_buffer_size_callback", jack.set_buffer_size_callback);
    library.find("jack_set_sample_rate_callback", jack.set_sample_rate_callback);
    library.find("jack_set_freewheel_callback", jack.set_freewheel_callback);
    library.find("jack_set_latency_callback", jack.set_latency_callback);
    library.find("jack_on_info_shutdown", jack.on_info_shutdown);
    library.find("jack_port_register", jack.port_register);
    library.find("jack_port_get_buffer", jack.port_get_buffer);
    library.find("jack_port_name", jack.port_name);
    library.find("jack_port_get_latency_range", jack.port_get_latency_range);
    library.find("jack_port_set_latency_range", jack.port_set_latency_range);
    library.find("jack_recompute_total_latencies", jack.recompute_total_latencies);
    library.find("jack_last_frame_time", jack.last_frame_time);
    library.find("jack_frames_since_cycle_start", jack.frames_since_cycle_start);
    library.find("jack_activate", jack.activate);
    library.find("jack_get_ports", jack.get_ports);
    library.find("jack_connect", jack.connect);
    library.find("jack_free", jack.free);
    return jack;
}

std::string portName(PortDirection direction, int channels, int channel) {
    std::string name = direction == PortDirection::kInput ? "in" : "out";
    if (channels == 1) {
        return name;
    }
    return name + (channel == 0 ? "_l" : "_r");
}

std::vector<std::pair<int, int>> portPairs(PortDirection direction, int channels, int system) {
    std::vector<std::pair<int, int>> pairs;
    if (channels < 1 || system < 1) {
        return pairs;
    }
    const bool isOutput = direction == PortDirection::kOutput;
    const int count = isOutput ? std::max(channels, std::min(system, kMostLiveChannels)) : channels;
    for (int i = 0; i < count; ++i) {
        pairs.emplace_back(std::min(i, channels - 1), std::min(i, system - 1));
    }
    return pairs;
}

JackBackend::JackBackend(const JackFunctions& jack, const LiveRequest& request)
    : mJack(jack),
      mRequest(request),
      mLatencyFrames(request.latencyFrames) {
    const SignalsBlocked inItsThreads;
    openClient();
    try {
        openPorts(PortDirection::kInput, request.inputs);
        openPorts(PortDirection::kOutput, request.outputs);
        setCallbacks();
    } catch (...) {
        mJack.client_close(mClient);
        throw;
    }
}

JackBackend::~JackBackend() {
    mJack.client_close(mClient);
}

void JackBackend::openClient() {
    mJack.set_error_function(ignoreJackMessage);
    mJack.set_info_function(ignoreJackMessage);
    jack_status_t status{};
    mClient = mJack.client_open(mRequest.name.c_str(), JackNoStartServer, &status);
    if (mClient == nullptr) {
        const bool isThere = (status & JackServerFailed) == 0;
        throw SoundUnavailable(isThere ? "the server \"" + serverName() + "\" refuses a client \"" +
                                             mRequest.name + '"'
                                       : "no server \"" + serverName() + "\" answers");
    }
    mStatus.emplace(mJack.get_sample_rate(mClient), static_cast<int>(mJack.get_buffer_size(mClient)));
}

void JackBackend::openPorts(PortDirection direction, int channels) {
    const bool isInput = direction == PortDirection::kInput;
    for (int channel = 0; channel < channels; ++channel) {
        const std::string name = portName(direction, channels, channel);
        auto* const port = mJack.port_register(mClient, name.c_str(), JACK_DEFAULT_AUDIO_TYPE,
                                               isInput ? JackPortIsInput : JackPortIsOutput, 0);
        if (port == nullptr) {
            throw SoundUnavailable("the server refuses a port \"" + name + '"');
        }
        (isInput ? mInputs : mOutputs).push_back(port);
    }
}

void JackBackend::setCallbacks() {
    mJack.set_process_callback(mClient, Callback<int, &JackBackend::process>::call, this);
    mJack.set_xrun_callback(mClient, Callback<int, &JackBackend::onOverrun>::call, this);
    mJack.set_buffer_size_callback(mClient, Callback<int, &JackBackend::onPeriod>::call, this);
    mJack.set_sample_rate_callback(mClient, Callback<int, &JackBackend::onRate>::call, this);
    mJack.set_freewheel_callback(mClient, Callback<void, &JackBackend::onFreewheel>::call, this);
    mJack.set_latency_callback(mClient, Callback<void, &JackBackend::reportLatency>::call, this);
    mJack.on_info_shutdown(mClient, Callback<void, &JackBackend::onShutdown>::call, this);
}

void JackBackend::onOverrun() noexcept {
    mStatus->countOverrun();
}

// Blocks of any length are processed: a new period is only recorded.
void JackBackend::onPeriod(jack_nframes_t frames) noexcept {
    mStatus->setBlockFrames(static_cast<int>(frames));
}

void JackBackend::onRate(jack_nframes_t rateHz) noexcept {
    mStatus->setRate(rateHz);
}

void JackBackend::onFreewheel(int isFreewheeling) noexcept {
    mIsFreewheeling = isFreewheeling != 0;
}

void JackBackend::onShutdown(jack_status_t, const char* reason) noexcept {
    mStatus->end(reason == nullptr ? "" : reason);
}

std::string JackBackend::description() const {
    return std::string("JACK client ") + mJack.get_client_name(mClient);
}

void JackBackend::start(LiveProcess process) {
    const SignalsBlocked inItsThreads;
    mProcess = std::move(process);
    if (mJack.activate(mClient) != kJackSuccess) {
        throw SoundUnavailable("the server does not start the client");
    }
    mIsStarted = true;
    if (mRequest.shallConnect) {
        connect(PortDirection::kInput);
        connect(PortDirection::kOutput);
    }
}

void JackBackend::setLatency(int frames) {
    if (mLatencyFrames.exchange(frames) != frames && mIsStarted) {
        mJack.recompute_total_latencies(mClient);
    }
}

// The system's capture ports are outputs. A refused connection is no error: a session manager may keep
// clients apart.
void JackBackend::connect(PortDirection direction) const {
    const bool isInput = direction == PortDirection::kInput;
    const char** const names =
        mJack.get_ports(mClient, nullptr, JACK_DEFAULT_AUDIO_TYPE,
                        JackPortIsPhysical | (isInput ? JackPortIsOutput : JackPortIsInput));
    if (names == nullptr) {
        return;
    }
    int count = 0;
    while (names[count] != nullptr) {
        ++count;
    }
    const auto& ports = isInput ? mInputs : mOutputs;
    for (const auto& [own, system] : portPairs(direction, static_cast<int>(ports.size()), count)) {
        const char* const name = mJack.port_name(ports[static_cast<std::size_t>(own)]);
        mJack.connect(mClient, isInput ? names[system] : name, isInput ? name : names[system]);
    }
    mJack.free(static_cast<void*>(names));
}

void JackBackend::reportLatency(jack_latency_callback_mode_t mode) noexcept {
    const auto& from = mode == JackCaptureLatency ? mInputs : mOutputs;
    const auto& to = mode == JackCaptureLatency ? mOutputs : mInputs;
    jack_latency_range_t all{from.empty() ? 0 : std::numeric_limits<jack_nframes_t>::max(), 0};
    for (auto* port : from) {
        jack_latency_range_t range{};
        mJack.port_get_latency_range(port, mode, &range);
        all = {std::min(all.min, range.min), std::max(all.max, range.max)};
    }
    const auto own = static_cast<jack_nframes_t>(mLatencyFrames.load());
    all.min += own;
    all.max += own;
    for (auto* port : to) {
        mJack.port_set_latency_range(port, mode, &all);
    }
}

void JackBackend::process(jack_nframes_t frames) noexcept {
    if (mRequest.statistics != nullptr) {
        const MeasuredBlock measured(*mRequest.statistics, stateOf(frames));
        processPorts(frames);
    } else {
        processPorts(frames);
    }
}

// A server that freewheels calls as fast as it can. The times that jack_get_cycle_times() states are of no
// use here: they are those of a clock that the server smooths, which is far from the true one after an
// overrun.
BlockCall JackBackend::stateOf(jack_nframes_t frames) noexcept {
    BlockCall call;
    const auto expected = std::exchange(mNextFrame, std::nullopt);
    const jack_nframes_t lastFrames = std::exchange(mLastFrames, frames);
    if (mIsFreewheeling) {
        return call;
    }
    const double rateHz = mStatus->rateHz();
    call.lastsNs = blockLengthNs(frames, rateHz);
    call.wokenNs = blockLengthNs(mJack.frames_since_cycle_start(mClient), rateHz);
    const jack_nframes_t frame = mJack.last_frame_time(mClient);
    // The count wraps around. With a new period, the server has been restarted.
    if (expected && frames == lastFrames) {
        call.lostBlocks = std::max(0, static_cast<int>(frame - *expected)) / static_cast<int>(frames);
    }
    mNextFrame = frame + frames;
    return call;
}

void JackBackend::processPorts(jack_nframes_t frames) noexcept {
    const float* inputs[kMostLiveChannels] = {};
    float* outputs[kMostLiveChannels] = {};
    for (std::size_t i = 0; i < mInputs.size(); ++i) {
        inputs[i] = static_cast<const float*>(mJack.port_get_buffer(mInputs[i], frames));
    }
    for (std::size_t i = 0; i < mOutputs.size(); ++i) {
        outputs[i] = static_cast<float*>(mJack.port_get_buffer(mOutputs[i], frames));
    }
    mProcess(inputs, outputs, static_cast<int>(frames));
}

} // namespace varno
