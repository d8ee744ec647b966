#include "Tests/Support/Subprocess.h"

#include "Tests/Support/Eventually.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/types.h>

namespace varno::test {
namespace {

TEST(Subprocess, ReportsStatusAndOutput) {
    const Outcome outcome = run({"sh", "-c", "cat; echo no >&2; exit 7"}, {.input = "yes"});

    EXPECT_EQ(outcome.status, 7);
    EXPECT_EQ(outcome.out, "yes");
    EXPECT_EQ(outcome.err, "no\n");
}

TEST(Subprocess, RunsWithTheFolderAndEnvironmentGiven) {
    EXPECT_EQ(run({"sh", "-c", "pwd; echo $word"}, {.folder = "/usr", .environment = {"word=a b"}}).out,
              "/usr\na b\n");
    EXPECT_EQ(run({"true"}, {.folder = "/a-folder-that-nobody-has"}).status, Subprocess::kCannotStart);
}

TEST(Subprocess, ReportsTheProgramsExitStatus) {
    Subprocess process({"sh", "-c", "exit 7"});

    ASSERT_TRUE(eventually([&] { return process.status().has_value(); }));
    EXPECT_EQ(process.status(), 7);
    EXPECT_EQ(process.wait().status, 7);
}

TEST(Subprocess, ReportsTheSignalThatEndedIt) {
    Subprocess process({"sleep", "1000"});
    EXPECT_EQ(process.status(), std::nullopt);

    process.signal(SIGKILL);

    EXPECT_EQ(process.wait().status, 128 + SIGKILL);
    EXPECT_EQ(process.status(), 128 + SIGKILL);
}

TEST(Subprocess, ReportsThatItCannotBeStarted) {
    Subprocess process({"a-program-that-nobody-has"});

    ASSERT_TRUE(eventually([&] { return process.status().has_value(); }));
    EXPECT_EQ(process.status(), Subprocess::kCannotStart);
}

TEST(Subprocess, IsKilledWhereItDoesNotEnd) {
    pid_t pid = 0;
    {
        const Subprocess process({"sh", "-c", "trap '' TERM; echo ignoring; exec sleep 1000"},
                                 {.patience = std::chrono::milliseconds(50)});
        pid = process.pid();
        ASSERT_TRUE(eventually([&] { return process.out() == "ignoring\n"; }));
    }

    EXPECT_EQ(kill(pid, 0), -1);
}

} // namespace
} // namespace varno::test
