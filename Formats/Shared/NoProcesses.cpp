// The drawing library can start another program to choose a file. This editor never does so, and no plug-in
// should start a process within a host: the functions that the library would call are defined here and fail,
// so that the binary calls none of the system's.
#include <cerrno>
#include <sys/types.h>
#include <unistd.h>

extern "C" {

pid_t vfork() noexcept {
    errno = ENOSYS;
    return -1;
}

int execve(const char* /*path*/, char* const* /*arguments*/, char* const* /*environment*/) noexcept {
    errno = ENOSYS;
    return -1;
}

} // extern "C"
