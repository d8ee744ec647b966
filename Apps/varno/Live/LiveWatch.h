#ifndef VARNO_APPS_VARNO_LIVE_LIVEWATCH_H
#define VARNO_APPS_VARNO_LIVE_LIVEWATCH_H

#include "LiveStatus.h"

#include <optional>
#include <string>

namespace varno {

/// Looks after a running sound system from the main thread, some times a second. [main]
class LiveWatch {
public:
    /// @param status outlives this object @param description of the sound system, for messages
    LiveWatch(const LiveStatus& status, std::string description)
        : mStatus(status),
          mDescription(std::move(description)),
          mRateHz(status.rateHz()) {}

    /// The rate that the effect runs at.
    double rateHz() const { return mRateHz; }
    /// Whether the sound system has another one by now.
    bool hasNewRate() const { return mStatus.rateHz() != mRateHz; }
    /// Takes the sound system's rate for the effect's. @return it
    double followRate() { return mRateHz = mStatus.rateHz(); }
    /// @throws WorkError "JACK client varno: ..." once the sound system has gone
    void requireRunning() const;
    /// What there is to tell about overruns since it was last asked; nothing where there were none.
    std::optional<std::string> newOverruns();
    int overruns() const { return mStatus.overruns(); }

private:
    const LiveStatus& mStatus;
    std::string mDescription;
    double mRateHz;
    int mToldOverruns = 0;
};

/// "1 overrun", "2 overruns"
std::string overrunText(int overruns);

} // namespace varno

#endif
