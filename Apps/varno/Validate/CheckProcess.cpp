#include "Validate/CheckProcess.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Interruption.h"

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <deque>
#include <exception>
#include <fcntl.h>
#include <poll.h>
#include <sstream>
#include <system_error>
#include <unistd.h>

namespace varno::validate {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::size_t kStepBytes = 1024;
constexpr int kFullLevelFactor = 10;
// How often a wait looks at a signal that asks this program to stop.
constexpr int kPollMs = 100;
// After the last finding: the check has run to its end.
constexpr char kEnd = 'E';

[[noreturn]] void failSystem(const char* what) {
    throw WorkError(std::string(what) + ": " + std::generic_category().message(errno));
}

class Descriptor {
public:
    explicit Descriptor(int number)
        : mNumber(number) {}
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    int get() const { return mNumber; }
    void close() {
        if (mNumber >= 0) {
            ::close(mNumber);
            mNumber = -1;
        }
    }

private:
    int mNumber;
};

// What the check does now: memory of both processes, so that stating it costs no call of the system.
class SharedStep {
public:
    SharedStep()
        : mText(static_cast<char*>(
              ::mmap(nullptr, kStepBytes, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {
        if (mText == MAP_FAILED) {
            failSystem("memory for a check");
        }
    }
    SharedStep(const SharedStep&) = delete;
    SharedStep& operator=(const SharedStep&) = delete;
    ~SharedStep() { ::munmap(mText, kStepBytes); }

    void set(std::string_view what) {
        const std::size_t length = std::min(what.size(), kStepBytes - 1);
        std::memcpy(mText, what.data(), length);
        mText[length] = '\0';
    }
    std::string get() const { return {mText, ::strnlen(mText, kStepBytes)}; }

private:
    char* mText;
};

// Findings as bytes: the kind and both texts with their lengths.
void appendText(std::string& bytes, const std::string& text) {
    const auto length = static_cast<std::uint32_t>(text.size());
    bytes.append(reinterpret_cast<const char*>(&length), sizeof length).append(text);
}

void writeAllBytes(int descriptor, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            return; // Nobody reads any more.
        }
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
}

class FindingReader {
public:
    explicit FindingReader(std::string_view bytes)
        : mBytes(bytes) {}

    // The findings as far as they are whole. @param hasEnded whether the check has run to its end
    std::vector<Finding> readAll(bool& hasEnded) {
        std::vector<Finding> findings;
        hasEnded = false;
        while (!mBytes.empty()) {
            const char kind = mBytes.front();
            mBytes.remove_prefix(1);
            if (kind == kEnd) {
                hasEnded = true;
                break;
            }
            Finding finding{static_cast<Finding::Kind>(kind), {}, {}};
            if (!readText(finding.seen) || !readText(finding.expected)) {
                break;
            }
            findings.push_back(std::move(finding));
        }
        return findings;
    }

private:
    bool readText(std::string& text) {
        std::uint32_t length = 0;
        if (mBytes.size() < sizeof length) {
            return false;
        }
        std::memcpy(&length, mBytes.data(), sizeof length);
        mBytes.remove_prefix(sizeof length);
        if (mBytes.size() < length) {
            return false;
        }
        text = mBytes.substr(0, length);
        mBytes.remove_prefix(length);
        return true;
    }

    std::string_view mBytes;
};

void runCheck(const Check& check, const CheckSetup& setup, const Context::Sink& sink, SharedStep& step) {
    Context context(setup, sink, [&](std::string_view what) { step.set(what); });
    try {
        check.run(context);
    } catch (const SkippedCheck& skipped) {
        sink({Finding::Kind::kSkip, skipped.reason, {}});
    } catch (const std::exception& error) {
        context.fail(error.what(), "none of the calls to fail");
    } catch (...) {
        context.fail("an exception of unknown type", "none");
    }
}

[[noreturn]] void beChild(const Check& check, const CheckSetup& setup, int findings, int prints,
                          SharedStep& step) {
    // A group of its own, which ends with it: a plug-in may start programs.
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGXFSZ}) {
        std::signal(signal, SIG_DFL);
    }
    const Descriptor input(::open("/dev/null", O_RDONLY | O_CLOEXEC));
    ::dup2(input.get(), STDIN_FILENO);
    ::dup2(prints, STDOUT_FILENO);
    ::dup2(prints, STDERR_FILENO);
    const auto sink = [&](const Finding& finding) {
        std::string bytes(1, static_cast<char>(finding.kind));
        appendText(bytes, finding.seen);
        appendText(bytes, finding.expected);
        writeAllBytes(findings, bytes);
    };
    runCheck(check, setup, sink, step);
    writeAllBytes(findings, {&kEnd, 1});
    ::_exit(0);
}

std::string lastBytes(int prints) {
    constexpr off_t kMost = 65536;
    const off_t size = ::lseek(prints, 0, SEEK_END);
    std::string text(static_cast<std::size_t>(std::clamp<off_t>(size, 0, kMost)), '\0');
    const ssize_t count = ::pread(prints, text.data(), text.size(), std::max<off_t>(0, size - kMost));
    text.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    return text;
}

// The last lines in one, as many as Xlib prints of an error.
std::string lastLines(int prints) {
    constexpr std::size_t kMostLines = 5;
    std::istringstream text(lastBytes(prints));
    std::deque<std::string> lines;
    for (std::string line; std::getline(text >> std::ws, line);) {
        lines.push_back(line.substr(0, line.find_last_not_of(" \t\r") + 1));
        if (lines.size() > kMostLines) {
            lines.pop_front();
        }
    }
    std::string joined;
    for (const std::string& line : lines) {
        joined += (joined.empty() ? "" : "; ") + line;
    }
    return joined;
}

// Reads until the child has stated its end or is gone, or the time is over. (What the plug-in has started may
// hold the other end of the pipe longer.) @return whether it was in time
bool readUntil(Clock::time_point end, int findings, std::string& bytes) {
    std::array<char, 4096> buffer{};
    for (;;) {
        throwIfInterrupted();
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
        if (left <= 0) {
            return false;
        }
        pollfd wait{findings, POLLIN, 0};
        const int ready = ::poll(&wait, 1, static_cast<int>(std::min<std::int64_t>(left, kPollMs)));
        if (ready > 0) {
            const ssize_t count = ::read(findings, buffer.data(), buffer.size());
            bytes.append(buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
            bool hasEnded = false;
            (void)FindingReader(bytes).readAll(hasEnded);
            if (count == 0 || hasEnded) {
                return true;
            }
        }
    }
}

std::string endText(int status) {
    if (WIFSIGNALED(status)) {
        const char* const name = ::sigabbrev_np(WTERMSIG(status));
        return "ended by signal " +
               (name == nullptr ? std::to_string(WTERMSIG(status)) : "SIG" + std::string(name));
    }
    return "the process ended with status " + std::to_string(WEXITSTATUS(status));
}

// A child that is killed with all that it has started, unless it has ended.
class Child {
public:
    explicit Child(pid_t process)
        : mProcess(process) {}
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() { (void)end(); }

    // Ends it. @return its status as waitpid() gives it
    int end() {
        int status = 0;
        if (mProcess > 0) {
            // Its group lives as long as one of its members, and its number as long as it is not waited for.
            ::kill(-mProcess, SIGKILL);
            ::kill(mProcess, SIGKILL);
            while (::waitpid(mProcess, &status, 0) < 0 && errno == EINTR) {
            }
            mProcess = -1;
        }
        return status;
    }
    // Waits for its own end, then ends what it has started.
    int await() {
        siginfo_t info{};
        while (::waitid(P_PID, static_cast<id_t>(mProcess), &info, WEXITED | WNOWAIT) < 0 && errno == EINTR) {
        }
        return end();
    }

private:
    pid_t mProcess;
};

Verdict verdictOf(const std::vector<Finding>& findings) {
    const auto has = [&](Finding::Kind kind) {
        return std::ranges::find(findings, kind, &Finding::kind) != findings.end();
    };
    return has(Finding::Kind::kFail)   ? Verdict::kFail
           : has(Finding::Kind::kSkip) ? Verdict::kSkip
           : has(Finding::Kind::kNote) ? Verdict::kNote
                                       : Verdict::kPass;
}

} // namespace

std::string_view verdictWord(Verdict verdict) {
    switch (verdict) {
    case Verdict::kPass:
        return "PASS";
    case Verdict::kNote:
        return "NOTE";
    case Verdict::kFail:
        return "FAIL";
    case Verdict::kSkip:
        return "SKIP";
    }
    return {};
}

CheckResult runInChild(const Check& check, const CheckSetup& setup) {
    const auto start = Clock::now();
    const int ownLimitS = check.timeLimitS * (setup.level == Level::kFull ? kFullLevelFactor : 1);
    const int limitS = setup.timeLimitS > 0 ? setup.timeLimitS : ownLimitS;
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        failSystem("a pipe for a check");
    }
    const Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);
    const Descriptor prints(::memfd_create("varno-validate", MFD_CLOEXEC));
    SharedStep step;
    const pid_t process = ::fork();
    if (process < 0) {
        failSystem("a process for a check");
    }
    if (process == 0) {
        beChild(check, setup, writing.get(), prints.get(), step);
    }
    // In both processes: whichever comes first.
    ::setpgid(process, process);
    Child child(process);
    writing.close();
    std::string bytes;
    const bool isInTime = readUntil(start + std::chrono::seconds(limitS), reading.get(), bytes);
    bool hasEnded = false;
    const int status = isInTime ? child.await() : child.end();
    CheckResult result;
    result.findings = FindingReader(bytes).readAll(hasEnded);
    if (!isInTime || !hasEnded) {
        std::string seen = isInTime ? endText(status) : "no end after " + std::to_string(limitS) + " s";
        if (const std::string what = step.get(); !what.empty()) {
            seen += " in: " + what;
        }
        if (const std::string lines = lastLines(prints.get()); !lines.empty()) {
            seen += " (printed: " + lines + ")";
        }
        result.findings.push_back({Finding::Kind::kFail, seen, "the check to run to its end"});
    }
    result.verdict = verdictOf(result.findings);
    result.seconds = std::chrono::duration<double>(Clock::now() - start).count();
    return result;
}

} // namespace varno::validate
