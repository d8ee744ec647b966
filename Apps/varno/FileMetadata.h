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
    std::map<int, std::string> tags; // by libsndfile's SF_STR_ number
    std::vector<char> broadcast; // a SF_BROADCAST_INFO record with its coding history; empty if there is none
    std::vector<CuePoint> cues;
    std::vector<int> channelMap; // libsndfile's SF_CHANNEL_MAP_ numbers, one per channel; empty if not told
    std::vector<RiffChunk>
        chunks; // of a WAV or RF64 file: everything that another such file can hold unchanged
};

} // namespace varno
