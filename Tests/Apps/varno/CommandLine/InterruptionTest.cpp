#include "CommandLine/Interruption.h"
#include "Files/Transfer.h"
#include "Tests/Apps/varno/Support/ChildProcess.h"
#include "Tests/Apps/varno/Support/ErrorText.h"

#include <gtest/gtest.h>
#include <sys/time.h>

#include <csignal>
#include <unistd.h>

namespace varno::test {
namespace {

class InterruptionTest : public testing::TestWithParam<int> {};

TEST_P(InterruptionTest, ASignalEndsTheWorkAtTheNextCheck) {
    const int status = inChildProcess([] {
        catchInterruptions();
        throwIfInterrupted();
        std::raise(GetParam());
        EXPECT_EQ(interruptedBySignal(), GetParam());
        EXPECT_EQ(errorText(kExitWorkFailed, throwIfInterrupted), "interrupted");
        clearInterruption();
        throwIfInterrupted();
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
}

TEST_P(InterruptionTest, ASignalThatWasIgnoredStaysIgnored) {
    const int status = inChildProcess([] {
        std::signal(GetParam(), SIG_IGN);
        catchInterruptions();
        std::raise(GetParam());
        return interruptedBySignal();
    });
    EXPECT_EQ(status, 0);
}

TEST_P(InterruptionTest, BeforeAnotherProgramASignalEndsTheProcess) {
    const auto raiseAfterwards = [] {
        catchInterruptions();
        letInterruptionsEnd();
        std::raise(GetParam());
    };
    EXPECT_EXIT(raiseAfterwards(), testing::KilledBySignal(GetParam()), "");
}

TEST_P(InterruptionTest, BeforeAnotherProgramNoSignalIsLost) {
    const int status = inChildProcess([] {
        catchInterruptions();
        std::raise(GetParam());
        EXPECT_EQ(errorText(kExitWorkFailed, letInterruptionsEnd), "interrupted");
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
}

TEST_P(InterruptionTest, BeforeAnotherProgramAnIgnoredSignalStaysIgnored) {
    const int status = inChildProcess([] {
        std::signal(GetParam(), SIG_IGN);
        catchInterruptions();
        letInterruptionsEnd();
        std::raise(GetParam());
        return 0;
    });
    EXPECT_EQ(status, 0);
}

INSTANTIATE_TEST_SUITE_P(Signals, InterruptionTest, testing::Values(SIGINT, SIGTERM, SIGHUP));

TEST(InterruptionWaitTest, ASignalEndsTheWaitForAPipe) {
    const int status = inChildProcess([] {
        catchInterruptions();
        int ends[2];
        if (::pipe(ends) != 0) {
            return 2;
        }
        struct sigaction onAlarm {};
        onAlarm.sa_handler = [](int) { ::kill(::getpid(), SIGINT); };
        ::sigaction(SIGALRM, &onAlarm, nullptr);
        const itimerval often{{0, 1000}, {0, 1000}}; // repeats: the first may come before the wait
        ::setitimer(ITIMER_REAL, &often, nullptr);
        EXPECT_EQ(errorText(kExitWorkFailed,
                            [&] { copyAll(ends[0], "pipe", STDOUT_FILENO, "nowhere", throwIfInterrupted); }),
                  "interrupted");
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace varno::test
