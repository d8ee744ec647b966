#ifndef VARNO_APPS_VARNO_WINDOW_TIMERQUEUE_H
#define VARNO_APPS_VARNO_WINDOW_TIMERQUEUE_H

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace varno {

/// Periodic calls, by whatever clock the caller reads. Each owner has one timer at most. Timers may come and
/// go inside the calls. [main]
class TimerQueue {
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Period = std::chrono::nanoseconds;
    using Wake = std::function<void()>;

    /// Calls `wake` every `period` (at least kShortestPeriod) after `now`, in the place of an earlier timer
    /// of the owner's.
    void start(Period period, const void* owner, Wake wake, TimePoint now);
    /// Ends that timer, if there is one.
    void stop(const void* owner);

    /// When the next timer is due; nothing where there is none.
    std::optional<TimePoint> next() const;
    /// Calls each timer that is due, once. The times of a timer stay whole periods from its start: a late
    /// call does not move those after it, and times that have passed meanwhile are left out.
    void runDue(TimePoint now);

    static constexpr Period kShortestPeriod = std::chrono::milliseconds(1);

private:
    struct Timer {
        Period period;
        const void* owner;
        Wake wake;
        TimePoint due;
        bool hasEnded = false;
    };

    std::vector<std::shared_ptr<Timer>> mTimers;
};

} // namespace varno

#endif
