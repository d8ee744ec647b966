#ifndef VARNO_TESTS_APPS_VARNO_SESSION_FAKEBACKEND_H
#define VARNO_TESTS_APPS_VARNO_SESSION_FAKEBACKEND_H

#include "Session/LiveBackend.h"

/// A sound system whose blocks a test processes itself.

namespace varno::test {

class FakeBackend : public LiveBackend {
public:
    explicit FakeBackend(const LiveRequest& request, double rateHz = 48'000.0)
        : mRequest(request),
          mStatus(rateHz, request.blockFrames) {}

    std::string description() const override { return "Fake client " + mRequest.name; }
    const LiveStatus& status() const override { return mStatus; }
    void start(LiveProcess process) override { mProcess = std::move(process); }
    void setLatency(int frames) override { mLatencyFrames = frames; }

    /// As last reported; -1 before.
    int latencyFrames() const { return mLatencyFrames; }
    LiveStatus& changeableStatus() { return mStatus; }
    const LiveRequest& request() const { return mRequest; }
    /// Processes one block, as the sound system does.
    void run(const float* const* inputs, float* const* outputs, int frames) const {
        mProcess(inputs, outputs, frames);
    }

private:
    LiveRequest mRequest;
    LiveStatus mStatus;
    LiveProcess mProcess;
    int mLatencyFrames = -1;
};

} // namespace varno::test

#endif
