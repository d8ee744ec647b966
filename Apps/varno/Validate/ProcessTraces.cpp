#include "Validate/ProcessTraces.h"

#include <sys/stat.h>

#include <algorithm>
#include <clocale>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <unistd.h>
#if defined(__x86_64__)
#include <xmmintrin.h>
#endif

namespace varno::validate {
namespace {

namespace fs = std::filesystem;
using Traces = std::map<std::string, std::string>;

void addFiles(Traces& traces, const std::string& name, const fs::path& folder) {
    std::error_code ended; // A descriptor is the listing's own, and gone when it is read.
    std::vector<fs::path> paths;
    for (const auto& entry : fs::directory_iterator(folder)) {
        paths.push_back(entry.path());
    }
    for (const fs::path& path : paths) {
        const bool isLink = fs::is_symlink(path, ended);
        const std::string target = isLink ? fs::read_symlink(path, ended).string() : std::string();
        if (!ended && fs::exists(fs::symlink_status(path, ended))) {
            traces[name + ' ' + path.filename().string()] = target;
        }
    }
}

void addSignals(Traces& traces) {
    for (int number = 1; number < NSIG; ++number) {
        struct sigaction action {};
        if (::sigaction(number, nullptr, &action) == 0) {
            const auto address = reinterpret_cast<std::uintptr_t>(action.sa_handler);
            traces["handler of signal " + std::to_string(number)] = std::to_string(address);
        }
    }
    sigset_t blocked;
    ::pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    std::string text;
    for (int number = 1; number < NSIG; ++number) {
        text += sigismember(&blocked, number) == 1 ? std::to_string(number) + ' ' : "";
    }
    traces["blocked signals"] = text;
}

void addEnvironment(Traces& traces) {
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string text = *entry;
        const std::size_t end = text.find('=');
        traces["environment variable " + text.substr(0, end)] =
            end == std::string::npos ? std::string() : text.substr(end + 1);
    }
}

Traces tracesNow() {
    Traces traces;
    addFiles(traces, "thread", "/proc/self/task");
    addFiles(traces, "descriptor", "/proc/self/fd");
    addSignals(traces);
    addEnvironment(traces);
    std::error_code ignored;
    traces["working folder"] = fs::current_path(ignored).string();
    traces["locale"] = std::setlocale(LC_ALL, nullptr);
    const mode_t mask = ::umask(0);
    ::umask(mask);
    traces["mask of new files"] = std::to_string(mask);
#if defined(__x86_64__)
    constexpr unsigned kModes = 0xFFC0U; // Without the flags of what has happened.
    traces["floating-point mode"] = std::to_string(_mm_getcsr() & kModes);
#endif
    return traces;
}

} // namespace

ProcessTraces::ProcessTraces()
    : mTraces(tracesNow()) {
}

std::vector<std::string> ProcessTraces::changes() const {
    const Traces now = tracesNow();
    std::vector<std::string> changes;
    for (const auto& [name, value] : mTraces) {
        const auto found = now.find(name);
        if (found == now.end()) {
            changes.push_back(name + " is gone");
        } else if (found->second != value) {
            changes.push_back(
                std::string(name).append(": was ").append(value).append(", is ").append(found->second));
        }
    }
    for (const auto& [name, value] : now) {
        if (!mTraces.contains(name)) {
            changes.push_back(name + " is left" + (value.empty() ? "" : ": " + value));
        }
    }
    return changes;
}

std::optional<std::ptrdiff_t> MemoryGrowth::bytesPerRound() const {
    constexpr std::size_t kFewest = 20;
    if (mBytes.size() < kFewest) {
        return std::nullopt;
    }
    std::vector<std::ptrdiff_t> growth;
    for (std::size_t round = 1; round < mBytes.size(); ++round) {
        growth.push_back(mBytes[round] - mBytes[round - 1]);
    }
    const auto middle = growth.begin() + static_cast<std::ptrdiff_t>(growth.size() / 2);
    std::ranges::nth_element(growth, middle);
    // Tables that are enlarged now and then and taken apart again do not grow in both halves.
    const std::size_t first = mBytes.size() / 10;
    const std::size_t half = (mBytes.size() - first) / 2;
    const auto inRounds = [&](std::size_t from) {
        return (mBytes[from + half - 1] - mBytes[from]) / static_cast<std::ptrdiff_t>(half - 1);
    };
    const std::ptrdiff_t lost = std::min({*middle, inRounds(first), inRounds(first + half)});
    // One block of the allocator's smallest, 32 bytes, in nearly every round; its loader takes less for
    // tables.
    constexpr std::ptrdiff_t kLeast = 24;
    return lost >= kLeast ? std::optional(lost) : std::nullopt;
}

} // namespace varno::validate
