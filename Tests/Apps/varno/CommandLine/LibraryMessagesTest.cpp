#include "CommandLine/LibraryMessages.h"
#include "CommandLine/Console.h"
#include "Tests/Apps/varno/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <functional>
#include <optional>
#include <string_view>
#include <thread>
#include <unistd.h>

namespace varno::test {
namespace {

void writeAsALibrary(std::string_view text) {
    EXPECT_EQ(::write(STDERR_FILENO, text.data(), text.size()), static_cast<ssize_t>(text.size()));
}

// What arrives at standard error of a process that does this.
std::string arrived(const std::function<void()>& work) {
    const TemporaryFolder folder;
    const std::string path = folder / "errors";
    const int status = inChildProcess([&] {
        const int file = ::open(path.c_str(), O_WRONLY | O_CREAT, 0600);
        ::dup2(file, STDERR_FILENO);
        work();
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
    return readFile(path);
}

TEST(LibraryMessages, AreLostAndThoseOfTheProgramArrive) {
    const auto work = [] {
        writeAsALibrary("before ");
        {
            const LibrariesSilenced silenced;
            writeAsALibrary("lost ");
            printErr("own ");
        }
        writeAsALibrary("after ");
        printErr("own after");
        const LibrariesSilenced again;
        writeAsALibrary("lost ");
    };
    EXPECT_EQ(arrived(work), "before own after own after");
}

TEST(LibraryMessages, ArriveAgainAfterTheLastEnd) {
    const auto work = [] {
        std::optional<LibrariesSilenced> first(std::in_place);
        std::optional<LibrariesSilenced> second(std::in_place);
        first.reset();
        writeAsALibrary("lost ");
        second.reset();
        writeAsALibrary("after");
    };
    EXPECT_EQ(arrived(work), "after");
}

TEST(LibraryMessages, NoneOfTheProgramsIsLostWhereThreadsOverlap) {
    const auto work = [] {
        std::vector<std::thread> threads;
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([] {
                for (int round = 0; round < 200; ++round) {
                    const LibrariesSilenced silenced;
                    writeAsALibrary("lost");
                    printErr("x");
                }
            });
        }
        for (auto& thread : threads) {
            thread.join();
        }
    };
    EXPECT_EQ(arrived(work), std::string(800, 'x'));
}

TEST(LibraryMessages, AClosedStreamStaysClosed) {
    const int status = inChildProcess([] {
        ::close(STDERR_FILENO);
        occupyStandardStreams();
        const LibrariesSilenced silenced;
        return ::write(standardError(), "x", 1) < 0 ? 0 : 1;
    });
    EXPECT_EQ(status, 0);
}

} // namespace
} // namespace varno::test
