#include "Session/LiveStatus.h"

#include "CommandLine/CommandError.h"

namespace varno {

void LiveWatch::requireRunning() const {
    if (const auto ending = mStatus.ending()) {
        throw WorkError(mDescription + ": the sound system has ended" +
                        (ending->empty() ? "" : " (" + *ending + ')'));
    }
}

std::optional<std::string> LiveWatch::newOverruns() {
    const int overruns = mStatus.overruns();
    if (overruns == mToldOverruns) {
        return std::nullopt;
    }
    mToldOverruns = overruns;
    return overrunText(overruns) + " so far: the sound was interrupted";
}

std::string overrunText(int overruns) {
    return std::to_string(overruns) + (overruns == 1 ? " overrun" : " overruns");
}

} // namespace varno
