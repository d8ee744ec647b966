#include "AudioFile/ContainerChunks.h"

#include "AudioFile/Transfer.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <sys/stat.h>

namespace varno {

namespace {

// How a container lays out its chunk headers: an identifier, then a size, then the data.
struct Layout {
    std::string_view magic; // first bytes of the file
    ChunkFamily family;
    std::int64_t firstChunk;    // offset of the first chunk header
    int idBytes;                // of the identifier
    int sizeBytes;              // of the size
    bool bigEndian;             // the size
    bool sizeIncludesHeader;    // whether the size counts identifier and size
    std::int64_t alignment;     // of the next chunk header
    std::string_view samplesId; // identifier of the chunk that holds the samples
};

constexpr Layout kLayouts[] = {
    {"RIFF", ChunkFamily::kRiff, 12, 4, 4, false, false, 2, "data"},
    {"RF64", ChunkFamily::kRiff, 12, 4, 4, false, false, 2, "data"},
    {"RIFX", ChunkFamily::kNone, 12, 4, 4, true, false, 2, "data"},
    {"riff", ChunkFamily::kNone, 40, 16, 8, false, true, 8, "data"}, // W64
    {"FORM", ChunkFamily::kAiff, 12, 4, 4, true, false, 2, "SSND"},
    {"caff", ChunkFamily::kCaf, 8, 4, 8, true, false, 1, "data"},
};

constexpr int kMostHeaderBytes = 24;
constexpr std::size_t kMostChunks = 100'000; // more than any audio file has; limits the work on a damaged one
constexpr std::uint32_t kSizeIsElsewhere = 0xFFFFFFFF; // RF64: in the chunk "ds64"; else unknown
constexpr std::int64_t kDs64DataSizeOffset = 8;        // within the chunk "ds64"

constexpr std::int64_t kUnknownSize = std::numeric_limits<std::int64_t>::max();

// A program that writes to a pipe cannot go back to fill in the size. It leaves all ones or, for readers with
// signed sizes, a value slightly below 2^31.
constexpr std::int64_t kUnknownSizesFrom = 0x7F000000;
constexpr std::int64_t kUnknownSizesTo = 0x7FFFFFFF;

std::uint64_t number(std::span<const unsigned char> bytes, bool bigEndian) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        value = value << 8 | bytes[bigEndian ? i : bytes.size() - 1 - i];
    }
    return value;
}

const Layout* findLayout(int descriptor) {
    unsigned char magic[4];
    if (!readAt(descriptor, 0, magic, sizeof magic)) {
        return nullptr;
    }
    for (const Layout& layout : kLayouts) {
        if (std::equal(layout.magic.begin(), layout.magic.end(), std::begin(magic))) {
            return &layout;
        }
    }
    return nullptr;
}

// The size of the data; kUnknownSize where the field holds all ones or more than 63 bits.
std::int64_t dataBytes(const Layout& layout, std::span<const unsigned char> sizeField) {
    std::uint64_t size = number(sizeField, layout.bigEndian);
    const auto headerBytes = static_cast<std::uint64_t>(layout.idBytes + layout.sizeBytes);
    if (layout.sizeIncludesHeader) {
        size = std::max(size, headerBytes) - headerBytes;
    }
    const bool unknown = size == kSizeIsElsewhere || size > static_cast<std::uint64_t>(kUnknownSize);
    return unknown ? kUnknownSize : static_cast<std::int64_t>(size);
}

std::optional<ContainerChunk> readChunkHeader(int descriptor, const Layout& layout, std::int64_t offset) {
    unsigned char bytes[kMostHeaderBytes];
    const auto idBytes = static_cast<std::size_t>(layout.idBytes);
    const std::span<unsigned char> header(bytes, idBytes + static_cast<std::size_t>(layout.sizeBytes));
    if (!readAt(descriptor, offset, bytes, header.size())) {
        return std::nullopt;
    }
    return ContainerChunk{std::string(bytes, bytes + 4), offset + static_cast<std::int64_t>(header.size()),
                          dataBytes(layout, header.subspan(idBytes))};
}

std::int64_t ds64DataBytes(int descriptor, const ContainerChunk& ds64) {
    unsigned char field[8];
    if (!readAt(descriptor, ds64.dataOffset + kDs64DataSizeOffset, field, sizeof field)) {
        return 0;
    }
    return std::bit_cast<std::int64_t>(number(field, false));
}

constexpr std::int64_t kSsndHeaderBytes = 8;    // offset and block size
constexpr std::int64_t kCafDataHeaderBytes = 4; // number of edits

// How many bytes precede the samples in a chunk that holds samples; nothing for other chunks.
std::optional<std::int64_t> bytesBeforeSamples(const ContainerChunk& chunk, ChunkFamily family) {
    if (chunk.id == "SSND" && family == ChunkFamily::kAiff) {
        return kSsndHeaderBytes;
    }
    if (chunk.id == "data") {
        return family == ChunkFamily::kCaf ? kCafDataHeaderBytes : 0;
    }
    return std::nullopt;
}

// AU has no chunks but a header with the place of the samples.
constexpr std::string_view kAuMagic = ".snd";
constexpr std::size_t kAuHeaderBytes = 12; // magic, offset and size of the samples

std::vector<ContainerChunk> auSamples(int descriptor) {
    unsigned char header[kAuHeaderBytes];
    if (!readAt(descriptor, 0, header, sizeof header) ||
        !std::equal(kAuMagic.begin(), kAuMagic.end(), std::begin(header))) {
        return {};
    }
    const std::span<const unsigned char> fields(header);
    const std::uint64_t size = number(fields.subspan(8, 4), true);
    return {{"data", static_cast<std::int64_t>(number(fields.subspan(4, 4), true)),
             size == kSizeIsElsewhere ? kUnknownSize : static_cast<std::int64_t>(size)}};
}

// A peak chunk begins with its version and the time, in seconds since 1970, of 4 bytes each.
constexpr std::int64_t kPeakTimeOffset = 4;
constexpr std::string_view kNoTime("\0\0\0\0", 4);

} // namespace

ContainerChunks readContainerChunks(int descriptor) {
    ContainerChunks result;
    struct stat status {};
    const Layout* layout = findLayout(descriptor);
    if (::fstat(descriptor, &status) != 0) {
        return result;
    }
    result.fileBytes = status.st_size;
    if (layout == nullptr) {
        result.chunks = auSamples(descriptor);
        return result;
    }
    result.family = layout->family;
    std::int64_t longDataBytes = kUnknownSize;
    std::int64_t offset = layout->firstChunk;
    while (result.chunks.size() < kMostChunks) {
        std::optional<ContainerChunk> chunk = readChunkHeader(descriptor, *layout, offset);
        if (!chunk) {
            break;
        }
        if (chunk->id == "ds64") {
            longDataBytes = ds64DataBytes(descriptor, *chunk);
        } else if (chunk->id == layout->samplesId && chunk->dataBytes == kUnknownSize) {
            chunk->dataBytes = longDataBytes;
        }
        result.chunks.push_back(*chunk);
        if (chunk->dataBytes < 0 || chunk->dataBytes > result.fileBytes - chunk->dataOffset) {
            break;
        }
        offset = chunk->dataOffset + chunk->dataBytes;
        offset += (layout->alignment - offset % layout->alignment) % layout->alignment;
    }
    return result;
}

SampleExtent sampleExtent(const ContainerChunks& container) {
    for (const ContainerChunk& chunk : container.chunks) {
        const std::optional<std::int64_t> headerBytes = bytesBeforeSamples(chunk, container.family);
        if (!headerBytes) {
            continue;
        }
        const std::int64_t present =
            std::max<std::int64_t>(container.fileBytes - chunk.dataOffset - *headerBytes, 0);
        const bool unknown = chunk.dataBytes == kUnknownSize ||
                             (chunk.dataBytes >= kUnknownSizesFrom && chunk.dataBytes <= kUnknownSizesTo);
        const std::int64_t promised = unknown ? present : chunk.dataBytes - *headerBytes;
        return {promised, std::min(present, promised)};
    }
    return {};
}

void clearPeakTime(int descriptor, const std::string& name) {
    for (const ContainerChunk& chunk : readContainerChunks(descriptor).chunks) {
        if (chunk.id == "PEAK") {
            writeAt(descriptor, chunk.dataOffset + kPeakTimeOffset, kNoTime, name);
        }
    }
}

} // namespace varno
