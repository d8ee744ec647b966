#include "AudioFile/PeakChunk.h"

#include "AudioFile/ContainerChunks.h"
#include "AudioFile/Transfer.h"

#include <array>
#include <cerrno>
#include <unistd.h>

namespace varno {

namespace {

// A peak chunk begins with its version and the time, in seconds since 1970, of 4 bytes each.
constexpr std::int64_t kTimeOffset = 4;
constexpr std::array<char, 4> kNoTime{};

} // namespace

void clearPeakTime(int descriptor, const std::string& name) {
    for (const ContainerChunk& chunk : readContainerChunks(descriptor).chunks) {
        const std::int64_t offset = chunk.dataOffset + kTimeOffset;
        if (chunk.id == "PEAK" && ::pwrite(descriptor, kNoTime.data(), kNoTime.size(), offset) !=
                                      static_cast<ssize_t>(kNoTime.size())) {
            throwWriteError(name, errno);
        }
    }
}

} // namespace varno
