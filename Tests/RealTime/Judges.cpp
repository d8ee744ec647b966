#include "Tests/RealTime/Judges.h"

#include <atomic>
#include <bit>
#include <cstdio>
#include <linux/seccomp.h>
#include <new>
#include <random>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

// Of the sanitizer's run-time library.
extern "C" {
void __rtsan_realtime_enter();
void __rtsan_realtime_exit();
}

namespace varno::test {
namespace {

constexpr int kFrames[] = {32, 64, AudioClient::kLongestBlock};
constexpr int kComplained = 3;

// What the child leaves to its parent, in memory that both have: it may not write otherwise.
struct Shared {
    std::atomic<std::int64_t> blocks{0};
    std::atomic<std::int64_t> disturbances{0};
    std::atomic<std::uint64_t> outputHash{0};
};

// FNV-1a, of the samples' bits.
std::uint64_t hashOn(std::uint64_t hash, std::span<const float> samples) {
    for (const float sample : samples) {
        hash = (hash ^ std::bit_cast<std::uint32_t>(sample)) * 0x100000001B3U;
    }
    return hash;
}

void processBlocks(AudioClient& client, const JudgedRun& run, bool isSanitized, Shared& shared) {
    std::mt19937 random(20261123);
    std::uint64_t hash = 0xCBF29CE484222325U;
    const std::int64_t leastDisturbances = run.hasCompany ? kLeastDisturbances : 0;
    for (std::int64_t i = 0; i < run.blocks || shared.disturbances < leastDisturbances; ++i) {
        const int frames = kFrames[static_cast<std::size_t>(i) % std::size(kFrames)];
        client.prepare(frames, random);
        if (isSanitized) {
            __rtsan_realtime_enter();
        }
        client.process(frames);
        if (isSanitized) {
            __rtsan_realtime_exit();
        }
        hash = hashOn(hashOn(hash, client.output(0, frames)), client.output(1, frames));
        shared.blocks = i + 1;
        shared.outputHash = hash;
    }
}

void processWithCompany(AudioClient& client, const JudgedRun& run, bool isSanitized, Shared& shared) {
    std::atomic<bool> isOver{false};
    std::thread audio([&] {
        processBlocks(client, run, isSanitized, shared);
        isOver = true;
    });
    std::mt19937 random(20261124);
    while (!isOver) {
        client.disturb(random);
        ++shared.disturbances;
    }
    audio.join();
}

[[noreturn]] void runChild(Judge judge, const JudgedRun& run, Shared& shared) {
    const std::unique_ptr<AudioClient> client = run.make();
    if (judge == Judge::kSystemCalls) {
        prctl(PR_SET_SECCOMP, SECCOMP_MODE_STRICT);
        processBlocks(*client, run, false, shared);
        syscall(SYS_exit, 0); // _exit() calls exit_group, which is forbidden too
    }
    const bool isSanitized = judge == Judge::kSanitizer;
    if (run.hasCompany) {
        processWithCompany(*client, run, isSanitized, shared);
    } else {
        processBlocks(*client, run, isSanitized, shared);
    }
    const std::string complaints = client->complaints();
    std::fputs(complaints.c_str(), stderr);
    std::fflush(stderr);
    _exit(complaints.empty() ? 0 : kComplained);
}

std::string textIn(std::FILE* file) {
    std::string text;
    std::rewind(file);
    for (int character = std::fgetc(file); character != EOF; character = std::fgetc(file)) {
        text += static_cast<char>(character);
    }
    return text;
}

} // namespace

Verdict judge(Judge judge, const JudgedRun& run) {
    void* const memory =
        mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> errors(std::tmpfile(), std::fclose);
    if (memory == MAP_FAILED || errors == nullptr) {
        throw std::runtime_error("no memory or no file for a child process");
    }
    auto* const shared = new (memory) Shared;
    const pid_t child = fork();
    if (child == 0) {
        dup2(fileno(errors.get()), STDERR_FILENO);
        runChild(judge, run, *shared);
    }
    int status = 0;
    waitpid(child, &status, 0);
    Verdict verdict;
    verdict.isClean = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    verdict.report = textIn(errors.get());
    verdict.report += WIFSIGNALED(status) ? "killed by signal " + std::to_string(WTERMSIG(status))
                                          : "exit status " + std::to_string(WEXITSTATUS(status));
    verdict.blocks = shared->blocks;
    verdict.disturbances = shared->disturbances;
    verdict.outputHash = shared->outputHash;
    munmap(memory, sizeof(Shared));
    return verdict;
}

} // namespace varno::test
