#include "Validate/Editors/OwnServer.h"

#include <sys/prctl.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace varno::validate {
namespace {

constexpr int kStartMs = 20000;

// The server, in a process that has been made for it. Nothing here allocates: there may be other threads.
[[noreturn]] void becomeServer(int written, pid_t parent, const char* descriptor) {
    // It ends by itself, and removes its files, when its parent is gone. The check's group is killed.
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (::getppid() == parent) {
        ::fcntl(written, F_SETFD, 0);
        ::execlp("Xvfb", "Xvfb", "-displayfd", descriptor, "-screen", "0", "1920x1440x24", "-noreset",
                 "-nolisten", "tcp", static_cast<char*>(nullptr));
    }
    ::_exit(1);
}

// The line that a server writes when it is ready; empty where none comes.
std::string readLine(int descriptor) {
    std::string text;
    char character = 0;
    pollfd wait{descriptor, POLLIN, 0};
    while (::poll(&wait, 1, kStartMs) == 1 && ::read(descriptor, &character, 1) == 1 && character != '\n') {
        text += character;
    }
    return character == '\n' ? text : std::string();
}

} // namespace

OwnServer::OwnServer() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return;
    }
    const std::string descriptor = std::to_string(ends[1]);
    const pid_t parent = ::getpid();
    mProcess = ::fork();
    if (mProcess == 0) {
        becomeServer(ends[1], parent, descriptor.c_str());
    }
    ::close(ends[1]);
    const std::string number = readLine(ends[0]);
    ::close(ends[0]);
    if (number.empty()) {
        stop();
    } else {
        mDisplay = ":" + number;
    }
}

void OwnServer::stop() {
    if (mProcess > 0) {
        ::kill(mProcess, SIGTERM);
        while (::waitpid(mProcess, nullptr, 0) < 0 && errno == EINTR) {
        }
        mProcess = -1;
    }
}

} // namespace varno::validate
