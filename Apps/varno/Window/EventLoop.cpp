#include "EventLoop.h"

#include "Interruption.h"

#include <algorithm>
#include <limits>
#include <poll.h>

namespace varno {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kUntilAnEvent = -1;
constexpr short kWorthTelling = POLLIN | POLLHUP | POLLERR;

} // namespace

void EventLoop::watch(int descriptor, const void* owner, Wake wake) {
    unwatch(descriptor, owner);
    mWatches.push_back(std::make_shared<Watch>(Watch{descriptor, owner, std::move(wake)}));
}

void EventLoop::unwatch(int descriptor, const void* owner) {
    const auto found = std::ranges::find_if(mWatches, [&](const auto& watch) {
        return watch->descriptor == descriptor && watch->owner == owner;
    });
    if (found != mWatches.end()) {
        (*found)->hasEnded = true;
        mWatches.erase(found);
    }
}

void EventLoop::startTimer(TimerQueue::Period period, const void* owner, Wake wake) {
    mTimers.start(period, owner, std::move(wake), Clock::now());
}

void EventLoop::stopTimer(const void* owner) {
    mTimers.stop(owner);
}

void EventLoop::run() {
    mHasQuit = false;
    while (!mHasQuit) {
        turn();
        throwIfInterrupted();
    }
}

void EventLoop::turn() {
    if (mBeforeWait) {
        mBeforeWait();
    }
    if (mHasQuit) {
        return;
    }
    const auto watches = mWatches;
    std::vector<pollfd> polls;
    for (const auto& watch : watches) {
        polls.push_back({watch->descriptor, POLLIN, 0});
    }
    const int ready = ::poll(polls.data(), polls.size(), waitMs());
    mTimers.runDue(Clock::now());
    for (std::size_t i = 0; ready > 0 && i < watches.size(); ++i) {
        if (watches[i]->hasEnded) {
            continue;
        }
        if ((polls[i].revents & POLLNVAL) != 0) {
            // Closed before its watch was ended: there is nothing to wait for.
            unwatch(watches[i]->descriptor, watches[i]->owner);
        } else if ((polls[i].revents & kWorthTelling) != 0) {
            watches[i]->wake();
        }
    }
}

// Rounded up, so that no turn comes before its timer is due.
int EventLoop::waitMs() const {
    const auto next = mTimers.next();
    if (!next) {
        return kUntilAnEvent;
    }
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(*next - Clock::now()).count();
    return static_cast<int>(std::clamp<decltype(wait)>(wait, 0, std::numeric_limits<int>::max()));
}

} // namespace varno
