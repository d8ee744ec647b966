#ifndef VARNO_APPS_VARNO_PLAYER_PLAYERCLOCK_H
#define VARNO_APPS_VARNO_PLAYER_PLAYERCLOCK_H

#include <chrono>

namespace varno {

/// The time that a player goes by.
class PlayerClock {
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    virtual ~PlayerClock() = default;
    virtual TimePoint now() = 0;
    /// Returns at that time, at once where it has passed.
    virtual void sleepUntil(TimePoint time) = 0;
};

} // namespace varno

#endif
