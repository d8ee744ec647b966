#include "Tests/Support/RealTimeGuard.h"

#include <atomic>
#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <sstream>
#include <sys/types.h>

namespace varno::test {
namespace {

thread_local bool armed = false;
thread_local RealTimeReport report;

void note(int RealTimeReport::*kind, const char* name) {
    if (!armed) {
        return;
    }
    ++(report.*kind);
    if (report.first == nullptr) {
        report.first = name;
    }
}

// The function that an interposed one replaces.
void* next(std::atomic<void*>& slot, const char* name) {
    void* function = slot.load(std::memory_order_acquire);
    if (function == nullptr) {
        function = dlsym(RTLD_NEXT, name);
        if (function == nullptr) {
            std::abort();
        }
        slot.store(function, std::memory_order_release);
    }
    return function;
}

} // namespace

std::string textOf(const RealTimeReport& found) {
    if (found.clean()) {
        return {};
    }
    std::ostringstream text;
    text << "called " << found.first << " first; " << found.allocations << " allocations, " << found.locks
         << " locks, " << found.files << " file calls, " << found.waits << " waits";
    return text.str();
}

RealTimeScope::RealTimeScope() {
    report = {};
    armed = true;
}

RealTimeScope::~RealTimeScope() {
    armed = false;
}

RealTimeReport RealTimeScope::finish() {
    armed = false;
    return report;
}

} // namespace varno::test

using varno::test::next;
using varno::test::note;
using varno::test::RealTimeReport;

// The interposed functions carry names of their own in C++ and the library's in the object file, so that they
// do not collide with the declarations of the system's headers.
#define INTERPOSED(result, name, parameters)                                                                 \
    extern "C" [[gnu::visibility("default")]] result counting_##name parameters __asm__(#name);              \
    extern "C" result counting_##name parameters

// NOLINTBEGIN(bugprone-macro-parentheses): lists of parameters and arguments have their own.
// The replacement of a function: it counts the call and passes it on.
#define COUNTED(kind, result, name, parameters, arguments)                                                   \
    INTERPOSED(result, name, parameters) {                                                                   \
        static std::atomic<void*> slot{nullptr};                                                             \
        note(&RealTimeReport::kind, #name);                                                                  \
        return reinterpret_cast<result(*) parameters>(next(slot, #name)) arguments;                          \
    }
// NOLINTEND(bugprone-macro-parentheses)

// Memory: looking a function up allocates, so the allocator is reached by the names that the C library keeps
// for such replacements. The C++ operators and exceptions end up here.
extern "C" {
void* systemMalloc(std::size_t) __asm__("__libc_malloc");
void* systemCalloc(std::size_t, std::size_t) __asm__("__libc_calloc");
void* systemRealloc(void*, std::size_t) __asm__("__libc_realloc");
void* systemMemalign(std::size_t, std::size_t) __asm__("__libc_memalign");
void systemFree(void*) __asm__("__libc_free");
}

INTERPOSED(void*, malloc, (std::size_t size)) {
    note(&RealTimeReport::allocations, "malloc");
    return systemMalloc(size);
}

INTERPOSED(void*, calloc, (std::size_t count, std::size_t size)) {
    note(&RealTimeReport::allocations, "calloc");
    return systemCalloc(count, size);
}

INTERPOSED(void*, realloc, (void* memory, std::size_t size)) {
    note(&RealTimeReport::allocations, "realloc");
    return systemRealloc(memory, size);
}

INTERPOSED(void*, memalign, (std::size_t alignment, std::size_t size)) {
    note(&RealTimeReport::allocations, "memalign");
    return systemMemalign(alignment, size);
}

INTERPOSED(void*, aligned_alloc, (std::size_t alignment, std::size_t size)) {
    note(&RealTimeReport::allocations, "aligned_alloc");
    return systemMemalign(alignment, size);
}

INTERPOSED(int, posix_memalign, (void** outMemory, std::size_t alignment, std::size_t size)) {
    constexpr int kNoMemory = 12; // ENOMEM
    note(&RealTimeReport::allocations, "posix_memalign");
    *outMemory = systemMemalign(alignment, size);
    return *outMemory == nullptr ? kNoMemory : 0;
}

INTERPOSED(void, free, (void* memory)) {
    note(&RealTimeReport::allocations, "free");
    systemFree(memory);
}

COUNTED(allocations, void*, mmap, (void* a, std::size_t n, int p, int f, int fd, off_t o),
        (a, n, p, f, fd, o))
COUNTED(allocations, int, munmap, (void* address, std::size_t size), (address, size))

// Locks.
COUNTED(locks, int, pthread_mutex_lock, (void* mutex), (mutex))
COUNTED(locks, int, pthread_mutex_trylock, (void* mutex), (mutex))
COUNTED(locks, int, pthread_mutex_timedlock, (void* mutex, const void* until), (mutex, until))
COUNTED(locks, int, pthread_mutex_clocklock, (void* mutex, int clock, const void* until),
        (mutex, clock, until))
COUNTED(locks, int, pthread_mutex_unlock, (void* mutex), (mutex))
COUNTED(locks, int, pthread_rwlock_rdlock, (void* lock), (lock))
COUNTED(locks, int, pthread_rwlock_wrlock, (void* lock), (lock))
COUNTED(locks, int, pthread_rwlock_tryrdlock, (void* lock), (lock))
COUNTED(locks, int, pthread_rwlock_trywrlock, (void* lock), (lock))
COUNTED(locks, int, pthread_rwlock_unlock, (void* lock), (lock))
COUNTED(locks, int, pthread_spin_lock, (void* lock), (lock))
COUNTED(locks, int, pthread_once, (void* once, void (*routine)()), (once, routine))
COUNTED(locks, int, pthread_cond_wait, (void* condition, void* mutex), (condition, mutex))
COUNTED(locks, int, pthread_cond_timedwait, (void* c, void* mutex, const void* until), (c, mutex, until))
COUNTED(locks, int, pthread_cond_clockwait, (void* c, void* m, int clock, const void* until),
        (c, m, clock, until))
COUNTED(locks, int, pthread_cond_signal, (void* condition), (condition))
COUNTED(locks, int, pthread_cond_broadcast, (void* condition), (condition))
COUNTED(locks, int, sem_wait, (void* semaphore), (semaphore))
COUNTED(locks, int, sem_trywait, (void* semaphore), (semaphore))
COUNTED(locks, int, sem_post, (void* semaphore), (semaphore))

// Files and streams.
COUNTED(files, int, open, (const char* path, int flags, unsigned mode), (path, flags, mode))
COUNTED(files, int, open64, (const char* path, int flags, unsigned mode), (path, flags, mode))
COUNTED(files, int, openat, (int at, const char* path, int flags, unsigned mode), (at, path, flags, mode))
COUNTED(files, int, close, (int file), (file))
COUNTED(files, ssize_t, read, (int file, void* memory, std::size_t size), (file, memory, size))
COUNTED(files, ssize_t, write, (int file, const void* memory, std::size_t size), (file, memory, size))
COUNTED(files, ssize_t, pread, (int file, void* m, std::size_t size, off_t at), (file, m, size, at))
COUNTED(files, ssize_t, pwrite, (int file, const void* m, std::size_t size, off_t at), (file, m, size, at))
COUNTED(files, int, fsync, (int file), (file))
COUNTED(files, void*, fopen, (const char* path, const char* mode), (path, mode))
COUNTED(files, void*, fopen64, (const char* path, const char* mode), (path, mode))
COUNTED(files, int, fclose, (void* stream), (stream))
COUNTED(files, int, fflush, (void* stream), (stream))
COUNTED(files, std::size_t, fread, (void* m, std::size_t size, std::size_t n, void* f), (m, size, n, f))
COUNTED(files, std::size_t, fwrite, (const void* m, std::size_t size, std::size_t n, void* f),
        (m, size, n, f))
COUNTED(files, int, fputs, (const char* text, void* stream), (text, stream))
COUNTED(files, int, fputc, (int character, void* stream), (character, stream))
COUNTED(files, int, putchar, (int character), (character))
COUNTED(files, int, puts, (const char* text), (text))

INTERPOSED(int, printf, (const char* format, ...)) {
    note(&RealTimeReport::files, "printf");
    std::va_list arguments;
    va_start(arguments, format);
    const int written = std::vprintf(format, arguments);
    va_end(arguments);
    return written;
}

INTERPOSED(int, fprintf, (void* stream, const char* format, ...)) {
    note(&RealTimeReport::files, "fprintf");
    std::va_list arguments;
    va_start(arguments, format);
    const int written = std::vfprintf(static_cast<std::FILE*>(stream), format, arguments);
    va_end(arguments);
    return written;
}

// Waits.
COUNTED(waits, int, nanosleep, (const void* duration, void* left), (duration, left))
COUNTED(waits, int, clock_nanosleep, (int clock, int flags, const void* d, void* left),
        (clock, flags, d, left))
COUNTED(waits, int, usleep, (unsigned microseconds), (microseconds))
COUNTED(waits, int, sched_yield, (), ())
COUNTED(waits, int, poll, (void* files, unsigned long count, int timeout), (files, count, timeout))
COUNTED(waits, int, pthread_create, (void* t, const void* a, void* (*start)(void*), void* x),
        (t, a, start, x))
COUNTED(waits, int, pthread_join, (unsigned long thread, void** outResult), (thread, outResult))
COUNTED(waits, long, syscall, (long n, long a, long b, long c, long d, long e, long f), (n, a, b, c, d, e, f))
