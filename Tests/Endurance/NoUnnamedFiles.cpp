// Preloaded into a program, it makes every file system one without files that have no name.
#include <cerrno>
#include <cstdarg>
#include <fcntl.h>
#include <sys/syscall.h>
#include <sys/types.h>
#include <unistd.h>

extern "C" __attribute__((visibility("default"))) int openat(int folder, const char* path, int flags, ...) {
    if ((flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = (flags & O_CREAT) != 0 ? va_arg(arguments, mode_t) : mode_t{0};
    va_end(arguments);
    return static_cast<int>(::syscall(SYS_openat, folder, path, flags, mode));
}
