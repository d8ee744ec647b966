#include "Tests/Support/ChildProcess.h"

#include "Tests/Support/Eventually.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <iterator>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace varno::test {

namespace {

constexpr int kSignalledStatus = 128;

// Runs in the new process, where only calls that are safe in signal handlers may be made.
[[noreturn]] void become(char* const* words, ChildStreams streams, pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const bool orphanedAlready = getppid() != parent;
    if (!orphanedAlready && (streams.input < 0 || dup2(streams.input, STDIN_FILENO) >= 0) &&
        (streams.output < 0 || dup2(streams.output, STDOUT_FILENO) >= 0)) {
        execvp(words[0], words);
    }
    _exit(ChildProcess::kCannotRun);
}

} // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command, ChildStreams streams)
    : mPid(-1) {
    std::vector<std::string> owned = command;
    std::vector<char*> words;
    std::transform(owned.begin(), owned.end(), std::back_inserter(words),
                   [](auto& word) { return word.data(); });
    words.push_back(nullptr);
    const pid_t parent = getpid();
    mPid = fork();
    if (mPid == 0) {
        become(words.data(), streams, parent);
    }
    if (mPid < 0) {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
}

ChildProcess::~ChildProcess() {
    constexpr std::chrono::seconds kPatience{3};
    signal(SIGTERM);
    if (!eventually([this] { return status().has_value(); }, kPatience)) {
        signal(SIGKILL);
        eventually([this] { return status().has_value(); });
    }
}

void ChildProcess::signal(int number) {
    if (!status()) {
        kill(mPid, number);
    }
}

std::optional<int> ChildProcess::status() {
    int raw = 0;
    if (!mStatus && waitpid(mPid, &raw, WNOHANG) == mPid) {
        mStatus = WIFEXITED(raw) ? WEXITSTATUS(raw) : kSignalledStatus + WTERMSIG(raw);
    }
    return mStatus;
}

} // namespace varno::test
