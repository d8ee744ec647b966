// The drawing library can ask another program for a file's name, for which it starts a process. No editor of
// ours asks it to, and within a host no plug-in should: what it would call stands here and fails, so that the
// binary calls nothing of the system that starts one.
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
