/// Regular calls of a window.
#ifndef VARNO_FORMATS_CLAP_WINDOW_WINDOWCLOCK_H
#define VARNO_FORMATS_CLAP_WINDOW_WINDOWCLOCK_H

#include "CLAP/Clap/Gui.h"
#include "CLAP/HostCalls.h"

#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace varno {

/// While it lives, the host calls the plug-in about 30 times a second on its main thread: by a timer of the
/// host's or, where that has none, by on_main_thread(), which a thread of this object requests. [main]
class WindowClock {
public:
    /// @param host outlives this object
    explicit WindowClock(const HostCalls& host);
    WindowClock(const WindowClock&) = delete;
    WindowClock& operator=(const WindowClock&) = delete;
    ~WindowClock();

    /// Whether a timer of the host's is this one.
    bool isTimer(clap_id timer) const { return mTimer == timer; }

private:
    void requestCalls();

    const HostCalls& mHost;
    const clap_host_timer_support_t* mTimers;
    std::optional<clap_id> mTimer; ///< Of the host's.
    std::mutex mMutex;
    std::condition_variable mEnd;
    bool mIsOver = false; ///< Under the mutex.
    std::thread mThread;  ///< Where the host has no timers.
};

} // namespace varno

#endif
