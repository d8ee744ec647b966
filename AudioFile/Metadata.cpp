#include "AudioFile/Metadata.h"

#include "AudioFile/Transfer.h"

#include <algorithm>
#include <cerrno>
#include <span>
#include <string_view>
#include <unistd.h>

namespace varno {

namespace {

constexpr std::string_view kRiffIds[] = {
    "bext", "cue ", "LIST", "iXML", "axml", "chna", "cart",
    "smpl", "inst", "acid", "DISP", "ID3 ", "id3 ", "_PMX",
};
constexpr std::string_view kCarriedLists[] = {"INFO", "adtl"};
constexpr std::string_view kAiffIds[] = {
    "MARK", "INST", "COMT", "NAME", "AUTH", "(c) ", "ANNO", "APPL", "MIDI", "ID3 ",
};
constexpr std::string_view kCafIds[] = {"info", "mark", "strg", "regn", "inst", "midi", "umid"};

// The format of a family's chunks: identifier, size, data, and a zero where the next would have an odd
// offset. Not written by libsndfile's own calls (sf_set_chunk): version 1.2 rounds sizes up to multiples of 4
// and damages files whose chunks have tens of kilobytes.
struct FamilyRow {
    ChunkFamily family;
    std::span<const std::string_view> carriedIds;
    int sizeBytes;
    bool bigEndian;
    bool padded;
};

constexpr FamilyRow kFamilies[] = {
    {ChunkFamily::kRiff, kRiffIds, 4, false, true},
    {ChunkFamily::kAiff, kAiffIds, 4, true, true},
    {ChunkFamily::kCaf, kCafIds, 8, true, false},
};

constexpr std::int64_t kFileSizeOffset = 4;     // RIFF and AIFF: 32 bits, counts the bytes after it
constexpr std::int64_t kRf64SizeOffset = 20;    // 64 bits, within the chunk "ds64", which is the first
constexpr std::int64_t kUncountedFileBytes = 8; // of the start of the file, which both leave out

const FamilyRow* rowOf(ChunkFamily family) {
    const auto* row = std::find_if(std::begin(kFamilies), std::end(kFamilies),
                                   [&](const FamilyRow& candidate) { return candidate.family == family; });
    return row == std::end(kFamilies) ? nullptr : row;
}

bool contains(std::span<const std::string_view> texts, std::string_view text) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

bool isCarried(const CarriedChunk& chunk) {
    if (chunk.id != "LIST") {
        return true;
    }
    return chunk.data.size() >= 4 && contains(kCarriedLists, std::string_view(chunk.data.data(), 4));
}

std::string number(std::uint64_t value, int bytes, bool bigEndian) {
    std::string text;
    for (int i = 0; i < bytes; ++i) {
        text += static_cast<char>(value >> (8 * (bigEndian ? bytes - 1 - i : i)) & 0xFF);
    }
    return text;
}

std::string little32(std::uint64_t value) {
    return number(value, 4, false);
}

CarriedChunk makeChunk(const char* id, const std::string& data) {
    return {id, {data.begin(), data.end()}};
}

std::string chunkBytes(const FamilyRow& row, std::string_view id, std::string_view data) {
    std::string bytes(id);
    bytes += number(data.size(), row.sizeBytes, row.bigEndian);
    bytes += data;
    if (row.padded && data.size() % 2 != 0) {
        bytes += '\0';
    }
    return bytes;
}

std::vector<CarriedChunk> riffCues(const std::vector<CuePoint>& cues) {
    std::string points = little32(cues.size());
    std::string labels = "adtl";
    for (const CuePoint& cue : cues) {
        const auto id = static_cast<std::uint32_t>(cue.id);
        // Identifier, position in a play list, chunk, offsets of chunk and block (for packed data), frame.
        points +=
            little32(id) + little32(cue.frame) + "data" + little32(0) + little32(0) + little32(cue.frame);
        if (!cue.name.empty()) {
            labels += chunkBytes(*rowOf(ChunkFamily::kRiff), "labl", little32(id) + cue.name + '\0');
        }
    }
    std::vector<CarriedChunk> chunks{makeChunk("cue ", points)};
    if (labels.size() > 4) {
        chunks.push_back(makeChunk("LIST", labels));
    }
    return chunks;
}

// Each marker: number (from 1), position, length of the name, name, and a zero if the last two have an odd
// sum.
std::vector<CarriedChunk> aiffMarkers(const std::vector<CuePoint>& cues) {
    std::string markers = number(cues.size(), 2, true);
    std::uint64_t id = 1;
    for (const CuePoint& cue : cues) {
        const std::string name = cue.name.substr(0, 255);
        markers += number(id++, 2, true) + number(cue.frame, 4, true) + number(name.size(), 1, true) + name;
        if (name.size() % 2 == 0) {
            markers += '\0';
        }
    }
    return {makeChunk("MARK", markers)};
}

void correctLength(int descriptor, const FamilyRow& row, std::int64_t fileBytes, const std::string& name) {
    if (row.family == ChunkFamily::kCaf) {
        return; // no length field
    }
    char magic[4];
    if (!readAt(descriptor, 0, magic, sizeof magic)) {
        throwReadError(name, errno);
    }
    const auto counted = static_cast<std::uint64_t>(fileBytes - kUncountedFileBytes);
    if (std::string_view(magic, sizeof magic) == "RF64") {
        writeAt(descriptor, kRf64SizeOffset, number(counted, 8, false), name);
    } else {
        writeAt(descriptor, kFileSizeOffset, number(counted, row.sizeBytes, row.bigEndian), name);
    }
}

} // namespace

ChunkFamily familyOf(Container container) {
    switch (container) {
    case Container::kWav:
    case Container::kRf64:
        return ChunkFamily::kRiff;
    case Container::kAiff:
        return ChunkFamily::kAiff;
    case Container::kCaf:
        return ChunkFamily::kCaf;
    default:
        return ChunkFamily::kNone;
    }
}

void readCarriedChunks(int descriptor, const ContainerChunks& container, FileMetadata& metadata) {
    const FamilyRow* row = rowOf(container.family);
    if (row == nullptr) {
        return;
    }
    metadata.family = container.family;
    std::int64_t left = kMostCarriedBytes;
    for (const ContainerChunk& chunk : container.chunks) {
        if (!contains(row->carriedIds, chunk.id) ||
            chunk.dataBytes > container.fileBytes - chunk.dataOffset) {
            continue;
        }
        if (chunk.dataBytes > left) {
            metadata.tooLarge.push_back(chunk.id);
            continue;
        }
        CarriedChunk copy{chunk.id, std::vector<char>(static_cast<std::size_t>(chunk.dataBytes))};
        if (!readAt(descriptor, chunk.dataOffset, copy.data.data(), copy.data.size()) || !isCarried(copy)) {
            continue;
        }
        left -= chunk.dataBytes;
        metadata.chunks.push_back(std::move(copy));
    }
}

std::vector<CarriedChunk> cueChunks(ChunkFamily family, const std::vector<CuePoint>& cues) {
    if (cues.empty()) {
        return {};
    }
    if (family == ChunkFamily::kRiff) {
        return riffCues(cues);
    }
    return family == ChunkFamily::kAiff ? aiffMarkers(cues) : std::vector<CarriedChunk>{};
}

void appendChunks(int descriptor, ChunkFamily family, const std::vector<CarriedChunk>& chunks,
                  const std::string& name) {
    const FamilyRow* row = rowOf(family);
    if (row == nullptr || chunks.empty()) {
        return;
    }
    const std::int64_t before = ::lseek(descriptor, 0, SEEK_END);
    if (before < 0) {
        throwReadError(name, errno);
    }
    std::string bytes(row->padded ? static_cast<std::size_t>(before % 2) : 0, '\0');
    for (const CarriedChunk& chunk : chunks) {
        bytes += chunkBytes(*row, chunk.id, {chunk.data.data(), chunk.data.size()});
    }
    writeAll(descriptor, bytes, name, {});
    correctLength(descriptor, *row, before + static_cast<std::int64_t>(bytes.size()), name);
}

} // namespace varno
