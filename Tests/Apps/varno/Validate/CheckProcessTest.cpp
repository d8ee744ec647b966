#include "Validate/CheckProcess.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <unistd.h>

// What a check does to its process is a result, and never one of this process.

namespace varno::validate {
namespace {

using testing::HasSubstr;

CheckResult resultOf(void (*run)(Context&), int timeLimitS = 30) {
    const Check check{.id = "test-check", .title = "A check", .timeLimitS = timeLimitS, .run = run};
    return runInChild(check, {.path = "none.aaxplugin", .format = Format::kModule, .seed = 5});
}

TEST(CheckProcess, PassesWhereNothingIsStated) {
    const auto result = resultOf([](Context&) {});
    EXPECT_EQ(result.verdict, Verdict::kPass);
    EXPECT_TRUE(result.findings.empty());
}

TEST(CheckProcess, KeepsWhatIsStated) {
    const auto result = resultOf([](Context& context) {
        context.note("one\ntwo");
        context.expect(true, "nothing", "nothing");
        context.expect(false, "three", "");
        context.fail("four", "five");
    });
    EXPECT_EQ(result.verdict, Verdict::kFail);
    const std::vector<Finding> expected = {{Finding::Kind::kNote, "one\ntwo", ""},
                                           {Finding::Kind::kFail, "three", ""},
                                           {Finding::Kind::kFail, "four", "five"}};
    EXPECT_EQ(result.findings, expected);
    EXPECT_EQ(resultOf([](Context& context) { context.note("alone"); }).verdict, Verdict::kNote);
}

TEST(CheckProcess, HandsTheSetupOn) {
    const auto result = resultOf([](Context& context) {
        context.note(context.path().string() + ' ' + std::to_string(context.seed()));
        context.note(context.isFull() ? "full" : "quick");
    });
    ASSERT_EQ(result.findings.size(), 2U);
    EXPECT_EQ(result.findings[0].seen, "none.aaxplugin 5");
    EXPECT_EQ(result.findings[1].seen, "quick");
}

TEST(CheckProcess, CountsFailuresBeyondTheFirst) {
    const auto result = resultOf([](Context& context) {
        for (int i = 0; i < Context::kMostFailures + 3; ++i) {
            context.fail("again", "never");
        }
    });
    EXPECT_EQ(result.findings.size(), Context::kMostFailures + 1U);
    EXPECT_EQ(result.findings.back().seen, "3 more failures");
}

TEST(CheckProcess, SkipsWithTheReason) {
    const auto result = resultOf([](Context& context) { context.skip("no display"); });
    EXPECT_EQ(result.verdict, Verdict::kSkip);
    EXPECT_EQ(result.findings.at(0).seen, "no display");
}

// A failure remains one.
TEST(CheckProcess, FailsAlthoughTheRestIsSkipped) {
    const auto result = resultOf([](Context& context) {
        context.fail("a fault", "none");
        context.skip("the rest");
    });
    EXPECT_EQ(result.verdict, Verdict::kFail);
}

std::string onlyFailure(const CheckResult& result) {
    EXPECT_EQ(result.verdict, Verdict::kFail);
    return result.findings.empty() ? std::string() : result.findings.back().seen;
}

TEST(CheckProcess, ACrashFailsWithWhatWasDone) {
    const auto result = resultOf([](Context& context) {
        context.step("first");
        context.step("second");
        std::fputs("something\n\nelse: 1\n  2\t\n3\n4\nlast words\n\n", stderr);
        // The signal, and no report of a sanitizer's in its place.
        std::signal(SIGSEGV, SIG_DFL);
        std::raise(SIGSEGV);
    });
    EXPECT_EQ(onlyFailure(result),
              "ended by signal SIGSEGV in: second (printed: else: 1; 2; 3; 4; last words)");
}

TEST(CheckProcess, AnEndOfTheProcessFails) {
    EXPECT_EQ(onlyFailure(resultOf([](Context&) { ::_exit(0); })), "the process ended with status 0");
}

TEST(CheckProcess, AnExceptionFails) {
    EXPECT_EQ(onlyFailure(resultOf([](Context&) { throw std::runtime_error("wrong"); })), "wrong");
    EXPECT_EQ(onlyFailure(resultOf([](Context&) { throw 1; })), "an exception of unknown type");
    EXPECT_THAT(onlyFailure(resultOf([](Context& context) { (void)context.open(); })),
                HasSubstr("not found"));
}

TEST(CheckProcess, ACheckWithoutEndFailsInTime) {
    const auto result = resultOf(
        [](Context& context) {
            context.step("wait");
            std::this_thread::sleep_for(std::chrono::hours(1));
        },
        1);
    EXPECT_EQ(onlyFailure(result), "no end after 1 s in: wait");
}

// A program that the plug-in starts holds the child's streams, and ends with it.
TEST(CheckProcess, WhatAPluginStartsEndsWithTheCheck) {
    const auto result = resultOf([](Context& context) {
        const pid_t process = ::fork();
        if (process == 0) {
            std::this_thread::sleep_for(std::chrono::hours(1));
        }
        context.note(std::to_string(process));
    });
    ASSERT_EQ(result.verdict, Verdict::kNote);
    EXPECT_LT(result.seconds, 20.0);
    const pid_t process = std::stoi(result.findings.at(0).seen);
    // Whoever adopts it takes its status in its own time: it may be there, but no longer runs.
    for (int i = 0; i < 1000 && ::kill(process, 0) == 0; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    std::string state(1, '?');
    if (std::FILE* file = std::fopen(("/proc/" + std::to_string(process) + "/stat").c_str(), "r")) {
        EXPECT_EQ(std::fscanf(file, "%*d (%*[^)]) %c", state.data()), 1);
        std::fclose(file);
        EXPECT_THAT(state, testing::AnyOf("Z", "X"));
    }
}

} // namespace
} // namespace varno::validate
