#include "CommandLine/ChildProgram.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Interruption.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace varno {
namespace {

// How often a wait looks whether the user wants to stop.
constexpr std::chrono::milliseconds kLongestPoll(100);

// Returns whether there may be more.
bool readPart(int descriptor, std::string& text) {
    std::array<char, 65536> bytes; // NOLINT(cppcoreguidelines-pro-type-member-init): read() fills it
    const auto count = ::read(descriptor, bytes.data(), bytes.size());
    if (count > 0) {
        text.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return count > 0 || (count < 0 && errno == EINTR);
}

} // namespace

ChildProgram::Pipe ChildProgram::makePipe() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw WorkError("cannot make a pipe: " + std::generic_category().message(errno));
    }
    return {FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

ChildProgram::ChildProgram(std::string program, std::vector<std::string> arguments,
                           const FileDescriptor& input)
    : mOut(makePipe()),
      mErr(makePipe()) {
    posix_spawn_file_actions_t actions{};
    posix_spawn_file_actions_init(&actions);
    if (input.isOpen()) {
        posix_spawn_file_actions_adddup2(&actions, input.get(), STDIN_FILENO);
    }
    posix_spawn_file_actions_adddup2(&actions, mOut.written.get(), STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, mErr.written.get(), STDERR_FILENO);
    std::vector<char*> words = {program.data()};
    for (std::string& argument : arguments) {
        words.push_back(argument.data());
    }
    words.push_back(nullptr);
    mError = ::posix_spawnp(&mPid, program.c_str(), &actions, nullptr, words.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (mError != 0) {
        mPid = -1;
    }
    mOut.written.close();
    mErr.written.close();
}

ChildProgram::~ChildProgram() {
    if (mPid >= 0) {
        ::kill(mPid, SIGKILL);
        succeeds();
    }
}

bool ChildProgram::readAll(std::chrono::milliseconds patience) {
    const auto end = std::chrono::steady_clock::now() + patience;
    std::array<pollfd, 2> streams = {{{mOut.read.get(), POLLIN, 0}, {mErr.read.get(), POLLIN, 0}}};
    while (streams[0].fd >= 0 || streams[1].fd >= 0) {
        throwIfInterrupted();
        if (std::chrono::steady_clock::now() >= end) {
            return false;
        }
        ::poll(streams.data(), streams.size(), static_cast<int>(kLongestPoll.count()));
        for (std::size_t i = 0; i < streams.size(); ++i) {
            auto& stream = streams.at(i);
            if (stream.revents != 0 && !readPart(stream.fd, mTexts.at(i))) {
                stream.fd = -1;
            }
            stream.revents = 0;
        }
    }
    return true;
}

bool ChildProgram::succeeds() {
    int status = -1;
    while (mPid >= 0 && ::waitpid(mPid, &status, 0) < 0 && errno == EINTR) {
    }
    mPid = -1;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace varno
