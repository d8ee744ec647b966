#include "ClockedPlayer.h"

#include <csignal>

namespace varno {
namespace {

class SystemClock : public PlayerClock {
public:
    TimePoint now() override { return std::chrono::steady_clock::now(); }
    void sleepUntil(TimePoint time) override { std::this_thread::sleep_until(time); }
};

// Signals are for the thread that waits for them: they end its wait.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &mBefore);
    }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &mBefore, nullptr); }

private:
    sigset_t mBefore{};
};

} // namespace

ClockedPlayer::ClockedPlayer(const PlayerFormat& format, AudioPull pull) {
    const SignalsBlocked inTheNewThread;
    mThread = std::thread([this, format, pull = std::move(pull)] {
        SystemClock clock;
        playPaced(format, pull, clock, mShallStop);
    });
}

ClockedPlayer::~ClockedPlayer() {
    mShallStop.store(true, std::memory_order_relaxed);
    mThread.join();
}

} // namespace varno
