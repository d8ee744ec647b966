#ifndef VARNO_APPS_VARNO_SESSION_EVENTLOOP_H
#define VARNO_APPS_VARNO_SESSION_EVENTLOOP_H

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace varno {

/// Periodic calls; the caller passes the time. Each owner has one timer at most. Calls may start and stop
/// timers. [main]
class TimerQueue {
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Period = std::chrono::nanoseconds;
    using Wake = std::function<void()>;

    /// Calls `wake` every `period` (at least kShortestPeriod) after `now`; replaces an earlier timer of the
    /// owner.
    void start(Period period, const void* owner, Wake wake, TimePoint now);
    /// Ends that timer, if there is one.
    void stop(const void* owner);

    /// When the next timer is due; nothing where there is none.
    std::optional<TimePoint> next() const;
    /// Calls each timer that is due, once. The times of a timer stay whole periods from its start: a late
    /// call does not delay the next, and times that have passed are skipped.
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

/// How often hosts call the timers of a data model and an editor: 30 times a second.
inline constexpr TimerQueue::Period kHostTimerPeriod = TimerQueue::Period(std::chrono::seconds(1)) / 30;

/// Waits for file descriptors and timers, and calls their functions. A call may start and end watches and
/// timers, its own too. An exception of a call ends run(). [main]
class EventLoop {
public:
    using Wake = std::function<void()>;

    /// Calls `wake` whenever the descriptor can be read or is at its end.
    void watch(int descriptor, const void* owner, Wake wake);
    /// Ends that watch, if there is one. The descriptor may be closed already.
    void unwatch(int descriptor, const void* owner);

    /// Calls `wake` every `period`; replaces an earlier timer of the owner.
    void startTimer(TimerQueue::Period period, const void* owner, Wake wake);
    /// Ends that timer, if there is one.
    void stopTimer(const void* owner);

    /// Called before each wait: for what can arrive without the descriptor becoming readable.
    void setBeforeWait(Wake wake) { mBeforeWait = std::move(wake); }

    /// Runs until quit(). @throws Interrupted after a signal: at once if it ends a wait, else at the next
    /// timer or event
    void run();
    /// Ends run() after the call that it is in.
    void quit() { mHasQuit = true; }

private:
    struct Watch {
        int descriptor;
        const void* owner;
        Wake wake;
        bool hasEnded = false;
    };

    void turn();
    int waitMs() const;

    TimerQueue mTimers;
    std::vector<std::shared_ptr<Watch>> mWatches;
    Wake mBeforeWait;
    bool mHasQuit = false;
};

} // namespace varno

#endif
