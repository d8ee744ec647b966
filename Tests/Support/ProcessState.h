/// What this process holds of the system.
#ifndef VARNO_TESTS_SUPPORT_PROCESSSTATE_H
#define VARNO_TESTS_SUPPORT_PROCESSSTATE_H

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace varno::test {

/// The number of open file descriptors.
inline std::ptrdiff_t openDescriptors() {
    // The folder is open itself while it is read.
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                         std::filesystem::directory_iterator()) -
           1;
}

/// Bytes of memory in use.
inline std::ptrdiff_t residentBytes() {
    std::ptrdiff_t total = 0;
    std::ptrdiff_t resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

} // namespace varno::test

#endif
