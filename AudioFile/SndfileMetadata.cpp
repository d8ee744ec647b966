#include "AudioFile/SndfileMetadata.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace varno {

namespace {

constexpr std::uint32_t kMostCues =
    10'000; // more than any editor makes; bounds what a damaged count can take

// SF_CUES for any count: the count, then that many records.
std::size_t cueRecordBytes(std::size_t count) {
    return offsetof(SF_CUES, cue_points) + count * sizeof(SF_CUE_POINT);
}

std::map<int, std::string> readTags(SNDFILE* file) {
    std::map<int, std::string> tags;
    for (int tag = SF_STR_FIRST; tag <= SF_STR_LAST; ++tag) {
        if (const char* text = sf_get_string(file, tag)) {
            tags[tag] = text;
        }
    }
    return tags;
}

std::vector<CuePoint> readCues(SNDFILE* file) {
    std::uint32_t count = 0;
    if (sf_command(file, SFC_GET_CUE_COUNT, &count, sizeof count) != SF_TRUE) {
        return {};
    }
    count = std::min(count, kMostCues);
    std::vector<char> record(cueRecordBytes(count));
    if (sf_command(file, SFC_GET_CUE, record.data(), static_cast<int>(record.size())) != SF_TRUE) {
        return {};
    }
    std::vector<CuePoint> cues(count);
    for (std::size_t i = 0; i < count; ++i) {
        SF_CUE_POINT point;
        std::memcpy(&point, record.data() + cueRecordBytes(i), sizeof point);
        point.name[sizeof point.name - 1] = '\0';
        cues[i] = {point.indx, point.sample_offset, point.name};
    }
    return cues;
}

// libsndfile takes every text for these containers but writes only some.
bool dropsTag(Container container, int tag) {
    if (container == Container::kAiff) {
        return tag > SF_STR_COMMENT;
    }
    return (container == Container::kWav || container == Container::kRf64) && tag == SF_STR_LICENSE;
}

} // namespace

FileMetadata readMetadata(SNDFILE* file, int channels) {
    FileMetadata metadata;
    metadata.tags = readTags(file);
    metadata.cues = readCues(file);
    SF_INSTRUMENT instrument{};
    metadata.hasSamplerLoops =
        sf_command(file, SFC_GET_INSTRUMENT, &instrument, sizeof instrument) == SF_TRUE;
    SF_BROADCAST_INFO broadcast{};
    metadata.hasBroadcast = sf_command(file, SFC_GET_BROADCAST_INFO, &broadcast, sizeof broadcast) == SF_TRUE;
    std::vector<int> map(static_cast<std::size_t>(channels));
    const int mapBytes = static_cast<int>(map.size() * sizeof(int));
    if (sf_command(file, SFC_GET_CHANNEL_MAP_INFO, map.data(), mapBytes) == SF_TRUE) {
        metadata.channelMap = map;
    }
    return metadata;
}

bool writeMetadata(SNDFILE* file, Container container, const FileMetadata& metadata) {
    std::vector<int> map = metadata.channelMap;
    if (!map.empty()) {
        sf_command(file, SFC_SET_CHANNEL_MAP_INFO, map.data(), static_cast<int>(map.size() * sizeof(int)));
    }
    bool all = true;
    for (const auto& [tag, text] : metadata.tags) {
        all &= sf_set_string(file, tag, text.c_str()) == SF_ERR_NO_ERROR && !dropsTag(container, tag);
    }
    return all;
}

} // namespace varno
