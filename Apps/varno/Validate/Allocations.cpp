#include "Validate/Allocations.h"

#include "Validate/Plugin.h"

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <system_error>

#if defined(VARNO_SANITIZED)
// Of the sanitizer's run-time library.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace varno::validate {
namespace {

constexpr int kNever = -1;
int gAllocationsLeft = kNever;
bool gHasFailed = false;
std::uintptr_t gFirstOfCode = 0;
std::uintptr_t gEndOfCode = 0;

} // namespace

FailingAllocations::Code::Code(const std::filesystem::path& binary) {
    std::error_code unknown;
    const std::string path = std::filesystem::canonical(binary, unknown).string();
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        if (!path.empty() && line.ends_with(' ' + path)) {
            std::istringstream range(line);
            char dash = '-';
            std::uintptr_t first = 0;
            std::uintptr_t end = 0;
            range >> std::hex >> first >> dash >> end;
            mFirst = mEnd == 0 ? first : std::min(mFirst, first);
            mEnd = std::max(mEnd, end);
        }
    }
    if (mEnd == 0) {
        throw PluginError(path + " is not in memory");
    }
}

FailingAllocations::FailingAllocations(const Code& code, int allocations) {
    gFirstOfCode = code.mFirst;
    gEndOfCode = code.mEnd;
    gHasFailed = false;
    gAllocationsLeft = allocations;
}

bool FailingAllocations::end() {
    gAllocationsLeft = kNever;
    return gHasFailed;
}

#if defined(__GLIBC__) && !defined(VARNO_SANITIZED)

namespace {

// mallinfo2() counts free blocks as taken that the allocator keeps for a thread.
std::atomic<std::ptrdiff_t> gAllocatedBytes = 0;

// Whether the allocation that this address called for shall fail.
bool isRefused(const void* caller) {
    const auto address = reinterpret_cast<std::uintptr_t>(caller);
    if (gAllocationsLeft == kNever || address < gFirstOfCode || address >= gEndOfCode) {
        return false;
    }
    if (gAllocationsLeft > 0) {
        --gAllocationsLeft;
        return false;
    }
    gHasFailed = true;
    errno = ENOMEM;
    return true;
}

// Counts a block. Returns it.
void* taken(void* memory) {
    if (memory != nullptr) {
        gAllocatedBytes.fetch_add(static_cast<std::ptrdiff_t>(::malloc_usable_size(memory)),
                                  std::memory_order_relaxed);
    }
    return memory;
}

void givenBack(std::size_t bytes) {
    gAllocatedBytes.fetch_sub(static_cast<std::ptrdiff_t>(bytes), std::memory_order_relaxed);
}

} // namespace

std::ptrdiff_t allocatedBytes() {
    return gAllocatedBytes.load(std::memory_order_relaxed);
}

bool canRefuseMemory() {
    return true;
}

#else

bool canRefuseMemory() {
    return false;
}

std::ptrdiff_t allocatedBytes() {
    return static_cast<std::ptrdiff_t>(__sanitizer_get_current_allocated_bytes());
}

#endif

} // namespace varno::validate

#if defined(__GLIBC__) && !defined(VARNO_SANITIZED)

// The functions of the C library under the names that it has for programs which replace them.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* memory);

[[gnu::visibility("default")]] void* malloc(std::size_t size) noexcept {
    using namespace varno::validate;
    return isRefused(__builtin_return_address(0)) ? nullptr : taken(__libc_malloc(size));
}

[[gnu::visibility("default")]] void* calloc(std::size_t count, std::size_t size) noexcept {
    using namespace varno::validate;
    return isRefused(__builtin_return_address(0)) ? nullptr : taken(__libc_calloc(count, size));
}

[[gnu::visibility("default")]] void* realloc(void* memory, std::size_t size) noexcept {
    using namespace varno::validate;
    if (isRefused(__builtin_return_address(0))) {
        return nullptr;
    }
    const std::size_t before = ::malloc_usable_size(memory);
    void* const moved = __libc_realloc(memory, size);
    // A size of 0 frees.
    if (moved != nullptr || size == 0) {
        givenBack(before);
    }
    return taken(moved);
}

[[gnu::visibility("default")]] void free(void* memory) noexcept {
    varno::validate::givenBack(::malloc_usable_size(memory));
    __libc_free(memory);
}

[[gnu::visibility("default")]] void* memalign(std::size_t alignment, std::size_t size) noexcept {
    return varno::validate::taken(__libc_memalign(alignment, size));
}

[[gnu::visibility("default")]] void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return varno::validate::taken(__libc_memalign(alignment, size));
}

[[gnu::visibility("default")]] int posix_memalign(void** memory, std::size_t alignment,
                                                  std::size_t size) noexcept {
    if (alignment % sizeof(void*) != 0 || !std::has_single_bit(alignment)) {
        return EINVAL;
    }
    void* const found = varno::validate::taken(__libc_memalign(alignment, size));
    if (found == nullptr) {
        return ENOMEM;
    }
    *memory = found;
    return 0;
}
}

#endif
