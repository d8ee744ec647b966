/// Running a program and seeing all that it says.
#ifndef VARNO_TESTS_APPS_VARNO_SUPPORT_SUBPROCESS_H
#define VARNO_TESTS_APPS_VARNO_SUPPORT_SUBPROCESS_H

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <vector>

namespace varno::test {

/// What a program said and how it ended.
struct Outcome {
    int status = -1; ///< Exit status; 128 and the signal's number where a signal ended it.
    std::string out;
    std::string err;
};

/// Where and with what a program runs.
struct Surroundings {
    std::filesystem::path folder{};         ///< Empty: that of the test.
    std::string input{};                    ///< Bytes on its standard input.
    std::vector<std::string> environment{}; ///< "NAME=value", beside those of the test.
};

/// A program that is running; killed and reaped at the end where that has not been seen.
class Subprocess {
public:
    /// @param words the program, looked up in PATH where it has no slash, and its arguments
    Subprocess(const std::vector<std::string>& words, const Surroundings& surroundings);
    Subprocess(const Subprocess&) = delete;
    Subprocess& operator=(const Subprocess&) = delete;
    ~Subprocess();

    pid_t pid() const { return mPid; }
    /// Waits for the end.
    Outcome wait();

private:
    pid_t mPid = -1;
    int mIn = -1; // unnamed files that hold the three streams
    int mOut = -1;
    int mErr = -1;
};

/// Runs a program to its end.
Outcome run(const std::vector<std::string>& words, const Surroundings& surroundings = {});

} // namespace varno::test

#endif
