#include "CLAP/StateRecord.h"

#include "Host/HostError.h"
#include "Host/Oversampling/RateConverter.h"

#include <algorithm>
#include <string>

namespace varno {

namespace {

constexpr std::uint32_t kMark = 0x53425256;
constexpr std::uint32_t kVersion = 1;
constexpr std::size_t kWordBytes = 4;
constexpr std::size_t kWords = 4;

void append(std::vector<std::byte>& bytes, std::uint32_t word) {
    for (std::size_t i = 0; i < kWordBytes; ++i) {
        bytes.push_back(static_cast<std::byte>(word >> (8 * i)));
    }
}

std::uint32_t wordAt(std::span<const std::byte> bytes, std::size_t index) {
    std::uint32_t word = 0;
    for (std::size_t i = 0; i < kWordBytes; ++i) {
        word |= std::to_integer<std::uint32_t>(bytes[index * kWordBytes + i]) << (8 * i);
    }
    return word;
}

[[noreturn]] void refuse(const char* what, std::size_t found, const std::string& expected) {
    throw HostError(std::string("saved state: found ") + what + ' ' + std::to_string(found) + ", expected " +
                    expected);
}

PluginState pluginStateFrom(std::span<const std::byte> bytes) {
    // First what decides how the rest is to be read.
    if (bytes.size() < 2 * kWordBytes || wordAt(bytes, 0) != kMark) {
        throw HostError("saved state: found " + std::to_string(bytes.size()) +
                        " bytes behind the settings, expected the plug-in's state or nothing");
    }
    const std::uint32_t version = wordAt(bytes, 1);
    if (version != kVersion) {
        refuse("version", version, std::to_string(kVersion));
    }
    if (bytes.size() != kWords * kWordBytes) {
        refuse("a state of bytes:", bytes.size(), std::to_string(kWords * kWordBytes));
    }
    const std::uint32_t bypass = wordAt(bytes, 2);
    const std::uint32_t quality = wordAt(bytes, 3);
    if (bypass > 1) {
        refuse("bypass", bypass, "0 or 1");
    }
    const auto isQuality = [&](std::int32_t factor) { return static_cast<std::uint32_t>(factor) == quality; };
    if (std::ranges::none_of(kOversamplingFactors, isQuality)) {
        refuse("quality", quality, "1, 2, 4 or 8");
    }
    return {bypass == 1, static_cast<std::int32_t>(quality)};
}

} // namespace

std::vector<std::byte> bytesOf(const StateRecord& record) {
    std::vector<std::byte> bytes = record.chunk.toBytes();
    if (record.plugin) {
        append(bytes, kMark);
        append(bytes, kVersion);
        append(bytes, record.plugin->isBypassed ? 1 : 0);
        append(bytes, static_cast<std::uint32_t>(record.plugin->quality));
    }
    return bytes;
}

StateRecord recordFrom(std::span<const std::byte> bytes) {
    std::int32_t dataBytes = 0;
    std::copy_n(bytes.begin(), std::min(bytes.size(), sizeof dataBytes),
                std::as_writable_bytes(std::span(&dataBytes, 1)).begin());
    const std::size_t whole =
        kAAX_PlugInChunkHeaderSize + static_cast<std::size_t>(std::max(dataBytes, std::int32_t{0}));
    // The chunk refuses what is not as long as it says.
    const std::size_t chunkBytes = std::min(bytes.size(), whole);
    StateRecord record{StoredChunk::fromBytes(bytes.first(chunkBytes)), {}};
    if (bytes.size() > chunkBytes) {
        record.plugin = pluginStateFrom(bytes.subspan(chunkBytes));
    }
    return record;
}

} // namespace varno
