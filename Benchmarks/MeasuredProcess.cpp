#include "Benchmarks/MeasuredProcess.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <spawn.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace varno::bench {
namespace {

using Clock = std::chrono::steady_clock;

double secondsOf(const timeval& time) {
    constexpr double kMicroseconds = 1e6;
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / kMicroseconds;
}

double residentMebisOf(const rusage& usage) {
    constexpr double kKibis = 1024.0; // the system tells KiB
    return static_cast<double>(usage.ru_maxrss) / kKibis;
}

pid_t start(const std::vector<std::string>& command, const std::filesystem::path& folder) {
    std::vector<std::string> words = command;
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    pid_t process = 0;
    const int error = posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        throw std::system_error(error, std::generic_category(), command[0]);
    }
    return process;
}

rusage await(pid_t process, const std::string& name) {
    rusage usage{};
    int status = 0;
    while (wait4(process, &status, 0, &usage) < 0) {
        if (errno != EINTR) {
            throw std::system_error(errno, std::generic_category(), name);
        }
    }
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        throw std::runtime_error(name + " did not succeed");
    }
    return usage;
}

} // namespace

ProcessCost runMeasured(const std::vector<std::string>& command, const std::filesystem::path& folder) {
    const auto begin = Clock::now();
    const pid_t process = start(command, folder);
    const rusage usage = await(process, command[0]);
    ProcessCost cost;
    cost.elapsedS = std::chrono::duration<double>(Clock::now() - begin).count();
    cost.processorS = secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime);
    cost.residentMebis = residentMebisOf(usage);
    return cost;
}

double ownResidentMebis() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return residentMebisOf(usage);
}

} // namespace varno::bench
