#include "Tests/Host/FixtureSlow.h"

#include "Tests/Host/FixtureAlgorithm.h"

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <random>
#include <string_view>
#include <thread>

namespace varno::fixture {
namespace {

constexpr int kBuffersBetween = 32;
constexpr std::chrono::milliseconds kExtra(20);
// Of the linear congruential generator of the C++ library, each of which needs the last: about 0.1 ms.
constexpr int kSteadySteps = 20'000;

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

void workSteadily() {
    static volatile std::uint_fast32_t last = 0; // or the compiler would leave the work out
    std::minstd_rand numbers(last);
    numbers.discard(kSteadySteps);
    last = numbers();
}

} // namespace

void slowDown() {
    const char* const asked = std::getenv("VARNO_FIXTURE_SLOW");
    const std::string_view way = asked == nullptr ? "" : asked;
    if (way == "steady") {
        setHook(workSteadily);
    }
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
