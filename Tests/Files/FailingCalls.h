/// Calls of the system that fail on demand: definitions of this program take the place of the C library's.
#ifndef VARNO_TESTS_FILES_FAILINGCALLS_H
#define VARNO_TESTS_FILES_FAILINGCALLS_H

namespace varno::test {

struct FailingCalls {
    int syncsUntilFailure = -1; ///< -1: none fails
    int renamesUntilKill = -1;  ///< of renameat2(); before which the process is killed; -1: none
    bool hasExchange = true;    ///< whether two files can change names
    bool hasUnnamed = true;     ///< whether folders hold files without names
    bool hasLinks = true;       ///< whether a file can have a second name
};

/// All calls work outside of the tests that change it.
extern FailingCalls failingCalls;

} // namespace varno::test

#endif
