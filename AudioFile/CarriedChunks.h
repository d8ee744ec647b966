#ifndef VARNO_AUDIOFILE_CARRIEDCHUNKS_H
#define VARNO_AUDIOFILE_CARRIEDCHUNKS_H

#include "AudioFile/ContainerChunks.h"
#include "AudioFile/Format.h"
#include "AudioFile/Metadata.h"

#include <string>
#include <vector>

namespace varno {

/// Most bytes of chunks that are carried from one file to another; they are held in memory meanwhile.
inline constexpr std::int64_t kMostCarriedBytes = 4 << 20;

/// The family of the files that this program writes into a container.
ChunkFamily familyOf(Container container);

/// Fills `chunks`, `family` and `tooLarge` of the metadata from the file. @param descriptor open for reading
void readCarriedChunks(int descriptor, const ContainerChunks& container, FileMetadata& metadata);

/// The chunks that hold these cue points in a WAV or AIFF file; none for other families.
std::vector<CarriedChunk> cueChunks(ChunkFamily family, const std::vector<CuePoint>& cues);

/// Adds chunks at the end of a complete file of a family and corrects its length field.
/// @param descriptor open for reading and writing @param name of the file for messages @throws WorkError
void appendChunks(int descriptor, ChunkFamily family, const std::vector<CarriedChunk>& chunks,
                  const std::string& name);

} // namespace varno

#endif
