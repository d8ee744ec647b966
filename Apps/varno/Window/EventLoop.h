#ifndef VARNO_APPS_VARNO_WINDOW_EVENTLOOP_H
#define VARNO_APPS_VARNO_WINDOW_EVENTLOOP_H

#include "TimerQueue.h"

#include <functional>
#include <memory>
#include <vector>

namespace varno {

/// Waits for file descriptors and for the time, and calls who wants to know. Calls may start and end watches
/// and timers, their own too. What a call throws ends run(). [main]
class EventLoop {
public:
    using Wake = std::function<void()>;

    /// Calls `wake` whenever the descriptor can be read or has come to its end.
    void watch(int descriptor, const void* owner, Wake wake);
    /// Ends that watch, if there is one. The descriptor may be closed already.
    void unwatch(int descriptor, const void* owner);

    /// Calls `wake` every `period`, in the place of an earlier timer of the owner's.
    void startTimer(TimerQueue::Period period, const void* owner, Wake wake);
    /// Ends that timer, if there is one.
    void stopTimer(const void* owner);

    /// Called before each wait: for whatever has arrived without a descriptor telling it.
    void setBeforeWait(Wake wake) { mBeforeWait = std::move(wake); }

    /// Goes on until quit(). @throws Interrupted once a signal has asked the program to stop: at
    /// once where it ends a wait, else at the next timer or event
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
