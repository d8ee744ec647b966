#ifndef VARNO_AUDIOFILE_CONTAINERCHUNKS_H
#define VARNO_AUDIOFILE_CONTAINERCHUNKS_H

#include "Files/Transfer.h"

#include <cstdint>
#include <optional>
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

/// The samples of a file, in bytes. A program that writes to a pipe cannot go back to fill in their size. It
/// leaves a placeholder: all ones, 0, or a value near the largest that the field holds.
struct SampleExtent {
    std::int64_t offset = 0;  ///< of the first from the start of the file
    std::int64_t limit = 0;   ///< most bytes: the size that the header states, or the bound that it gives
    std::int64_t present = 0; ///< of these
    /// Whether `limit` is the size of the samples. Otherwise they end there or where the file ends.
    bool isStated = true;

    bool isTruncated() const { return isStated && present < limit; }
};

/// Where a file states the size of its samples.
struct SizeField {
    std::int64_t offset = 0;
    int bytes = 0; ///< 4 or 8
    bool bigEndian = false;
    std::int64_t besides = 0; ///< bytes that it counts beside the samples
};

/// The chunks of a file.
struct ContainerChunks {
    /// In file order, up to the first that reaches beyond the end of the file.
    std::vector<ContainerChunk> chunks;
    std::int64_t fileBytes = 0;
    ChunkFamily family = ChunkFamily::kNone;
    std::optional<SampleExtent> samples;
    SizeField samplesSize; ///< where there are `samples`
    /// How many bytes from its start the file would need to have, so that `samples` could be found. 0 where
    /// they have been, or where more bytes would not help.
    std::int64_t wantedBytes = 0;
};

/// Reads the chunk headers of a WAV, RF64, W64, AIFF or CAF file, and the place of an AU file's samples as
/// one chunk, without moving the file's position; no chunks for any other file.
/// The size of the samples:
/// - All ones state nothing: the samples end where the file ends. In RF64 the size is in the chunk "ds64".
/// - Sizes from 0x7F000000 (of 32 bits) or 0x7F00000000000000 (of 64) up are a bound. Chunks after it count.
///   In AU every size but all ones is exact.
/// - 0 states nothing where bytes follow that are no chunk.
/// @param descriptor open for reading, able to seek
ContainerChunks readContainerChunks(int descriptor);

/// The file from its start to its samples as libsndfile opens it whatever it states: followed by zeros, whose
/// number is stated as the size of the samples.
/// @param container with samples @return a file in memory, at its start @throws FileError
FileDescriptor copyHead(int descriptor, const ContainerChunks& container, const std::string& name);

/// Sets the time of day in the file's peak chunk to 0, where it has such a chunk. libsndfile 1.2 adds one to
/// RF64 files of floats even with SFC_SET_ADD_PEAK_CHUNK off, and the time would make the bytes of every run
/// differ.
/// @param descriptor open for reading and writing @param name of the file for messages @throws FileError
void clearPeakTime(int descriptor, const std::string& name);

} // namespace varno

#endif
