#include "CommandLine/LibraryMessages.h"

#include <atomic>
#include <cstdint>
#include <fcntl.h>
#include <mutex>
#include <unistd.h>

// Where a sanitizer writes its reports; null in programs that are built without any.
// NOLINTNEXTLINE(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the sanitizers' name
extern "C" __attribute__((weak)) void __sanitizer_set_report_fd(void* descriptor);

namespace varno {
namespace {

std::mutex silenceMutex;
int silences = 0; // under the mutex

// Another descriptor of the same stream, once it has been needed. It is never closed: any thread may be
// writing.
std::atomic<int> ownDescriptor{STDERR_FILENO};

// Whether there is such a descriptor.
bool keepOwn() {
    if (ownDescriptor.load() != STDERR_FILENO) {
        return true;
    }
    const int kept = ::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (kept < 0) {
        return false;
    }
    ownDescriptor.store(kept);
    if (__sanitizer_set_report_fd != nullptr) {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): that is how it takes a number
        __sanitizer_set_report_fd(reinterpret_cast<void*>(static_cast<std::intptr_t>(kept)));
    }
    return true;
}

} // namespace

LibrariesSilenced::LibrariesSilenced() noexcept {
    const std::lock_guard lock(silenceMutex);
    if (++silences > 1 || !keepOwn()) {
        return;
    }
    const int nothing = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (nothing >= 0) {
        ::dup2(nothing, STDERR_FILENO);
        ::close(nothing);
    }
}

LibrariesSilenced::~LibrariesSilenced() {
    const std::lock_guard lock(silenceMutex);
    if (--silences == 0 && ownDescriptor.load() != STDERR_FILENO) {
        ::dup2(ownDescriptor.load(), STDERR_FILENO);
    }
}

int standardError() noexcept {
    return ownDescriptor.load(std::memory_order_relaxed);
}

} // namespace varno
