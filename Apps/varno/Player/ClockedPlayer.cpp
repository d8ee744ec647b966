#include "ClockedPlayer.h"

#include "SignalsBlocked.h"

namespace varno {
namespace {

class SystemClock : public PlayerClock {
public:
    TimePoint now() override { return std::chrono::steady_clock::now(); }
    void sleepUntil(TimePoint time) override { std::this_thread::sleep_until(time); }
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
