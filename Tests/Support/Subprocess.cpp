#include "Tests/Support/Subprocess.h"

#include "Tests/Support/Eventually.h"

#include <malloc.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <fstream>
#include <iterator>
#include <system_error>

namespace varno::test {
namespace {

constexpr int kSignalStatus = 128;

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

// What the child needs between fork and exec, where it may only make calls that are safe in signal handlers.
struct Start {
    char* const* words;
    char* const* environment;
    const char* folder;
    pid_t parent;
    int in;
    int out;
    int err;
};

[[noreturn]] void become(const Start& start) {
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    const bool isOrphaned = getppid() != start.parent;
    if (!isOrphaned && dup2(start.in, STDIN_FILENO) >= 0 && dup2(start.out, STDOUT_FILENO) >= 0 &&
        dup2(start.err, STDERR_FILENO) >= 0 && (*start.folder == '\0' || chdir(start.folder) == 0)) {
        execvpe(start.words[0], start.words, start.environment);
    }
    _exit(Subprocess::kCannotStart);
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
    : mPatience(surroundings.patience),
      mIn(unnamedFile()),
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
    const Start start{
        wordPointers.data(), environmentPointers.data(), folder.c_str(), getpid(), mIn, mOut, mErr};
    mPid = fork();
    if (mPid == 0) {
        become(start);
    }
    if (mPid < 0) {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
}

Subprocess::~Subprocess() {
    signal(SIGTERM);
    if (!eventually([this] { return status().has_value(); }, mPatience)) {
        signal(SIGKILL);
        waitpid(mPid, nullptr, 0);
    }
    close(mIn);
    close(mOut);
    close(mErr);
}

void Subprocess::signal(int number) {
    if (!status()) {
        kill(mPid, number);
    }
}

std::optional<int> Subprocess::status() {
    int waitStatus = 0;
    if (!mStatus && waitpid(mPid, &waitStatus, WNOHANG) == mPid) {
        keepStatus(waitStatus);
    }
    return mStatus;
}

std::string Subprocess::out() const {
    return contentOf(mOut);
}

Outcome Subprocess::wait() {
    int waitStatus = 0;
    if (!mStatus) {
        if (waitpid(mPid, &waitStatus, 0) != mPid) {
            throw std::system_error(errno, std::generic_category(), "waitpid");
        }
        keepStatus(waitStatus);
    }
    return {*mStatus, contentOf(mOut), contentOf(mErr)};
}

void Subprocess::keepStatus(int waitStatus) {
    mStatus = WIFSIGNALED(waitStatus) ? kSignalStatus + WTERMSIG(waitStatus) : WEXITSTATUS(waitStatus);
}

Outcome run(const std::vector<std::string>& words, const Surroundings& surroundings) {
    return Subprocess(words, surroundings).wait();
}

std::ptrdiff_t openDescriptors() {
    // The folder is open itself while it is read.
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator()) -
           1;
}

std::ptrdiff_t residentBytes() {
    std::ptrdiff_t total = 0;
    std::ptrdiff_t resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

std::ptrdiff_t allocatedBytes() {
    const auto heap = mallinfo2();
    return static_cast<std::ptrdiff_t>(heap.uordblks + heap.hblkhd);
}

} // namespace varno::test
