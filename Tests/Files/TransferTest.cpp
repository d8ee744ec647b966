#include "Files/Transfer.h"

#include "Files/FileError.h"
#include "Tests/Apps/varno/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/time.h>
#include <unistd.h>

namespace varno::test {
namespace {

struct Ended : std::runtime_error {
    Ended()
        : std::runtime_error("ended") {}
};

// Raises SIGALRM repeatedly: the first may come before the process waits.
void raiseAlarms() {
    struct sigaction ignoring {};
    ignoring.sa_handler = [](int) {};
    ::sigaction(SIGALRM, &ignoring, nullptr);
    const itimerval often{{0, 1000}, {0, 1000}};
    ::setitimer(ITIMER_REAL, &often, nullptr);
}

// The exit status of a child process that copies from a pipe to which nothing is written.
int copyFromASilentPipe(const GoOn& goOn) {
    return inChildProcess([&] {
        int ends[2];
        if (::pipe(ends) != 0) {
            return 2;
        }
        raiseAlarms();
        try {
            copyAll(ends[0], "pipe", STDOUT_FILENO, "nowhere", goOn);
        } catch (const Ended&) {
            return 1;
        }
        return 0;
    });
}

TEST(TransferTest, AfterASignalTheCallbackEndsTheWait) {
    EXPECT_EQ(copyFromASilentPipe([] { throw Ended(); }), 1);
}

TEST(TransferTest, AfterASignalTheWaitGoesOnIfTheCallbackReturns) {
    int calls = 0;
    EXPECT_EQ(copyFromASilentPipe([&calls] {
                  if (++calls == 3) {
                      throw Ended();
                  }
              }),
              1);
}

TEST(TransferTest, WithoutACallbackTheWaitGoesOn) {
    const int status = inChildProcess([] {
        int ends[2];
        if (::pipe(ends) != 0) {
            return 2;
        }
        // The handler of the third signal closes the pipe's last open end for writing, so that the copy ends.
        static int writingEnd = ends[1];
        static volatile std::sig_atomic_t signals = 0;
        raiseAlarms();
        struct sigaction closing {};
        closing.sa_handler = [](int) {
            signals = signals + 1;
            if (signals == 3) {
                ::close(writingEnd);
            }
        };
        ::sigaction(SIGALRM, &closing, nullptr);
        copyAll(ends[0], "pipe", STDOUT_FILENO, "nowhere", {});
        return signals >= 3 ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
}

// The program at the other end of a pipe may have been ended by the signal that this one is about to receive.
TEST(TransferTest, TheCallbackIsCalledAtTheEndOfAPipe) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    const FileDescriptor pipe(ends[0]);
    ::close(ends[1]);
    char byte = 0;
    EXPECT_THROW(readUpTo(pipe.get(), &byte, 1, "pipe", [] { throw Ended(); }), Ended);
    EXPECT_EQ(readUpTo(pipe.get(), &byte, 1, "pipe", [] {}), 0U);
}

TEST(TransferTest, TheCallbackIsCalledWhereAPipeHasNoReader) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    ::close(ends[0]);
    const FileDescriptor pipe(ends[1]);
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    EXPECT_THROW(writeAll(pipe.get(), "x", "pipe", [] { throw Ended(); }), Ended);
    EXPECT_THROW(writeAll(pipe.get(), "x", "pipe", [] {}), FileError);
    std::signal(SIGPIPE, before);
}

TEST(TransferTest, TheCallbackIsCalledBetweenPieces) {
    const TemporaryFolder folder;
    writeFile(folder / "in", std::string(1 << 20, 'x'));
    const FileDescriptor in = openFile(folder / "in", O_RDONLY, {});
    const FileDescriptor out = openFile(folder / "out", O_WRONLY | O_CREAT, {}, 0600);
    int calls = 0;
    EXPECT_THROW(copyAll(in.get(), "in", out.get(), "out",
                         [&calls] {
                             if (++calls == 2) {
                                 throw Ended();
                             }
                         }),
                 Ended);
    EXPECT_EQ(calls, 2);
}

// The rest of the file moves by less and by more than is copied at a time, in both directions.
TEST(ReplaceRange, MovesWhatFollows) {
    const TemporaryFolder folder;
    std::string rest;
    for (int i = 0; rest.size() < 3'000'000; ++i) {
        rest += std::to_string(i) + ' ';
    }
    for (const std::size_t replaced : {0U, 10U, 1'500'000U}) {
        for (const std::size_t added : {0U, 10U, 7U, 2'000'000U}) {
            const std::string path = folder / "file";
            writeFile(path, "start" + std::string(replaced, 'o') + rest);
            const FileDescriptor file = openFile(path, O_RDWR, {});
            replaceRange(file.get(), 5, static_cast<std::int64_t>(replaced), std::string(added, 'n'), path);
            EXPECT_TRUE(readFile(path) == "start" + std::string(added, 'n') + rest)
                << replaced << ' ' << added;
        }
    }
}

TEST(ReplaceRange, EndsAtTheEndOfTheFile) {
    const TemporaryFolder folder;
    writeFile(folder / "file", "abcdef");
    const FileDescriptor file = openFile(folder / "file", O_RDWR, {});
    replaceRange(file.get(), 4, 100, "XYZ", "file");
    EXPECT_EQ(readFile(folder / "file"), "abcdXYZ");
}

TEST(ReadWhole, ReadsUpToItsLimit) {
    const TemporaryFolder folder;
    const std::string path = folder / "file";
    for (const std::size_t length : {0U, 1U, 65'536U, 200'000U}) {
        const std::string content(length, 'x');
        writeFile(path, content);
        EXPECT_EQ(readWhole(path, length, {}), content);
        EXPECT_EQ(readWhole(path, length + 1, {}), content);
        if (length > 0) {
            EXPECT_EQ(readWhole(path, length - 1, {}), std::nullopt);
        }
    }
}

} // namespace
} // namespace varno::test
