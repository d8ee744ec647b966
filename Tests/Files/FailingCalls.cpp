#include "Tests/Files/FailingCalls.h"

#include <sys/syscall.h>

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace varno::test {

FailingCalls failingCalls;

} // namespace varno::test

using varno::test::failingCalls;

extern "C" int fsync(int descriptor) {
    if (failingCalls.syncsUntilFailure >= 0 && failingCalls.syncsUntilFailure-- == 0) {
        errno = EIO;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

extern "C" int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
                         unsigned flags) noexcept {
    if (failingCalls.renamesUntilKill >= 0 && failingCalls.renamesUntilKill-- == 0) {
        ::kill(::getpid(), SIGKILL);
    }
    if (flags == RENAME_EXCHANGE && !failingCalls.hasExchange) {
        errno = EINVAL;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

extern "C" int openat(int folder, const char* path, int flags, ...) {
    if ((flags & O_TMPFILE) == O_TMPFILE && !failingCalls.hasUnnamed) {
        errno = EOPNOTSUPP;
        return -1;
    }
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = va_arg(arguments, mode_t);
    va_end(arguments);
    return static_cast<int>(::syscall(SYS_openat, folder, path, flags, mode));
}

extern "C" int link(const char* from, const char* to) noexcept {
    if (!failingCalls.hasLinks) {
        errno = EPERM;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_linkat, AT_FDCWD, from, AT_FDCWD, to, 0));
}
