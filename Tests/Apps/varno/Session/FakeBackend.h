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
};

} // namespace varno::test

#endif
