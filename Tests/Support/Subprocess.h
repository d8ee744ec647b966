/// Programs that a test runs, and what the test's own process holds of the system.
#ifndef VARNO_TESTS_SUPPORT_SUBPROCESS_H
#define VARNO_TESTS_SUPPORT_SUBPROCESS_H

#include <sys/types.h>

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace varno::test {

/// What a program wrote and how it ended.
struct Outcome {
    int status = -1; ///< Exit status; 128 plus the signal's number where a signal ended it.
    std::string out; ///< What it wrote to standard output.
    std::string err; ///< What it wrote to standard error.
};

/// Where and with what a program runs.
struct Surroundings {
    std::filesystem::path folder{};         ///< Empty: that of the test.
    std::string input{};                    ///< Bytes on its standard input.
    std::vector<std::string> environment{}; ///< "NAME=value", in addition to those of the test.
    /// How long it may take to end on SIGTERM.
    std::chrono::milliseconds patience{3000};
};

/// A program that runs beside the test and never outlives it. Its standard streams are files without a name.
/// Other descriptors of the test reach it only where they are not marked close-on-exec.
class Subprocess {
public:
    /// The number of descriptors that this process has open for each program: those of its streams.
    static constexpr std::size_t kDescriptors = 3;
    /// The exit status of a program that cannot be started.
    static constexpr int kCannotStart = 127;

    /// @param words the program, looked for in PATH where it has no slash, and its arguments
    /// Throws std::system_error where no process can be made.
    explicit Subprocess(const std::vector<std::string>& words, const Surroundings& surroundings = {});
    Subprocess(const Subprocess&) = delete;
    Subprocess& operator=(const Subprocess&) = delete;
    /// Ends the program where it still runs: with SIGTERM and, after `patience`, with SIGKILL. The program
    /// also receives SIGTERM when the test's process ends.
    ~Subprocess();

    pid_t pid() const { return mPid; }
    /// Sends a signal to the program while it runs.
    void signal(int number);

    /// Its exit status, as in Outcome; empty while it runs.
    std::optional<int> status();
    /// What it has written to standard output so far.
    std::string out() const;
    /// Waits for its end.
    Outcome wait();

private:
    void keepStatus(int waitStatus);

    pid_t mPid = -1;
    std::chrono::milliseconds mPatience;
    std::optional<int> mStatus;
    int mIn = -1; // files without a name that hold the three streams
    int mOut = -1;
    int mErr = -1;
};

/// Runs a program to its end.
Outcome run(const std::vector<std::string>& words, const Surroundings& surroundings = {});

/// The number of file descriptors that this process has open.
std::ptrdiff_t openDescriptors();

/// Bytes of memory that this process has in use.
std::ptrdiff_t residentBytes();

/// Bytes that this process has allocated and not freed. Of no use in sanitizer builds, whose allocator
/// differs.
std::ptrdiff_t allocatedBytes();

} // namespace varno::test

#endif
