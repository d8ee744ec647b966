#include "Tests/Integration/Editor/HostLoop.h"

#include <poll.h>

namespace varno::test {

namespace {

bool isReadable(int descriptor) {
    pollfd state{descriptor, POLLIN, 0};
    return poll(&state, 1, 0) == 1;
}

} // namespace

void HostLoop::turn() {
    mClient.synchronise();
    wakeWatches();
    wakeTimers();
    const auto turns = mTurns;
    for (const auto& [owner, turn] : turns) {
        if (mTurns.contains(owner)) {
            turn();
        }
    }
}

// What is called may start and end watches and timers.

void HostLoop::wakeWatches() {
    const auto watches = mWatches;
    for (const auto& [key, wake] : watches) {
        if (mWatches.contains(key) && isReadable(key.first)) {
            wake();
        }
    }
}

void HostLoop::wakeTimers() {
    const auto now = std::chrono::steady_clock::now();
    const auto timers = mTimers;
    for (const auto& [owner, timer] : timers) {
        if (const auto found = mTimers.find(owner); found != mTimers.end() && found->second.due <= now) {
            found->second.due = now + found->second.period;
            timer.wake();
        }
    }
}

void HostLoop::watch(int descriptor, const void* owner, Wake wake) {
    mWatches[{descriptor, owner}] = std::move(wake);
}

void HostLoop::unwatch(int descriptor, const void* owner) {
    mWatches.erase({descriptor, owner});
}

void HostLoop::startTimer(std::chrono::milliseconds period, const void* owner, Wake wake) {
    mTimers[owner] = {period, std::chrono::steady_clock::now() + period, std::move(wake)};
}

void HostLoop::stopTimer(const void* owner) {
    mTimers.erase(owner);
}

} // namespace varno::test
