#ifndef VARNO_AUDIOFILE_METADATA_H
#define VARNO_AUDIOFILE_METADATA_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace varno {

/// Containers whose files take each other's chunks byte for byte.
enum class ChunkFamily {
    kNone,
    kRiff, // WAV and RF64 of the usual byte order
    kAiff,
    kCaf,
};

/// A chunk of an audio file, carried as it is.
struct CarriedChunk {
    std::string id; // four characters
    std::vector<char> data;
};

/// A marker of a file.
struct CuePoint {
    std::int32_t id = 0;
    std::uint32_t frame = 0;
    std::string name; // empty where the file has none
};

/// What an audio file says about itself beside its samples.
struct FileMetadata {
    /// Every chunk that stays true when the samples change: markers, text, broadcast extension, sampler loops
    /// and the like. A file of the same family takes these instead of the fields below.
    std::vector<CarriedChunk> chunks;
    ChunkFamily family = ChunkFamily::kNone;
    std::vector<std::string> tooLarge; // identifiers of chunks that are not among `chunks` for their size

    std::map<int, std::string> tags; // text by libsndfile's SF_STR_ number
    std::vector<CuePoint> cues;
    bool hasSamplerLoops = false;
    bool hasBroadcast = false;
    std::vector<int> channelMap; // libsndfile's SF_CHANNEL_MAP_ numbers, one per channel; empty if not told
};

} // namespace varno

#endif
