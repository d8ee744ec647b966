#ifndef VARNO_AUDIOFILE_METADATA_H
#define VARNO_AUDIOFILE_METADATA_H

#include "AudioFile/ContainerChunks.h"
#include "AudioFile/Format.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace varno {

/// A chunk of an audio file, copied unchanged.
struct CarriedChunk {
    std::string id; ///< four characters
    std::vector<char> data;
};

/// A marker of a file.
struct CuePoint {
    std::int32_t id = 0;
    std::uint32_t frame = 0;
    std::string name; ///< empty where the file has none
};

/// What an audio file holds beside its samples.
struct FileMetadata {
    /// Every chunk that stays valid when the samples change: markers, text, broadcast extension, sampler
    /// loops and the like. A file of the same family takes these instead of the fields below.
    std::vector<CarriedChunk> chunks;
    ChunkFamily family = ChunkFamily::kNone;
    std::vector<std::string>
        tooLarge; ///< identifiers of chunks that are left out of `chunks` because of their size

    std::map<int, std::string> tags; ///< text by libsndfile's SF_STR_ number
    std::vector<CuePoint> cues;
    bool hasSamplerLoops = false;
    bool hasBroadcast = false;
    std::vector<int>
        channelMap; ///< libsndfile's SF_CHANNEL_MAP_ numbers, one per channel; empty if not known
};

/// Most bytes of chunks that are carried from one file to another; they are held in memory.
inline constexpr std::int64_t kMostCarriedBytes = 4 << 20;

/// The family of the files that AudioWriter writes into a container.
ChunkFamily familyOf(Container container);

/// Fills `chunks`, `family` and `tooLarge` of the metadata from the file. @param descriptor open for reading
void readCarriedChunks(int descriptor, const ContainerChunks& container, FileMetadata& metadata);

/// The chunks that hold these cue points in a WAV or AIFF file; none for other families.
std::vector<CarriedChunk> cueChunks(ChunkFamily family, const std::vector<CuePoint>& cues);

/// Adds chunks at the end of a complete file of a family and corrects its length field.
/// @param descriptor open for reading and writing @param name of the file for messages @throws AudioFileError
void appendChunks(int descriptor, ChunkFamily family, const std::vector<CarriedChunk>& chunks,
                  const std::string& name);

} // namespace varno

#endif
