/// Counts calls that are forbidden on an audio thread. A program that links this has its allocator, thread
/// locks, waits and file calls replaced by ones that count, for all of its code and libraries. Not for
/// sanitizer builds, which replace the same functions themselves.
#ifndef VARNO_TESTS_SUPPORT_REALTIMEGUARD_H
#define VARNO_TESTS_SUPPORT_REALTIMEGUARD_H

#include <string>

namespace varno::test {

/// Forbidden calls of one thread.
struct RealTimeReport {
    int allocations = 0; ///< Memory allocated, resized or freed.
    int locks = 0;       ///< Mutexes, read-write locks, condition variables, semaphores, run-once guards.
    int files = 0;       ///< Files and streams, printing included.
    int waits = 0;       ///< Sleeping, yielding, polling, bare system calls, threads started or joined.
    const char* first = nullptr; ///< Name of the first function called; null without any.

    bool clean() const { return first == nullptr; }
};

/// The report in one line; empty where it is clean.
std::string textOf(const RealTimeReport& report);

/// While it lives, forbidden calls of the calling thread are counted; they are carried out nevertheless. At
/// most one per thread.
class RealTimeScope {
public:
    RealTimeScope();
    RealTimeScope(const RealTimeScope&) = delete;
    RealTimeScope& operator=(const RealTimeScope&) = delete;
    ~RealTimeScope();

    /// Stops counting and returns what was counted.
    RealTimeReport finish();
};

} // namespace varno::test

#endif
