#include "TimerQueue.h"

#include <algorithm>

namespace varno {

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

} // namespace varno
