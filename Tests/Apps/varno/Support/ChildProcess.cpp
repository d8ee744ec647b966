#include "Tests/Apps/varno/Support/ChildProcess.h"

#include "CommandLine/CommandError.h"

#include <cstdio>
#include <sys/wait.h>
#include <unistd.h>

namespace varno::test {

namespace {

constexpr unsigned kNobody = 65534;
constexpr int kOtherFailure = 99;

int statusOf(const std::function<int()>& work) {
    try {
        return work();
    } catch (const CommandError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return error.exitStatus();
    } catch (const FileError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return exitStatusOf(error);
    } catch (...) {
        return kOtherFailure;
    }
}

} // namespace

int inChildProcess(const std::function<int()>& work) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(statusOf(work));
    }
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status)) {
        return -1;
    }
    return WEXITSTATUS(status);
}

void becomeOrdinaryUser() {
    if (::geteuid() == 0 && (::setgid(kNobody) != 0 || ::setuid(kNobody) != 0)) {
        ::_exit(kOtherFailure);
    }
}

} // namespace varno::test
