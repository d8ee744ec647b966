/// A program that a test starts and that never outlives it.
#ifndef VARNO_TESTS_SUPPORT_CHILDPROCESS_H
#define VARNO_TESTS_SUPPORT_CHILDPROCESS_H

#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace varno::test {

/// Descriptors that a program gets as its standard input and output; -1 leaves it the test's own. They stay
/// the caller's. Others reach the program only where they are not marked close-on-exec.
struct ChildStreams {
    int input = -1;
    int output = -1;
};

class ChildProcess {
public:
    /// Starts the program that the first word names, looked for in PATH. Throws std::system_error where no
    /// process can be made; one whose program cannot be run ends with the status kCannotRun.
    explicit ChildProcess(const std::vector<std::string>& command, ChildStreams streams = {});
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Asks it to end (SIGTERM) and, where it does not, ends it. The same request reaches it when the test's
    /// process dies.
    ~ChildProcess();

    static constexpr int kCannotRun = 127;

    pid_t pid() const { return mPid; }

    /// Sends a signal to it while it runs.
    void signal(int number);

    /// Its exit status once it has ended, 128 plus the signal's number where one ended it; empty while it
    /// runs.
    std::optional<int> status();

private:
    pid_t mPid;
    std::optional<int> mStatus;
};

} // namespace varno::test

#endif
