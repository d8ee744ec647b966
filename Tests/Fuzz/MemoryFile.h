/// A file in memory, for what reads files.
#ifndef VARNO_TESTS_FUZZ_MEMORYFILE_H
#define VARNO_TESTS_FUZZ_MEMORYFILE_H

#include "Files/Transfer.h"

#include <cstdlib>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace varno::fuzz {

/// Has one content after the other.
class MemoryFile {
public:
    MemoryFile()
        : mFile(::memfd_create("fuzz", MFD_CLOEXEC)) {}

    /// Replaces the content; the position is at its start. What fails here ends the program: it is no fault
    /// of what is tested.
    void set(std::string_view content) {
        if (::ftruncate(mFile.get(), 0) != 0 || ::lseek(mFile.get(), 0, SEEK_SET) != 0 ||
            ::pwrite(mFile.get(), content.data(), content.size(), 0) !=
                static_cast<::ssize_t>(content.size())) {
            std::abort();
        }
    }

    /// The whole content.
    std::string content() const {
        std::string bytes(static_cast<std::size_t>(::lseek(mFile.get(), 0, SEEK_END)), '\0');
        if (!readAt(mFile.get(), 0, bytes.data(), bytes.size())) {
            std::abort();
        }
        return bytes;
    }

    int descriptor() const { return mFile.get(); }
    std::int64_t position() const { return ::lseek(mFile.get(), 0, SEEK_CUR); }
    /// Opens as a file of its own, from its start.
    std::string path() const { return "/proc/self/fd/" + std::to_string(mFile.get()); }

private:
    FileDescriptor mFile;
};

} // namespace varno::fuzz

#endif
