#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace varno {

/// A chunk of a RIFF file, carried as it is.
struct RiffChunk {
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
    std::map<int, std::string> tags; // text by libsndfile's SF_STR_ number
    std::vector<CuePoint> cues;
    std::vector<char>
        instrument; // libsndfile's SF_INSTRUMENT record (key range, loops); empty if there is none
    std::vector<int> channelMap; // libsndfile's SF_CHANNEL_MAP_ numbers, one per channel; empty if not told
    /// Of a WAV or RF64 file: every chunk that stays true when the samples change, among them the three above
    /// and the broadcast extension. Another such file takes these instead of the fields above, byte for byte.
    std::vector<RiffChunk> chunks;
    std::vector<std::string> tooLarge; // identifiers of chunks that are not among `chunks` for their size
};

} // namespace varno
