#include "Validate/FailingAllocations.h"

#include "Validate/Plugin.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <system_error>

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

} // namespace

bool canRefuseMemory() {
    return true;
}

#else

bool canRefuseMemory() {
    return false;
}

#endif

} // namespace varno::validate

#if defined(__GLIBC__) && !defined(VARNO_SANITIZED)

// The functions of the C library under the names that it has for programs which replace them.
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

[[gnu::visibility("default")]] void* malloc(std::size_t size) noexcept {
    return varno::validate::isRefused(__builtin_return_address(0)) ? nullptr : __libc_malloc(size);
}

[[gnu::visibility("default")]] void* calloc(std::size_t count, std::size_t size) noexcept {
    return varno::validate::isRefused(__builtin_return_address(0)) ? nullptr : __libc_calloc(count, size);
}

[[gnu::visibility("default")]] void* realloc(void* memory, std::size_t size) noexcept {
    return varno::validate::isRefused(__builtin_return_address(0)) ? nullptr : __libc_realloc(memory, size);
}
}

#endif
