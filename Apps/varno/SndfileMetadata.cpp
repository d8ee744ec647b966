#include "SndfileMetadata.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace varno {

namespace {

constexpr int kMostCues =
    10'000; // as many as any editor makes; bounds the memory that a damaged count can take

int bytesOf(const std::vector<char>& record) {
    return static_cast<int>(record.size());
}

// SF_CUES for any count: the count, then that many records.
std::size_t cueRecordBytes(std::size_t count) {
    return offsetof(SF_CUES, cue_points) + count * sizeof(SF_CUE_POINT);
}

std::map<int, std::string> readTags(SNDFILE* file) {
    std::map<int, std::string> tags;
    for (int tag = SF_STR_FIRST; tag <= SF_STR_LAST; ++tag)
        if (const char* text = sf_get_string(file, tag))
            tags[tag] = text;
    return tags;
}

std::vector<CuePoint> readCues(SNDFILE* file) {
    std::uint32_t count = 0;
    if (sf_command(file, SFC_GET_CUE_COUNT, &count, sizeof count) != SF_TRUE)
        return {};
    count = std::min(count, std::uint32_t{kMostCues});
    std::vector<char> record(cueRecordBytes(count));
    if (sf_command(file, SFC_GET_CUE, record.data(), bytesOf(record)) != SF_TRUE)
        return {};
    std::vector<CuePoint> cues(count);
    for (std::size_t i = 0; i < count; ++i) {
        SF_CUE_POINT point;
        std::memcpy(&point, record.data() + cueRecordBytes(i), sizeof point);
        point.name[sizeof point.name - 1] = '\0';
        cues[i] = {point.indx, point.sample_offset, point.name};
    }
    return cues;
}

bool writeCues(SNDFILE* file, const std::vector<CuePoint>& cues) {
    const auto count = static_cast<std::uint32_t>(cues.size());
    std::vector<char> record(cueRecordBytes(count));
    std::memcpy(record.data(), &count, sizeof count);
    for (std::size_t i = 0; i < count; ++i) {
        SF_CUE_POINT point{};
        point.indx = cues[i].id;
        point.position = point.sample_offset = cues[i].frame;
        cues[i].name.copy(point.name, sizeof point.name - 1);
        std::memcpy(record.data() + cueRecordBytes(i), &point, sizeof point);
    }
    return sf_command(file, SFC_SET_CUE, record.data(), bytesOf(record)) == SF_TRUE;
}

bool writeTags(SNDFILE* file, const std::map<int, std::string>& tags) {
    return std::all_of(tags.begin(), tags.end(), [&](const auto& tag) {
        return sf_set_string(file, tag.first, tag.second.c_str()) == SF_ERR_NO_ERROR;
    });
}

bool isRiff(Container container) {
    return container == Container::kWav || container == Container::kRf64;
}

} // namespace

FileMetadata readMetadata(SNDFILE* file, int channels) {
    FileMetadata metadata;
    metadata.tags = readTags(file);
    metadata.cues = readCues(file);
    std::vector<char> instrument(sizeof(SF_INSTRUMENT));
    if (sf_command(file, SFC_GET_INSTRUMENT, instrument.data(), bytesOf(instrument)) == SF_TRUE)
        metadata.instrument = instrument;
    std::vector<int> map(static_cast<std::size_t>(channels));
    if (sf_command(file, SFC_GET_CHANNEL_MAP_INFO, map.data(), static_cast<int>(map.size() * sizeof(int))) ==
        SF_TRUE)
        metadata.channelMap = map;
    return metadata;
}

std::vector<std::string> writeMetadata(SNDFILE* file, Container container, const FileMetadata& metadata) {
    std::vector<std::string> leftOut;
    if (!metadata.tags.empty() && !writeTags(file, metadata.tags))
        leftOut.push_back("text tags");
    // libsndfile takes cue points and loops for every container but writes them to these alone; for WAV the
    // caller writes the cue points, since libsndfile drops their labels.
    if (!metadata.cues.empty() && !isRiff(container) &&
        (container != Container::kAiff || !writeCues(file, metadata.cues)))
        leftOut.push_back("cue points");
    if (!metadata.instrument.empty()) {
        std::vector<char> record = metadata.instrument;
        const bool holds = container == Container::kWav || container == Container::kAiff;
        if (!holds || sf_command(file, SFC_SET_INSTRUMENT, record.data(), bytesOf(record)) != SF_TRUE)
            leftOut.push_back("sampler loops");
    }
    return leftOut;
}

} // namespace varno
