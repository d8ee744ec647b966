#include "Session/EventLoop.h"

#include "CommandLine/Interruption.h"

#include <algorithm>
#include <limits>
#include <poll.h>

namespace varno {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kUntilAnEvent = -1;
constexpr short kWorthTelling = POLLIN | POLLHUP | POLLERR;

} // namespace

void TimerQueue::start(Period period, const void* owner, Wake wake, TimePoint now) {
    stop(owner);
    period = std::max(period, kShortestPeriod);
    mTimers.push_back(std::make_shared<Timer>(Timer{period, owner, std::move(wake), now + period}));
}

void TimerQueue::stop(const void* owner) {
    const auto found = std::ranges::find(mTimers, owner, &Timer::owner);
    if (found != mTimers.end()) {
        (*found)->hasEnded = true;
        mTimers.erase(found);
    }
}

std::optional<TimerQueue::TimePoint> TimerQueue::next() const {
    const auto first = std::ranges::min_element(mTimers, {}, &Timer::due);
    return first == mTimers.end() ? std::nullopt : std::optional((*first)->due);
}

void TimerQueue::runDue(TimePoint now) {
    // A call may start and stop timers, its own too, so it runs on a list that holds them.
    std::vector<std::shared_ptr<Timer>> due;
    std::ranges::copy_if(mTimers, std::back_inserter(due),
                         [&](const auto& timer) { return timer->due <= now; });
    for (const auto& timer : due) {
        if (!timer->hasEnded) {
            timer->due += ((now - timer->due) / timer->period + 1) * timer->period;
            timer->wake();
        }
    }
}

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
            // The descriptor was closed before its watch was ended.
            unwatch(watches[i]->descriptor, watches[i]->owner);
        } else if ((polls[i].revents & kWorthTelling) != 0) {
            watches[i]->wake();
        }
    }
}

// Rounded up, so that the wait does not end before the timer is due.
int EventLoop::waitMs() const {
    const auto next = mTimers.next();
    if (!next) {
        return kUntilAnEvent;
    }
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(*next - Clock::now()).count();
    return static_cast<int>(std::clamp<decltype(wait)>(wait, 0, std::numeric_limits<int>::max()));
}

} // namespace varno
