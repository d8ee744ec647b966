#ifndef VARNO_AUDIOFILE_CONTAINERCHUNKS_H
#define VARNO_AUDIOFILE_CONTAINERCHUNKS_H

#include <cstdint>
#include <string>
#include <vector>

namespace varno {

/// Containers whose files take each other's chunks byte for byte.
enum class ChunkFamily {
    kNone,
    kRiff, ///< WAV and RF64 in little-endian byte order
    kAiff,
    kCaf,
};

/// Where a chunk of an audio file lies.
struct ContainerChunk {
    std::string id; ///< four characters; of W64's 16-byte identifiers the first four
    std::int64_t dataOffset = 0;
    std::int64_t dataBytes = 0; ///< as the file states; may reach beyond its end
};

/// The chunks of a file.
struct ContainerChunks {
    /// In file order, up to the first that reaches beyond the end of the file.
    std::vector<ContainerChunk> chunks;
    std::int64_t fileBytes = 0;
    ChunkFamily family = ChunkFamily::kNone;
};

/// Reads the chunk headers of a WAV, RF64, W64, AIFF or CAF file, and the place of an AU file's samples as
/// one chunk, without moving the file's position; no chunks for any other file.
/// @param descriptor open for reading, able to seek
ContainerChunks readContainerChunks(int descriptor);

/// The samples of a file, in bytes.
struct SampleExtent {
    std::int64_t promised = 0; ///< as the header states
    std::int64_t present = 0;  ///< of these

    bool isTruncated() const { return present < promised; }
};

/// The size that the header states, and that of what the file holds. Where the header does not state a size,
/// `promised` is what is present: programs that write to a pipe leave a placeholder for the size.
SampleExtent sampleExtent(const ContainerChunks& container);

/// Sets the time of day in the file's peak chunk to 0, where it has such a chunk. libsndfile 1.2 adds one to
/// RF64 files of floats even with SFC_SET_ADD_PEAK_CHUNK off, and the time would make the bytes of every run
/// differ.
/// @param descriptor open for reading and writing @param name of the file for messages @throws AudioFileError
void clearPeakTime(int descriptor, const std::string& name);

} // namespace varno

#endif
