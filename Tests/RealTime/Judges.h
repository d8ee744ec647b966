/// Two independent judges of what runs on an audio thread.
///
/// The real-time sanitizer's run-time library intercepts functions of the C library that may wait: it names
/// the first one that is called, with the calls that led there. It sees nothing of a system call that is made
/// without such a function. The kernel's strict mode sees nothing else: it kills a process at its first
/// system call but read, write and exit, whoever makes it.
#ifndef VARNO_TESTS_REALTIME_JUDGES_H
#define VARNO_TESTS_REALTIME_JUDGES_H

#include "Tests/RealTime/AudioClient.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

namespace varno::test {

enum class Judge {
    kNone,        ///< Nobody: for the output to compare with.
    kSanitizer,   ///< The real-time sanitizer.
    kSystemCalls, ///< The kernel.
};

/// What is judged: blocks of 32, 64 and 512 frames in turn.
struct JudgedRun {
    std::function<std::unique_ptr<AudioClient>()> make;
    std::int64_t blocks = 0;
    /// Whether another thread disturbs the client meanwhile; then as many blocks more as it takes for
    /// kLeastDisturbances. Not with kSystemCalls: it would be judged too.
    bool hasCompany = false;
};

inline constexpr std::int64_t kLeastDisturbances = 30;

struct Verdict {
    bool isClean = false;
    std::string report;      ///< What the child has written to its standard error, and how it ended.
    std::int64_t blocks = 0; ///< Processed to their end.
    std::int64_t disturbances = 0;
    std::uint64_t outputHash = 0; ///< Of every sample put out.
};

/// Makes the client in a child process and has it process there. The calling process has one thread.
Verdict judge(Judge judge, const JudgedRun& run);

} // namespace varno::test

#endif
