#include "Host/StoredChunk.h"

#include "Host/HostError.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace varno {

namespace {

constexpr std::size_t kHeaderSize = kAAX_PlugInChunkHeaderSize;
// First bytes of every data area that the architecture's chunk format makes.
constexpr std::array<std::byte, 4> kMarker = {std::byte{1}, std::byte{1}, std::byte{1}, std::byte{1}};

static_assert(offsetof(AAX_SPlugInChunk, fData) == kHeaderSize);

std::string bytesText(std::span<const std::byte> bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const std::byte value : bytes) {
        text += text.empty() ? "" : " ";
        text += kDigits[std::to_integer<unsigned>(value) >> 4];
        text += kDigits[std::to_integer<unsigned>(value) & 15U];
    }
    return text;
}

void requireCode(const char* what, AAX_CTypeID found, AAX_CTypeID expected) {
    if (found != expected) {
        throw HostError(std::string("saved state: found ") + what + " " + codeText(found) + ", expected " +
                        codeText(expected));
    }
}

} // namespace

StoredChunk::StoredChunk(std::uint32_t dataSize, const ChunkIdentity& identity)
    : mBytes(std::max(kHeaderSize + dataSize, sizeof(AAX_SPlugInChunk))) {
    AAX_SPlugInChunk* chunk = record();
    chunk->fSize = static_cast<std::int32_t>(dataSize);
    chunk->fManufacturerID = identity.manufacturerID;
    chunk->fProductID = identity.productID;
    chunk->fPlugInID = identity.plugInID;
    chunk->fChunkID = identity.chunkID;
}

StoredChunk StoredChunk::fromBytes(std::span<const std::byte> bytes) {
    if (bytes.size() < kHeaderSize) {
        throw HostError("saved state: found " + std::to_string(bytes.size()) +
                        " bytes, expected a header of " + std::to_string(kHeaderSize));
    }
    std::int32_t dataSize = 0;
    std::memcpy(&dataSize, bytes.data(), sizeof dataSize);
    const std::size_t found = bytes.size() - kHeaderSize;
    if (dataSize < 0 || static_cast<std::size_t>(dataSize) != found) {
        throw HostError("saved state: found " + std::to_string(found) + " bytes of data, expected " +
                        std::to_string(dataSize) + " by its header");
    }
    const auto marker = bytes.subspan(kHeaderSize, std::min(found, kMarker.size()));
    if (!std::equal(marker.begin(), marker.end(), kMarker.begin(), kMarker.end())) {
        throw HostError("saved state: found marker " + quoted(bytesText(marker)) + ", expected " +
                        quoted(bytesText(kMarker)));
    }
    StoredChunk chunk;
    chunk.mBytes.resize(std::max(bytes.size(), sizeof(AAX_SPlugInChunk)));
    std::copy(bytes.begin(), bytes.end(), chunk.mBytes.begin());
    return chunk;
}

std::vector<std::byte> StoredChunk::toBytes() const {
    const auto size = kHeaderSize + data().size();
    return {mBytes.begin(), mBytes.begin() + static_cast<std::ptrdiff_t>(size)};
}

void StoredChunk::requireWrittenBy(const EffectDescription& effect, const ChunkIdentity& expected) const {
    const ChunkIdentity found = identity();
    requireCode("manufacturer", found.manufacturerID, expected.manufacturerID);
    requireCode("product", found.productID, expected.productID);
    requireCode("chunk identifier", found.chunkID, expected.chunkID);
    const bool isOwn = std::any_of(effect.variants.begin(), effect.variants.end(),
                                   [&](const auto& variant) { return variant.hasPlugInID(found.plugInID); });
    if (!isOwn) {
        requireCode("plug-in identifier", found.plugInID, expected.plugInID);
    }
}

ChunkIdentity StoredChunk::identity() const {
    const AAX_SPlugInChunk* chunk = record();
    return {chunk->fManufacturerID, chunk->fProductID, chunk->fPlugInID, chunk->fChunkID};
}

std::span<const std::byte> StoredChunk::data() const {
    const auto room = mBytes.size() - kHeaderSize;
    const auto size = static_cast<std::size_t>(std::max(record()->fSize, 0));
    return std::span(mBytes).subspan(kHeaderSize, std::min(size, room));
}

const AAX_SPlugInChunk* StoredChunk::record() const {
    return reinterpret_cast<const AAX_SPlugInChunk*>(mBytes.data());
}

AAX_SPlugInChunk* StoredChunk::record() {
    return reinterpret_cast<AAX_SPlugInChunk*>(mBytes.data());
}

} // namespace varno
