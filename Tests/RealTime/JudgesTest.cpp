// Each kind of offence on an audio thread is caught by a judge who can see it.
#include "Tests/RealTime/Judges.h"

#include <atomic>
#include <cstdlib>
#include <gtest/gtest.h>
#include <mutex>
#include <sys/syscall.h>
#include <unistd.h>

namespace varno::test {
namespace {

// Keeps the compiler from leaving an allocation out.
std::atomic<void*> sink;
std::mutex mutex;
std::atomic<int> made{0};

// Something per thread that is made at its first use and ended with its thread: the C++ library takes memory
// for the list of what there is to end.
struct PerThread {
    PerThread() { ++made; }
    ~PerThread() { --made; }
};

struct Fault {
    const char* name;
    void (*commit)();
    const char* sanitized; ///< The function that the sanitizer names; null where it sees nothing.
    bool isSystemCall;     ///< One surely: the C library may make some for the others too.
};

const Fault kFaults[] = {
    {"Allocation", [] { sink = std::malloc(16); }, "malloc", false},
    {"Free", [] { std::free(sink.exchange(nullptr)); }, "free", false},
    {"Mutex", [] { const std::lock_guard lock(mutex); }, "pthread_mutex_lock", false},
    {"Sleep", [] { usleep(1); }, "usleep", true},
    {"Exception",
     [] {
         try {
             throw 3;
         } catch (int) {
         }
     },
     "malloc", false},
    {"ThreadLocal",
     [] {
         thread_local const PerThread object;
         sink = const_cast<PerThread*>(&object);
     },
     "calloc", false},
    {"SystemCall", [] { syscall(SYS_getppid); }, nullptr, true},
};

constexpr std::int64_t kBlocks = 20;
constexpr int kFaultyBlock = 5;

// The effect in the host library, which commits a fault in one of its blocks.
class FaultyClient : public AudioClient {
public:
    explicit FaultyClient(void (*fault)())
        : mFault(fault) {
        sink = std::malloc(16); // to be freed
    }
    void prepare(int frames, std::mt19937& ioRandom) override { mClient->prepare(frames, ioRandom); }
    void process(int frames) override {
        mClient->process(frames);
        if (++mBlock == kFaultyBlock && mFault != nullptr) {
            mFault();
        }
    }
    void disturb(std::mt19937& ioRandom) override { mClient->disturb(ioRandom); }
    std::string complaints() override { return mClient->complaints(); }

private:
    void (*mFault)();
    std::unique_ptr<AudioClient> mClient = audioClients().front().make();
    int mBlock = 0;
};

Verdict judgeFault(Judge by, void (*fault)()) {
    return judge(by, {.make = [fault] { return std::make_unique<FaultyClient>(fault); }, .blocks = kBlocks});
}

class Judges : public testing::TestWithParam<Fault> {};

TEST_P(Judges, catchIt) {
    ASSERT_TRUE(GetParam().sanitized != nullptr || GetParam().isSystemCall);
    const Verdict sanitized = judgeFault(Judge::kSanitizer, GetParam().commit);
    if (GetParam().sanitized != nullptr) {
        const std::string name = '`' + std::string(GetParam().sanitized) + '`';
        EXPECT_NE(sanitized.report.find(name), std::string::npos) << sanitized.report;
        EXPECT_EQ(sanitized.blocks, kFaultyBlock - 1) << sanitized.report;
        EXPECT_FALSE(sanitized.isClean);
    } else {
        EXPECT_TRUE(sanitized.isClean) << sanitized.report;
    }
    if (GetParam().isSystemCall) {
        const Verdict killed = judgeFault(Judge::kSystemCalls, GetParam().commit);
        EXPECT_EQ(killed.report, "killed by signal 9");
        EXPECT_EQ(killed.blocks, kFaultyBlock - 1);
        EXPECT_FALSE(killed.isClean);
    }
}

INSTANTIATE_TEST_SUITE_P(Faults, Judges, testing::ValuesIn(kFaults),
                         [](const auto& fault) { return std::string(fault.param.name); });

TEST(JudgesWithoutAFault, passTheSameClient) {
    for (const Judge by : {Judge::kNone, Judge::kSanitizer, Judge::kSystemCalls}) {
        const Verdict verdict = judgeFault(by, nullptr);
        EXPECT_TRUE(verdict.isClean) << verdict.report;
        EXPECT_EQ(verdict.blocks, kBlocks);
    }
}

} // namespace
} // namespace varno::test
