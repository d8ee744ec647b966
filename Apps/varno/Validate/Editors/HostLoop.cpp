#include "Validate/Editors/HostLoop.h"

#include <poll.h>
#include <vector>

namespace varno::validate {

void HostLoop::startTimer(std::chrono::milliseconds period, Owner owner, Wake wake) {
    mTimers[owner] = {period, Clock::now() + period, std::move(wake)};
}

// What is called may end any watch and timer, also the one that is called.
void HostLoop::turn() {
    std::vector<std::pair<int, Owner>> ready;
    for (const auto& [key, wake] : mWatches) {
        pollfd descriptor{key.first, POLLIN, 0};
        if (::poll(&descriptor, 1, 0) > 0) {
            ready.push_back(key);
        }
    }
    for (const auto& key : ready) {
        if (const auto found = mWatches.find(key); found != mWatches.end()) {
            const Wake wake = found->second;
            wake();
        }
    }
    const auto now = Clock::now();
    std::vector<Owner> due;
    for (const auto& [owner, timer] : mTimers) {
        if (timer.due <= now) {
            due.push_back(owner);
        }
    }
    for (const Owner owner : due) {
        if (const auto found = mTimers.find(owner); found != mTimers.end()) {
            found->second.due = now + found->second.period;
            const Wake wake = found->second.wake;
            wake();
        }
    }
}

} // namespace varno::validate
