// usage: varno_stall_watch
// Finds when processors stand still although something is to be done on them: while the machine that runs
// this virtual one has other work, and in interrupts. A thread on each processor, before all other work of
// the system (SCHED_FIFO), is woken ten thousand times a second; where it comes late, the processor did
// nothing of what a program asked it to do, since the thread would have been first. Prints "watching" and,
// when SIGTERM or SIGINT ends it, a line for each stall: the processor, and its begin and end in nanoseconds
// of the monotonic clock. The begin is at most a period too late.
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <sched.h>
#include <sys/mman.h>
#include <thread>
#include <vector>

namespace {

constexpr std::int64_t kNsPerS = 1'000'000'000;
constexpr std::int64_t kPeriodNs = 100'000;
// A wake-up takes some 10 us.
constexpr std::int64_t kLeastStallNs = 50'000;
// 16 MB for each processor. It ends watching where there are more.
constexpr std::size_t kMostStalls = 1'000'000;

struct Stall {
    std::int64_t beganNs;
    std::int64_t endedNs;
};

std::int64_t nowNs() {
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * kNsPerS + time.tv_nsec;
}

void sleepUntil(std::int64_t timeNs) {
    const timespec time{timeNs / kNsPerS, timeNs % kNsPerS};
    while (::clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &time, nullptr) == EINTR) {
    }
}

// The calling thread, on this processor and before all other work.
bool comesFirstOn(int processor) {
    cpu_set_t one;
    CPU_ZERO(&one);
    CPU_SET(static_cast<std::size_t>(processor), &one);
    const sched_param first{::sched_get_priority_max(SCHED_FIFO) - 1}; // the last one is the system's own
    return ::sched_setaffinity(0, sizeof one, &one) == 0 && ::sched_setscheduler(0, SCHED_FIFO, &first) == 0;
}

class Watch {
public:
    explicit Watch(int processor)
        : mProcessor(processor) {
        mStalls.reserve(kMostStalls);
    }

    void run(const std::atomic<bool>& shallEnd) {
        if (!comesFirstOn(mProcessor)) {
            std::fprintf(stderr, "varno_stall_watch: processor %d: %s\n", mProcessor, std::strerror(errno));
            std::exit(EXIT_FAILURE);
        }
        for (std::int64_t dueNs = nowNs(); !shallEnd && mStalls.size() < kMostStalls; dueNs += kPeriodNs) {
            sleepUntil(dueNs);
            const std::int64_t wokenNs = nowNs();
            if (wokenNs - dueNs >= kLeastStallNs) {
                mStalls.push_back({dueNs, wokenNs});
                dueNs = wokenNs;
            }
        }
    }

    void print() const {
        for (const auto& [beganNs, endedNs] : mStalls) {
            std::printf("%d %lld %lld\n", mProcessor, static_cast<long long>(beganNs),
                        static_cast<long long>(endedNs));
        }
    }

private:
    int mProcessor;
    std::vector<Stall> mStalls;
};

// Waits for a signal that ends the program; all its threads leave them to this one.
void waitForTheEnd(const sigset_t& signals) {
    std::puts("watching");
    std::fflush(stdout);
    int signal = 0;
    ::sigwait(&signals, &signal);
}

} // namespace

int main() {
    sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGTERM);
    ::sigaddset(&signals, SIGINT);
    ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::vector<std::unique_ptr<Watch>> watches;
    cpu_set_t processors;
    ::sched_getaffinity(0, sizeof processors, &processors);
    for (int processor = 0; processor < CPU_SETSIZE; ++processor) {
        if (CPU_ISSET(static_cast<std::size_t>(processor), &processors)) {
            watches.push_back(std::make_unique<Watch>(processor));
        }
    }
    ::mlockall(MCL_CURRENT | MCL_FUTURE);
    std::atomic<bool> shallEnd{false};
    {
        std::vector<std::jthread> threads;
        for (const auto& watch : watches) {
            threads.emplace_back([&] { watch->run(shallEnd); });
        }
        waitForTheEnd(signals);
        shallEnd = true;
    }
    for (const auto& watch : watches) {
        watch->print();
    }
    return EXIT_SUCCESS;
}
