/// The event loop that a host runs for an editor.
#ifndef VARNO_APPS_VARNO_VALIDATE_EDITORS_HOSTLOOP_H
#define VARNO_APPS_VARNO_VALIDATE_EDITORS_HOSTLOOP_H

#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <utility>

namespace varno::validate {

/// File descriptors and timers with the functions to call. Those may start and end watches and timers, their
/// own too. An `owner` tells several of them apart. [main]
class HostLoop {
public:
    using Owner = std::uintptr_t;
    using Wake = std::function<void()>;

    /// Calls `wake` in every turn in which the descriptor can be read.
    void watch(int descriptor, Owner owner, Wake wake) { mWatches[{descriptor, owner}] = std::move(wake); }
    /// @return whether there was this watch
    bool unwatch(int descriptor, Owner owner) { return mWatches.erase({descriptor, owner}) > 0; }
    /// Calls `wake` every `period`, at most once in a turn. Replaces an earlier timer of the owner.
    void startTimer(std::chrono::milliseconds period, Owner owner, Wake wake);
    /// @return whether there was this timer
    bool stopTimer(Owner owner) { return mTimers.erase(owner) > 0; }

    /// Calls what is ready and due, without waiting.
    void turn();
    /// Watches and timers.
    std::size_t count() const { return mWatches.size() + mTimers.size(); }

private:
    using Clock = std::chrono::steady_clock;
    struct Timer {
        std::chrono::milliseconds period{};
        Clock::time_point due;
        Wake wake;
    };

    std::map<std::pair<int, Owner>, Wake> mWatches;
    std::map<Owner, Timer> mTimers;
};

} // namespace varno::validate

#endif
