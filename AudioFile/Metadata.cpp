#include "AudioFile/Metadata.h"

#include "AudioFile/Id3.h"
#include "AudioFile/OggTags.h"
#include "AudioFile/TagStream.h"
#include "Files/Transfer.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <span>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace varno {

namespace {

// What the container's writer makes, which is not carried.
constexpr std::string_view kRiffMade[] = {"fmt ", "fact", "data", "ds64", "PEAK",
                                          "JUNK", "junk", "PAD ", "FLLR"};
constexpr std::string_view kAiffMade[] = {"FVER", "COMM", "SSND", "PEAK"};
constexpr std::string_view kCafMade[] = {"desc", "data", "pakt", "kuki", "chan", "free", "peak"};

// What describes the samples before the effect: levels, and parts of the samples in the order of playing.
constexpr std::string_view kOfSamples[] = {"levl", "wavl", "plst", "slnt", "SAXL", "ovvw"};

constexpr std::size_t kListTypeBytes = 4;
constexpr std::int64_t kAuTextOffset = 24; // of the text between the header's fields and the samples

// The format of a family's chunks: identifier, size, data, and a zero where the next would have an odd
// offset. Not written by libsndfile's own calls (sf_set_chunk): version 1.2 rounds sizes up to multiples of 4
// and damages files whose chunks have tens of kilobytes.
struct FamilyRow {
    ChunkFamily family;
    std::span<const std::string_view> madeIds;
    int sizeBytes;
    bool bigEndian;
    bool padded;
};

constexpr FamilyRow kFamilies[] = {
    {ChunkFamily::kRiff, kRiffMade, 4, false, true},
    {ChunkFamily::kAiff, kAiffMade, 4, true, true},
    {ChunkFamily::kCaf, kCafMade, 8, true, false},
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

std::string bytesIn(const FamilyRow& row, std::string_view id, std::string_view data) {
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
            labels += chunkBytes(ChunkFamily::kRiff, "labl", little32(id) + cue.name + '\0');
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

// What is left of the bytes that may be read from a file.
struct ByteBudget {
    int descriptor;
    std::int64_t left;

    // Nothing where the bytes are not there.
    std::optional<std::vector<char>> read(std::int64_t offset, std::int64_t count) {
        std::vector<char> bytes(static_cast<std::size_t>(count));
        if (!readAt(descriptor, offset, bytes.data(), bytes.size())) {
            return std::nullopt;
        }
        left -= count;
        return bytes;
    }
};

bool describesSamples(const std::string& id, const std::vector<char>& data) {
    const std::string_view listType(data.data(), std::min(data.size(), kListTypeBytes));
    return contains(kOfSamples, id) || (id == "LIST" && contains(kOfSamples, listType));
}

void readChunk(ByteBudget& budget, const ContainerChunk& chunk, std::int64_t fileBytes,
               FileMetadata& metadata) {
    const auto leaveOut = [&](LeftOutReason reason) {
        addLeftOut(metadata.leftOut, reason, LeftOutKind::kChunk, chunk.id);
    };
    if (chunk.dataBytes < 0 || chunk.dataBytes > fileBytes - chunk.dataOffset) {
        leaveOut(LeftOutReason::kUnreadable);
        return;
    }
    if (chunk.dataBytes > budget.left) {
        leaveOut(LeftOutReason::kTooLarge);
        return;
    }
    std::optional<std::vector<char>> data = budget.read(chunk.dataOffset, chunk.dataBytes);
    if (!data) {
        leaveOut(LeftOutReason::kUnreadable);
    } else if (describesSamples(chunk.id, *data)) {
        leaveOut(LeftOutReason::kDescribesSamples);
    } else {
        metadata.chunks.push_back({chunk.id, std::move(*data)});
    }
}

void readChunks(ByteBudget& budget, const ContainerChunks& container, FileMetadata& metadata) {
    const FamilyRow* row = rowOf(container.family);
    for (const ContainerChunk& chunk : container.chunks) {
        if (row != nullptr && !contains(row->madeIds, chunk.id)) {
            readChunk(budget, chunk, container.fileBytes, metadata);
        } else if (row == nullptr && !contains(kRiffMade, chunk.id)) { // W64, or RIFF in the other byte order
            addLeftOut(metadata.leftOut, LeftOutReason::kUnreadable, LeftOutKind::kChunk, chunk.id);
        }
    }
}

void readAuText(ByteBudget& budget, const ContainerChunks& container, FileMetadata& metadata) {
    const std::int64_t bytes = container.chunks.empty() ? 0 : container.chunks[0].dataOffset - kAuTextOffset;
    if (bytes <= 0 || bytes > budget.left) {
        return;
    }
    if (const std::optional<std::vector<char>> data = budget.read(kAuTextOffset, bytes)) {
        const std::string_view text(data->data(), data->size());
        if (const std::string_view used = text.substr(0, text.find('\0')); !used.empty()) {
            metadata.texts.push_back({"COMMENT", toUtf8(used)});
        }
    }
}

void readId3Around(ByteBudget& budget, FileMetadata& metadata) {
    Mp3Tags tags = readMp3Tags(budget.descriptor, budget.left, metadata.leftOut);
    metadata.id3 = std::move(tags.id3);
    metadata.texts = std::move(tags.texts);
    budget.left -= static_cast<std::int64_t>(metadata.id3.size());
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

std::string_view bytesOf(const CarriedChunk& chunk) {
    return {chunk.data.data(), chunk.data.size()};
}

CarriedChunk makeChunk(std::string_view id, std::string_view data) {
    return {std::string(id), {data.begin(), data.end()}};
}

std::string chunkBytes(ChunkFamily family, std::string_view id, std::string_view data) {
    return bytesIn(*rowOf(family), id, data);
}

FileMetadata readFileMetadata(int descriptor, const ContainerChunks& container, const AudioFormat& format) {
    silenceTagLib(); // also for what is made of the metadata later
    FileMetadata metadata;
    metadata.family = container.family;
    ByteBudget budget{descriptor, kMostCarriedBytes};
    readChunks(budget, container, metadata);
    if (format.container == Container::kAu) {
        readAuText(budget, container, metadata);
    }
    if (format.sample == SampleFormat::kMpeg || format.container == Container::kFlac) {
        readId3Around(budget, metadata);
    }
    if (format.container == Container::kFlac) {
        metadata.flac = readFlacMetadata(descriptor, budget.left, metadata.leftOut);
    } else if (format.container == Container::kOgg) {
        metadata.comments = readOggComments(descriptor, budget.left, metadata.leftOut);
    }
    return metadata;
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
        bytes += bytesIn(*row, chunk.id, bytesOf(chunk));
    }
    writeAll(descriptor, bytes, name, {});
    correctLength(descriptor, *row, before + static_cast<std::int64_t>(bytes.size()), name);
}

} // namespace varno
