#ifndef VARNO_APPS_VARNO_SESSION_JACKBACKEND_H
#define VARNO_APPS_VARNO_SESSION_JACKBACKEND_H

#include "Session/LiveBackend.h"

#include <atomic>
#include <jack/jack.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace varno {

/// The functions of the JACK library that this program calls, by their names there without "jack_".
struct JackFunctions {
    decltype(&::jack_set_error_function) set_error_function;
    decltype(&::jack_set_info_function) set_info_function;
    decltype(&::jack_client_open) client_open;
    decltype(&::jack_client_close) client_close;
    decltype(&::jack_get_client_name) get_client_name;
    decltype(&::jack_get_sample_rate) get_sample_rate;
    decltype(&::jack_get_buffer_size) get_buffer_size;
    decltype(&::jack_set_process_callback) set_process_callback;
    decltype(&::jack_set_xrun_callback) set_xrun_callback;
    decltype(&::jack_set_buffer_size_callback) set_buffer_size_callback;
    decltype(&::jack_set_sample_rate_callback) set_sample_rate_callback;
    decltype(&::jack_set_freewheel_callback) set_freewheel_callback;
    decltype(&::jack_set_latency_callback) set_latency_callback;
    decltype(&::jack_on_info_shutdown) on_info_shutdown;
    decltype(&::jack_port_register) port_register;
    decltype(&::jack_port_get_buffer) port_get_buffer;
    decltype(&::jack_port_name) port_name;
    decltype(&::jack_port_get_latency_range) port_get_latency_range;
    decltype(&::jack_port_set_latency_range) port_set_latency_range;
    decltype(&::jack_recompute_total_latencies) recompute_total_latencies;
    decltype(&::jack_last_frame_time) last_frame_time;
    decltype(&::jack_frames_since_cycle_start) frames_since_cycle_start;
    decltype(&::jack_activate) activate;
    decltype(&::jack_get_ports) get_ports;
    decltype(&::jack_connect) connect;
    decltype(&::jack_free) free;
};

/// Loads the library: that of a JACK server or of PipeWire. @throws SoundUnavailable where there is none
JackFunctions loadJack();

enum class PortDirection { kInput, kOutput };

/// The fixed short name of a port, which sessions and scripts use: "in", "out" of one channel; "in_l",
/// "in_r", "out_l", "out_r" of two. @param channel below channels, from 0 on
std::string portName(PortDirection direction, int channels, int channel);

/// Which port of the program goes to which of the system's, both counted from 0. One capture port feeds both
/// inputs, one output goes to both of the first playback ports, further ports of the system stay free.
/// @param system how many ports it has
std::vector<std::pair<int, int>> portPairs(PortDirection direction, int channels, int system);

/// The program as a client of a JACK server. Rate and period are the server's, and may change while it runs.
class JackBackend : public LiveBackend {
public:
    /// Opens the client and its ports, without starting a server.
    /// @throws SoundUnavailable where no server answers or it refuses
    JackBackend(const JackFunctions& jack, const LiveRequest& request);
    ~JackBackend() override;

    std::string description() const override;
    const LiveStatus& status() const override { return *mStatus; }
    void start(LiveProcess process) override;
    void setLatency(int frames) override;

private:
    void openClient();
    void openPorts(PortDirection direction, int channels);
    void setCallbacks();
    void connect(PortDirection direction) const;
    void onOverrun() noexcept;
    void onPeriod(jack_nframes_t frames) noexcept;
    void onRate(jack_nframes_t rateHz) noexcept;
    void onFreewheel(int isFreewheeling) noexcept;
    void onShutdown(jack_status_t status, const char* reason) noexcept;
    void reportLatency(jack_latency_callback_mode_t mode) noexcept;
    void process(jack_nframes_t frames) noexcept;
    void processPorts(jack_nframes_t frames) noexcept;
    BlockCall stateOf(jack_nframes_t frames) noexcept;

    JackFunctions mJack;
    LiveRequest mRequest;
    std::atomic<int> mLatencyFrames; ///< The server asks for it on a thread of its own.
    bool mIsStarted = false;
    jack_client_t* mClient = nullptr;
    std::optional<LiveStatus> mStatus;
    std::vector<jack_port_t*> mInputs;
    std::vector<jack_port_t*> mOutputs;
    LiveProcess mProcess;
    std::atomic<bool> mIsFreewheeling{false};
    // For measuring: the length of the last block, and the server's count of frames at its end unless the
    // server freewheeled.
    jack_nframes_t mLastFrames = 0;
    std::optional<jack_nframes_t> mNextFrame;
};

} // namespace varno

#endif
