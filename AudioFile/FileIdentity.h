#ifndef VARNO_AUDIOFILE_FILEIDENTITY_H
#define VARNO_AUDIOFILE_FILEIDENTITY_H

#include <cstdint>

namespace varno {

/// What tells one file of the system from all others under whatever name: device and inode.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    bool operator==(const FileIdentity&) const = default;
};

} // namespace varno

#endif
