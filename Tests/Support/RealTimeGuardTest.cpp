// Each forbidden call is counted; without one nothing is.
#include "Tests/Support/RealTimeGuard.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <mutex>
#include <shared_mutex>
#include <stdexcept>
#include <string>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace varno::test;

namespace {

// Keeps the compiler from leaving an allocation out, or from guessing what was allocated before.
std::atomic<void*> sink;

RealTimeReport reportOf(const std::function<void()>& work) {
    RealTimeScope scope;
    work();
    return scope.finish();
}

} // namespace

TEST(RealTimeGuard, PureWorkIsClean) {
    float sum = 0.0F;
    const RealTimeReport report = reportOf([&sum] {
        for (int i = 0; i < 1000; ++i) {
            sum += static_cast<float>(i);
        }
    });
    EXPECT_TRUE(report.clean()) << textOf(report);
    EXPECT_EQ(textOf(report), "");
    EXPECT_EQ(sum, 499500.0F);
}

TEST(RealTimeGuard, NoticesTheAllocatorInEveryForm) {
    struct alignas(128) Aligned {
        char bytes[128];
    };
    // What the C++ library calls where a type requires more alignment than usual.
    constexpr const char* kOfAlignedNew = _GLIBCXX_RELEASE < 14 ? "aligned_alloc" : "posix_memalign";
    const std::pair<const char*, std::function<void()>> offences[] = {
        {"malloc",
         [] {
             sink = std::malloc(16);
             std::free(sink);
         }},
        {"calloc",
         [] {
             sink = std::calloc(2, 16);
             std::free(sink);
         }},
        {"realloc",
         [] {
             sink = nullptr;
             sink = std::realloc(sink, 16);
             std::free(sink);
         }},
        {"aligned_alloc",
         [] {
             sink = std::aligned_alloc(64, 64);
             std::free(sink);
         }},
        {"posix_memalign",
         [] {
             void* memory = nullptr;
             EXPECT_EQ(posix_memalign(&memory, 64, 64), 0);
             sink = memory;
             std::free(sink);
         }},
        {"malloc",
         [] {
             auto* number = new int(3);
             sink = number;
             delete number;
         }},
        {kOfAlignedNew,
         [] {
             auto* aligned = new Aligned();
             sink = aligned;
             delete aligned;
         }},
        {"malloc",
         [] {
             std::vector<int> numbers;
             numbers.push_back(1);
             sink = numbers.data();
         }},
    };
    for (const auto& [first, offence] : offences) {
        const RealTimeReport report = reportOf(offence);
        EXPECT_STREQ(report.first, first);
        EXPECT_EQ(report.allocations, 2);
        EXPECT_EQ(report.locks + report.files + report.waits, 0) << textOf(report);
    }
}

TEST(RealTimeGuard, NoticesAnException) {
    const RealTimeReport report = reportOf([] {
        try {
            throw 3;
        } catch (int) {
        }
    });
    EXPECT_GT(report.allocations, 0);
}

TEST(RealTimeGuard, NoticesLocks) {
    std::mutex mutex;
    std::shared_mutex shared;
    std::condition_variable condition;
    EXPECT_EQ(reportOf([&] { const std::lock_guard lock(mutex); }).locks, 2);
    EXPECT_EQ(reportOf([&] { const std::shared_lock lock(shared); }).locks, 2);
    EXPECT_EQ(reportOf([&] { const std::unique_lock lock(mutex, std::try_to_lock); }).locks, 2);
    EXPECT_EQ(reportOf([&] { condition.notify_all(); }).locks, 1);
    EXPECT_STREQ(reportOf([&] { condition.notify_one(); }).first, "pthread_cond_signal");
}

TEST(RealTimeGuard, NoticesFiles) {
    const RealTimeReport stream = reportOf([] {
        std::FILE* file = std::fopen("/dev/null", "w");
        std::fprintf(file, "%d", 3);
        std::fwrite("x", 1, 1, file);
        std::fclose(file);
    });
    EXPECT_STREQ(stream.first, "fopen");
    EXPECT_GE(stream.files, 4);

    const RealTimeReport descriptor = reportOf([] {
        const int file = open("/dev/null", O_RDWR);
        char byte = 0;
        EXPECT_EQ(write(file, &byte, 1), 1);
        EXPECT_EQ(read(file, &byte, 1), 0);
        close(file);
    });
    EXPECT_STREQ(descriptor.first, "open");
    EXPECT_EQ(descriptor.files, 4);

    EXPECT_EQ(reportOf([] { std::printf("%s%d\n", "printed ", 3); }).files, 1);
}

TEST(RealTimeGuard, NoticesWaits) {
    EXPECT_GT(reportOf([] { std::this_thread::yield(); }).waits, 0);
    EXPECT_GT(reportOf([] { std::this_thread::sleep_for(std::chrono::nanoseconds(1)); }).waits, 0);
    EXPECT_EQ(reportOf([] { syscall(SYS_getppid); }).waits, 1);
    EXPECT_GT(reportOf([] { std::thread([] {}).join(); }).waits, 1);
}

TEST(RealTimeGuard, CountsItsOwnThreadAndTimeOnly) {
    std::atomic<bool> armed = false;
    std::atomic<bool> done = false;
    std::thread other([&] {
        while (!armed) {
        }
        sink = std::malloc(16);
        std::free(sink);
        done = true;
    });
    {
        RealTimeScope scope;
        armed = true;
        while (!done) {
        }
        const RealTimeReport report = scope.finish();
        EXPECT_TRUE(report.clean()) << textOf(report);
        sink = std::malloc(16);
        std::free(sink);
        EXPECT_TRUE(scope.finish().clean());
    }
    other.join();
}

TEST(RealTimeGuard, ReportsWhatItNoticed) {
    const RealTimeReport report = reportOf([] {
        sink = std::malloc(16);
        std::free(sink);
    });
    EXPECT_EQ(textOf(report), "called malloc first; 2 allocations, 0 locks, 0 file calls, 0 waits");
}
