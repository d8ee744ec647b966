#ifndef VARNO_APPS_VARNO_LIVE_JACKBACKEND_H
#define VARNO_APPS_VARNO_LIVE_JACKBACKEND_H

#include "JackFunctions.h"
#include "JackPorts.h"
#include "LiveBackend.h"

#include <optional>
#include <vector>

namespace varno {

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

private:
    void openClient();
    void openPorts(PortDirection direction, int channels);
    void setCallbacks();
    void connect(PortDirection direction) const;
    void tellLatency(jack_latency_callback_mode_t mode) const;
    int process(jack_nframes_t frames) noexcept;

    JackFunctions mJack;
    LiveRequest mRequest;
    jack_client_t* mClient = nullptr;
    std::optional<LiveStatus> mStatus;
    std::vector<jack_port_t*> mInputs;
    std::vector<jack_port_t*> mOutputs;
    LiveProcess mProcess;
};

} // namespace varno

#endif
