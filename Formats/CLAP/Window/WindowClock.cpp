#include "CLAP/Window/WindowClock.h"

#include <chrono>

namespace varno {

namespace {

constexpr std::chrono::milliseconds kPeriod(33);

} // namespace

WindowClock::WindowClock(const HostCalls& host)
    : mHost(host),
      mTimers(host.extension<clap_host_timer_support_t>(CLAP_EXT_TIMER_SUPPORT)) {
    clap_id timer = CLAP_INVALID_ID;
    if (mTimers != nullptr &&
        mTimers->register_timer(&host.table(), static_cast<std::uint32_t>(kPeriod.count()), &timer)) {
        mTimer = timer;
    } else {
        mThread = std::thread([this] { requestCalls(); });
    }
}

WindowClock::~WindowClock() {
    if (mTimer) {
        mTimers->unregister_timer(&mHost.table(), *mTimer);
        return;
    }
    {
        const std::lock_guard lock(mMutex);
        mIsOver = true;
    }
    mEnd.notify_one();
    mThread.join();
}

void WindowClock::requestCalls() {
    std::unique_lock lock(mMutex);
    while (!mEnd.wait_for(lock, kPeriod, [this] { return mIsOver; })) {
        lock.unlock(); // a host may take its time
        mHost.requestCallback();
        lock.lock();
    }
}

} // namespace varno
