#include "Tests/Apps/varno/Support/Subprocess.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <system_error>

namespace varno::test {
namespace {

constexpr int kSignalStatus = 128;
constexpr int kCannotStart = 127;

int unnamedFile() {
    const int descriptor = memfd_create("varno-test", MFD_CLOEXEC);
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), "memfd_create");
    }
    return descriptor;
}

std::string contentOf(int descriptor) {
    struct stat status {};
    fstat(descriptor, &status);
    std::string content(static_cast<std::size_t>(status.st_size), '\0');
    const auto read = pread(descriptor, content.data(), content.size(), 0);
    content.resize(read < 0 ? 0 : static_cast<std::size_t>(read));
    return content;
}

// Runs in the child between fork and exec.
[[noreturn]] void become(char* const* words, char* const* environment, const char* folder, int in, int out,
                         int err) {
    dup2(in, STDIN_FILENO);
    dup2(out, STDOUT_FILENO);
    dup2(err, STDERR_FILENO);
    if (*folder != '\0' && chdir(folder) != 0) {
        _exit(kCannotStart);
    }
    execvpe(words[0], words, environment);
    _exit(kCannotStart);
}

std::vector<char*> pointersTo(const std::vector<std::string>& words) {
    std::vector<char*> pointers;
    for (const auto& word : words) {
        pointers.push_back(const_cast<char*>(word.c_str())); // exec does not write to them
    }
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace

Subprocess::Subprocess(const std::vector<std::string>& words, const Surroundings& surroundings)
    : mIn(unnamedFile()),
      mOut(unnamedFile()),
      mErr(unnamedFile()) {
    const auto& input = surroundings.input;
    if (pwrite(mIn, input.data(), input.size(), 0) != static_cast<ssize_t>(input.size())) {
        throw std::system_error(errno, std::generic_category(), "input of the program");
    }
    std::vector<std::string> environment = surroundings.environment;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        environment.emplace_back(*variable);
    }
    const auto wordPointers = pointersTo(words);
    const auto environmentPointers = pointersTo(environment);
    const std::string folder = surroundings.folder.string();
    mPid = fork();
    if (mPid == 0) {
        become(wordPointers.data(), environmentPointers.data(), folder.c_str(), mIn, mOut, mErr);
    }
    if (mPid < 0) {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
}

Subprocess::~Subprocess() {
    if (mPid > 0) {
        kill(mPid, SIGKILL);
        waitpid(mPid, nullptr, 0);
    }
    close(mIn);
    close(mOut);
    close(mErr);
}

Outcome Subprocess::wait() {
    int status = 0;
    if (waitpid(mPid, &status, 0) != mPid) {
        throw std::system_error(errno, std::generic_category(), "waitpid");
    }
    mPid = -1;
    return {WIFSIGNALED(status) ? kSignalStatus + WTERMSIG(status) : WEXITSTATUS(status), contentOf(mOut),
            contentOf(mErr)};
}

Outcome run(const std::vector<std::string>& words, const Surroundings& surroundings) {
    return Subprocess(words, surroundings).wait();
}

} // namespace varno::test
