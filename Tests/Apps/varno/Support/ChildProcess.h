#ifndef VARNO_TESTS_APPS_VARNO_SUPPORT_CHILDPROCESS_H
#define VARNO_TESTS_APPS_VARNO_SUPPORT_CHILDPROCESS_H

#include <functional>

namespace varno::test {

/// Runs `work` in a child process, so that what it does to the process (limits, users, streams, signals) ends
/// with it.
/// @return the exit status that `work` returns, or that of the CommandError or FileError it ends with;
/// -1 where it ends in another way
int inChildProcess(const std::function<int()>& work);

/// Drops the privileges of the super user, where the process has them. For use in a child process.
void becomeOrdinaryUser();

} // namespace varno::test

#endif
