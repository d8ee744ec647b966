#include "AudioFile/ContainerChunks.h"

#include "Files/FileError.h"
#include "Files/Transfer.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <sys/mman.h>
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
constexpr std::int64_t kDs64DataSizeOffset = 8; // within the chunk "ds64"
constexpr std::int64_t kNoLimit = std::numeric_limits<std::int64_t>::max();

// The largest chunk that is taken for one after samples of size 0: of a pipe, so much is read beforehand.
constexpr std::int64_t kMostBytesToDecide = std::int64_t{16} << 20;

std::uint64_t number(std::span<const unsigned char> bytes, bool bigEndian) {
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        value = value << 8 | bytes[bigEndian ? i : bytes.size() - 1 - i];
    }
    return value;
}

const Layout* findLayout(std::string_view magic) {
    const auto* layout = std::find_if(std::begin(kLayouts), std::end(kLayouts),
                                      [&](const Layout& candidate) { return candidate.magic == magic; });
    return layout == std::end(kLayouts) ? nullptr : layout;
}

std::int64_t asOffset(std::uint64_t bytes) {
    return static_cast<std::int64_t>(std::min<std::uint64_t>(bytes, kNoLimit));
}

std::uint64_t allOnes(int bytes) {
    return ~std::uint64_t{0} >> (8 * (sizeof(std::uint64_t) - static_cast<std::size_t>(bytes)));
}

// The sizes from here on are a bound, by the first byte of the field: programs leave values slightly below or
// at the largest that is positive with a sign.
constexpr std::uint64_t kFirstBoundByte = 0x7F;

std::uint64_t firstBound(int bytes) {
    return kFirstBoundByte << (8 * (bytes - 1));
}

struct ChunkHeader {
    ContainerChunk chunk;
    SizeField field;
    std::uint64_t size = 0; // as the field holds it
};

std::optional<ChunkHeader> readChunkHeader(int descriptor, const Layout& layout, std::int64_t offset) {
    unsigned char bytes[kMostHeaderBytes];
    const auto idBytes = static_cast<std::size_t>(layout.idBytes);
    const std::span<unsigned char> header(bytes, idBytes + static_cast<std::size_t>(layout.sizeBytes));
    if (!readAt(descriptor, offset, bytes, header.size())) {
        return std::nullopt;
    }
    const std::uint64_t size = number(header.subspan(idBytes), layout.bigEndian);
    std::uint64_t dataBytes = size;
    if (layout.sizeIncludesHeader) {
        dataBytes = std::max<std::uint64_t>(size, header.size()) - header.size();
    }
    const auto headerBytes = static_cast<std::int64_t>(header.size());
    return ChunkHeader{{std::string(bytes, bytes + 4), offset + headerBytes, asOffset(dataBytes)},
                       {offset + layout.idBytes, layout.sizeBytes, layout.bigEndian,
                        layout.sizeIncludesHeader ? headerBytes : 0},
                       size};
}

// The size of the samples' chunk that RF64 has elsewhere.
void takeDs64Size(int descriptor, std::int64_t ds64Offset, ChunkHeader& header) {
    unsigned char field[8];
    if (readAt(descriptor, ds64Offset + kDs64DataSizeOffset, field, sizeof field)) {
        header.size = number(field, false);
        header.field = {ds64Offset + kDs64DataSizeOffset, sizeof field, false, 0};
        header.chunk.dataBytes = asOffset(header.size);
    }
}

constexpr std::int64_t kSsndHeaderBytes = 8;    // offset and block size
constexpr std::int64_t kCafDataHeaderBytes = 4; // number of edits

// How many bytes precede the samples in their chunk.
std::int64_t bytesBeforeSamples(ChunkFamily family) {
    switch (family) {
    case ChunkFamily::kAiff:
        return kSsndHeaderBytes;
    case ChunkFamily::kCaf:
        return kCafDataHeaderBytes;
    default:
        return 0;
    }
}

bool isPrintable(char c) {
    return c >= ' ' && c <= '~';
}

// What lies behind samples of size 0.
enum class Following { kNothing, kChunk, kOther };

Following followingAt(int descriptor, const Layout& layout, std::int64_t offset, ContainerChunks& container) {
    const std::int64_t headerEnd = offset + layout.idBytes + layout.sizeBytes;
    const std::optional<ChunkHeader> next = readChunkHeader(descriptor, layout, offset);
    if (!next) {
        container.wantedBytes = headerEnd;
        return container.fileBytes > offset ? Following::kOther : Following::kNothing;
    }
    const ContainerChunk& chunk = next->chunk;
    if (!std::all_of(chunk.id.begin(), chunk.id.end(), isPrintable) || chunk.dataBytes > kMostBytesToDecide) {
        return Following::kOther;
    }
    if (chunk.dataOffset + chunk.dataBytes > container.fileBytes) {
        container.wantedBytes = chunk.dataOffset + chunk.dataBytes;
        return Following::kOther;
    }
    return Following::kChunk;
}

SampleExtent extentOf(int descriptor, const Layout& layout, const ChunkHeader& header,
                      ContainerChunks& container) {
    const std::int64_t before = bytesBeforeSamples(container.family);
    SampleExtent extent;
    extent.offset = header.chunk.dataOffset + before;
    extent.limit = std::max<std::int64_t>(header.chunk.dataBytes - before, 0);
    if (header.size == allOnes(header.field.bytes)) {
        extent.limit = kNoLimit;
        extent.isStated = false;
    } else if (header.size >= firstBound(header.field.bytes)) {
        extent.isStated = false;
    } else if (extent.limit == 0) {
        const std::int64_t end = header.chunk.dataOffset + header.chunk.dataBytes;
        if (followingAt(descriptor, layout, end, container) == Following::kOther) {
            extent.limit = kNoLimit;
            extent.isStated = false;
        }
    }
    extent.present = std::clamp<std::int64_t>(container.fileBytes - extent.offset, 0, extent.limit);
    container.samplesSize = header.field;
    container.samplesSize.besides += before;
    return extent;
}

// AU has no chunks but a header with the place of the samples.
constexpr std::string_view kAuMagic = ".snd";
constexpr std::int64_t kAuHeaderBytes = 24;

void readAu(int descriptor, ContainerChunks& container) {
    unsigned char header[kAuHeaderBytes];
    if (!readAt(descriptor, 0, header, sizeof header)) {
        container.wantedBytes = kAuHeaderBytes;
        return;
    }
    const std::span<const unsigned char> fields(header);
    SampleExtent extent;
    extent.offset = static_cast<std::int64_t>(number(fields.subspan(4, 4), true));
    if (extent.offset < kAuHeaderBytes) {
        return; // damaged
    }
    extent.limit = static_cast<std::int64_t>(number(fields.subspan(8, 4), true));
    const std::int64_t left = std::max<std::int64_t>(container.fileBytes - extent.offset, 0);
    if (number(fields.subspan(8, 4), true) == allOnes(4) || (extent.limit == 0 && left > 0)) {
        extent.limit = kNoLimit;
        extent.isStated = false;
    }
    if (extent.limit == 0) {
        container.wantedBytes = extent.offset + 1;
    }
    extent.present = std::min(left, extent.limit);
    container.samplesSize = {8, 4, true, 0};
    container.chunks = {{"data", extent.offset, extent.limit}};
    container.samples = extent;
}

void readChunks(int descriptor, const Layout& layout, ContainerChunks& container) {
    const std::int64_t headerBytes = layout.idBytes + layout.sizeBytes;
    std::optional<std::int64_t> ds64Offset;
    std::int64_t offset = layout.firstChunk;
    while (container.chunks.size() < kMostChunks) {
        std::optional<ChunkHeader> header = readChunkHeader(descriptor, layout, offset);
        if (!header) {
            break;
        }
        ContainerChunk& chunk = header->chunk;
        if (chunk.id == "ds64") {
            ds64Offset = chunk.dataOffset;
        } else if (chunk.id == layout.samplesId && !container.samples) {
            if (ds64Offset && header->size == allOnes(layout.sizeBytes)) {
                takeDs64Size(descriptor, *ds64Offset, *header);
            }
            container.samples = extentOf(descriptor, layout, *header, container);
            chunk.dataBytes = std::max(chunk.dataBytes, container.samples->limit);
        }
        container.chunks.push_back(chunk);
        offset = chunk.dataBytes > kNoLimit - kMostHeaderBytes - chunk.dataOffset
                     ? kNoLimit - kMostHeaderBytes
                     : chunk.dataOffset + chunk.dataBytes;
        if (offset > container.fileBytes) {
            break;
        }
        offset += (layout.alignment - offset % layout.alignment) % layout.alignment;
    }
    if (!container.samples) {
        container.wantedBytes = offset + headerBytes;
    }
}

constexpr std::int64_t kHeadZeros = 4096;                       // at least a frame of any format
constexpr std::int64_t kMostHeadBytes = std::int64_t{64} << 20; // held in memory

std::string sizeFieldBytes(const SizeField& field, std::int64_t size) {
    std::string bytes;
    for (int i = 0; i < field.bytes; ++i) {
        const int byte = field.bigEndian ? field.bytes - 1 - i : i;
        bytes += static_cast<char>(size >> (8 * byte) & 0xFF);
    }
    return bytes;
}

// A peak chunk begins with its version and the time, in seconds since 1970, of 4 bytes each.
constexpr std::int64_t kPeakTimeOffset = 4;
constexpr std::string_view kNoTime("\0\0\0\0", 4);

} // namespace

ContainerChunks readContainerChunks(int descriptor) {
    ContainerChunks result;
    struct stat status {};
    if (::fstat(descriptor, &status) != 0) {
        return result;
    }
    result.fileBytes = status.st_size;
    char magic[4];
    if (!readAt(descriptor, 0, magic, sizeof magic)) {
        result.wantedBytes = sizeof magic;
        return result;
    }
    if (std::string_view(magic, sizeof magic) == kAuMagic) {
        readAu(descriptor, result);
    } else if (const Layout* layout = findLayout({magic, sizeof magic})) {
        result.family = layout->family;
        readChunks(descriptor, *layout, result);
    }
    return result;
}

FileDescriptor copyHead(int descriptor, const ContainerChunks& container, const std::string& name) {
    const std::int64_t bytes = container.samples->offset;
    if (bytes > std::min(container.fileBytes, kMostHeadBytes)) {
        throw FileError(name + ": is damaged: its samples are said to begin at byte " +
                        std::to_string(bytes));
    }
    std::string head(static_cast<std::size_t>(bytes), '\0');
    if (!readAt(descriptor, 0, head.data(), head.size())) {
        throwReadError(name, errno);
    }
    const SizeField& field = container.samplesSize;
    const std::string size = sizeFieldBytes(field, kHeadZeros + field.besides);
    head.replace(static_cast<std::size_t>(field.offset), size.size(), size);
    head.append(kHeadZeros, '\0');
    FileDescriptor memory(::memfd_create("varno", MFD_CLOEXEC));
    if (!memory.isOpen()) {
        throwWriteError("a file in memory", errno);
    }
    writeAt(memory.get(), 0, head, "a file in memory");
    return memory;
}

void clearPeakTime(int descriptor, const std::string& name) {
    for (const ContainerChunk& chunk : readContainerChunks(descriptor).chunks) {
        if (chunk.id == "PEAK") {
            writeAt(descriptor, chunk.dataOffset + kPeakTimeOffset, kNoTime, name);
        }
    }
}

} // namespace varno
