#include "Tests/Host/FixtureSlow.h"

#include "Tests/Host/FixtureAlgorithm.h"

#include <chrono>
#include <cstdlib>
#include <ctime>
#include <string_view>
#include <thread>

namespace varno::fixture {
namespace {

constexpr int kBuffersBetween = 32;
constexpr std::chrono::milliseconds kExtra(20);

std::chrono::nanoseconds processorTime() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

void compute() {
    const auto end = processorTime() + kExtra;
    while (processorTime() < end) {
    }
}

void wait() {
    std::this_thread::sleep_for(kExtra);
}

} // namespace

void slowDown() {
    const char* const asked = std::getenv("VARNO_FIXTURE_SLOW");
    const std::string_view way = asked == nullptr ? "" : asked;
    if (way != "compute" && way != "wait") {
        return;
    }
    setHook([extra = way == "wait" ? wait : compute, buffers = 0]() mutable {
        if (++buffers % kBuffersBetween == 0) {
            extra();
        }
    });
}

} // namespace varno::fixture
