#include "Doctor/WindowAnswer.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Interruption.h"
#include "Settings/InstalledFiles.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sstream>
#include <string>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace varno {
namespace {

constexpr const char* kPart = "window program";
constexpr const char* kPackage = "varno-editor";
// Longer than a sound system on a busy machine takes.
constexpr std::chrono::seconds kUsualPatience(10);
// How often a wait looks whether the user wants to stop.
constexpr std::chrono::milliseconds kLongestPoll(100);

// A pipe whose ends close with the object, and with every program that is started.
class Pipe {
public:
    Pipe() {
        if (::pipe2(mEnds.data(), O_CLOEXEC) != 0) {
            throw WorkError("cannot make a pipe: " + std::generic_category().message(errno));
        }
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        closeWritten();
        ::close(mEnds[0]);
    }

    int read() const { return mEnds[0]; }
    int written() const { return mEnds[1]; }
    void closeWritten() {
        if (mEnds[1] >= 0) {
            ::close(mEnds[1]);
            mEnds[1] = -1;
        }
    }

private:
    std::array<int, 2> mEnds{};
};

// The program as it runs, with both of its outputs.
class WindowProcess {
public:
    explicit WindowProcess(const std::filesystem::path& program) {
        posix_spawn_file_actions_t actions{};
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, mOut.written(), STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&actions, mErr.written(), STDERR_FILENO);
        std::string name = program.string();
        std::string command = "doctor";
        const std::array<char*, 3> words = {name.data(), command.data(), nullptr};
        mError = ::posix_spawn(&mPid, name.c_str(), &actions, nullptr, words.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        mOut.closeWritten();
        mErr.closeWritten();
    }
    WindowProcess(const WindowProcess&) = delete;
    WindowProcess& operator=(const WindowProcess&) = delete;
    ~WindowProcess() {
        if (mError == 0) {
            ::kill(mPid, SIGKILL);
            while (::waitpid(mPid, nullptr, 0) < 0 && errno == EINTR) {
            }
        }
    }

    // Why it was not started; 0 where it was.
    int error() const { return mError; }

    // Reads both outputs to their end. Returns whether they ended in time.
    bool readAll(std::chrono::milliseconds patience) {
        const auto end = std::chrono::steady_clock::now() + patience;
        std::array<pollfd, 2> streams = {{{mOut.read(), POLLIN, 0}, {mErr.read(), POLLIN, 0}}};
        while (streams[0].fd >= 0 || streams[1].fd >= 0) {
            throwIfInterrupted();
            if (std::chrono::steady_clock::now() >= end) {
                return false;
            }
            ::poll(streams.data(), streams.size(), static_cast<int>(kLongestPoll.count()));
            for (std::size_t i = 0; i < streams.size(); ++i) {
                auto& stream = streams.at(i);
                if (stream.revents != 0 && !readSome(stream.fd, mTexts.at(i))) {
                    stream.fd = -1;
                }
                stream.revents = 0;
            }
        }
        return true;
    }

    const std::string& out() const { return mTexts[0]; }
    const std::string& err() const { return mTexts[1]; }

private:
    static bool readSome(int descriptor, std::string& text) {
        std::array<char, 4096> bytes{};
        const auto count = ::read(descriptor, bytes.data(), bytes.size());
        if (count > 0) {
            text.append(bytes.data(), static_cast<std::size_t>(count));
        }
        return count > 0 || (count < 0 && errno == EINTR);
    }

    Pipe mOut;
    Pipe mErr;
    pid_t mPid = -1;
    int mError = 0;
    std::array<std::string, 2> mTexts;
};

} // namespace

std::vector<Finding> askWindowProgram(const std::filesystem::path& program,
                                      std::chrono::milliseconds patience) {
    WindowProcess process(program);
    Finding itself{.part = kPart, .detail = program.string()};
    std::vector<Finding> findings;
    const auto fail = [&](const std::string& reason) {
        itself.state = PartState::kFailing;
        itself.detail += ": " + reason;
    };
    if (process.error() != 0) {
        fail("cannot be started: " + std::generic_category().message(process.error()));
        itself.package = kPackage;
    } else {
        const bool isInTime = process.readAll(patience);
        std::istringstream lines(process.out());
        for (std::string line; std::getline(lines, line);) {
            if (const auto finding = findingOf(line)) {
                findings.push_back(*finding);
            }
        }
        if (!isInTime) {
            fail("gives no answer " +
                 (findings.empty() ? std::string("at all") : "after that on " + findings.back().part));
        } else if (findings.empty()) {
            const std::string& reason = process.err();
            fail("ends without an answer" +
                 (reason.empty() ? "" : ": " + reason.substr(0, reason.find('\n'))));
            itself.package = kPackage;
        }
    }
    findings.insert(findings.begin(), itself);
    return findings;
}

std::vector<Finding> askWindowProgram() {
    const auto folder = programFolder();
    if (const auto program = installedFile(folder, "varno-window")) {
        return askWindowProgram(*program, kUsualPatience);
    }
    return {{kPart, PartState::kMissing, "varno-window is not beside the program in " + folder.string(),
             kPackage}};
}

} // namespace varno
