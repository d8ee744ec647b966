#ifndef VARNO_AUDIOFILE_CONTAINERCHUNKS_H
#define VARNO_AUDIOFILE_CONTAINERCHUNKS_H

#include "AudioFile/Metadata.h"

#include <cstdint>
#include <string>
#include <vector>

namespace varno {

/// Where a chunk of an audio file lies.
struct ContainerChunk {
    std::string id; // four characters; of W64's 16-byte identifiers the first four
    std::int64_t dataOffset = 0;
    std::int64_t dataBytes = 0; // as the file says; may reach beyond its end
};

/// The chunks of a file.
struct ContainerChunks {
    std::vector<ContainerChunk>
        chunks; // in file order, up to the first whose start lies beyond the end of the file
    std::int64_t fileBytes = 0;
    ChunkFamily family = ChunkFamily::kNone;
};

/// Reads the chunk headers of a WAV, RF64, W64, AIFF or CAF file without moving its position; no chunks for
/// any other file. @param descriptor open for reading, able to seek
ContainerChunks readContainerChunks(int descriptor);

/// The samples of a file, in bytes.
struct SampleExtent {
    std::int64_t promised = 0; // by the header
    std::int64_t present = 0;  // of these

    bool isTruncated() const { return present < promised; }
};

/// What the header promises and the file has. Where it does not know, which is so in streams (programs that
/// write to a pipe leave a size behind that no file has), it promises what is there.
SampleExtent sampleExtent(const ContainerChunks& container);

} // namespace varno

#endif
