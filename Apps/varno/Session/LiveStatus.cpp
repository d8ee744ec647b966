#include "Session/LiveStatus.h"

#include "CommandLine/CommandError.h"

namespace varno {
namespace {

constexpr const char* kSoFar = " so far: the sound was interrupted";

} // namespace

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
    return overrunText(overruns) + kSoFar;
}

std::optional<std::string> LiveWatch::firstOverruns() {
    if (mFirstOverruns > 0 || mStatus.overruns() == 0) {
        return std::nullopt;
    }
    mFirstOverruns = mStatus.overruns();
    return overrunText(mFirstOverruns) + kSoFar;
}

std::optional<std::string> LiveWatch::laterOverruns() const {
    const int overruns = mStatus.overruns();
    return overruns > mFirstOverruns ? std::optional(overrunText(overruns) + " in all") : std::nullopt;
}

std::string overrunText(int overruns) {
    return std::to_string(overruns) + (overruns == 1 ? " overrun" : " overruns");
}

} // namespace varno
