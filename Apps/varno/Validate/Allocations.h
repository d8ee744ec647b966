/// Memory of this process: counted, and refused to a plug-in. The program has functions of its own under the
/// names of the C library's.
#ifndef VARNO_APPS_VARNO_VALIDATE_ALLOCATIONS_H
#define VARNO_APPS_VARNO_VALIDATE_ALLOCATIONS_H

#include <cstddef>
#include <cstdint>
#include <filesystem>

namespace varno::validate {

/// Bytes that this process has allocated and not freed, by every one of its libraries. [any]
std::ptrdiff_t allocatedBytes();

/// Whether this build can refuse memory: one with a sanitizer, which has an allocator of its own, cannot.
bool canRefuseMemory();

/// While it lives, what the code of a binary takes from the C library fails: the allocation after the first
/// `allocations`, and every later one. Allocations of libraries that it calls, and of this program, succeed.
/// One at a time; to be used while this process has no other threads. Makes no allocation itself.
class FailingAllocations {
public:
    /// The code of a loaded binary.
    class Code {
    public:
        /// @param binary its path as it was loaded
        /// @throws PluginError where it is not loaded
        explicit Code(const std::filesystem::path& binary);

    private:
        friend class FailingAllocations;
        std::uintptr_t mFirst = 0;
        std::uintptr_t mEnd = 0;
    };

    FailingAllocations(const Code& code, int allocations);
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;
    ~FailingAllocations() { end(); }

    /// Everything succeeds again. @return whether one has failed
    bool end();
};

} // namespace varno::validate

#endif
