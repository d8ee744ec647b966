#include "AudioFile/MpegLength.h"

#include "Files/Transfer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <unistd.h>

namespace varno {

namespace {

// An ID3v2 tag before the sound: "ID3", version, flags, and its size in four bytes of 7 bits each. One of its
// flags states a footer, as long as the header.
constexpr std::int64_t kId3HeaderBytes = 10;
constexpr unsigned kId3FooterFlag = 0x10;
constexpr int kId3SizeBits = 0x7F; // of a byte

// Where the sound is looked for: tags may be padded.
constexpr std::size_t kSearchedBytes = 64 * 1024;

// The records, by their places in a frame: behind its header and the side information of layer III, whose
// size depends on version and channels.
constexpr std::array<std::size_t, 4> kXingOffsets = {4 + 32, 4 + 17, 4 + 9, 4 + 32 + 2};
constexpr std::size_t kVbriOffset = 4 + 32;
constexpr std::size_t kXingFlagsOffset = 4; // in the record; 32 bits, big-endian
constexpr unsigned kXingHasFrames = 1;

std::int64_t soundOffset(int descriptor) {
    std::int64_t offset = 0;
    unsigned char header[kId3HeaderBytes];
    while (readAt(descriptor, offset, header, sizeof header) && std::equal(header, header + 3, "ID3")) {
        std::int64_t size = 0;
        for (int i = 6; i < 10; ++i) {
            size = size << 7 | (header[i] & kId3SizeBits);
        }
        offset += kId3HeaderBytes + size + ((header[5] & kId3FooterFlag) != 0 ? kId3HeaderBytes : 0);
    }
    return offset;
}

// The header of a frame, 32 bits: 11 ones, version, layer, protection; bit rate, sample rate, padding.
constexpr std::uint32_t kSync = 0xFFE00000;
constexpr std::uint32_t kVersion = 0x00180000;
constexpr std::uint32_t kReservedVersion = 0x00080000;
constexpr std::uint32_t kLayer = 0x00060000;      // 0 is reserved
constexpr std::uint32_t kBitRate = 0x0000F000;    // all ones is no bit rate
constexpr std::uint32_t kSampleRate = 0x00000C00; // all ones is reserved

bool isFrameHeader(std::string_view bytes) {
    if (bytes.size() < sizeof(std::uint32_t)) {
        return false;
    }
    std::uint32_t header = 0;
    for (std::size_t i = 0; i < sizeof header; ++i) {
        header = header << 8 | static_cast<unsigned char>(bytes[i]);
    }
    return (header & kSync) == kSync && (header & kVersion) != kReservedVersion && (header & kLayer) != 0 &&
           (header & kBitRate) != kBitRate && (header & kSampleRate) != kSampleRate;
}

bool hasRecord(std::string_view frame) {
    if (frame.substr(std::min(kVbriOffset, frame.size())).starts_with("VBRI")) {
        return true;
    }
    return std::any_of(kXingOffsets.begin(), kXingOffsets.end(), [&](std::size_t offset) {
        const std::string_view record = frame.substr(std::min(offset, frame.size()));
        return (record.starts_with("Xing") || record.starts_with("Info")) &&
               record.size() > kXingFlagsOffset + 3 &&
               (static_cast<unsigned char>(record[kXingFlagsOffset + 3]) & kXingHasFrames) != 0;
    });
}

} // namespace

bool mpegStatesLength(int descriptor) {
    std::string bytes(kSearchedBytes, '\0');
    const ssize_t got = ::pread(descriptor, bytes.data(), bytes.size(), soundOffset(descriptor));
    const std::string_view found(bytes.data(), static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    for (std::size_t at = found.find('\xFF'); at != std::string_view::npos; at = found.find('\xFF', at + 1)) {
        if (isFrameHeader(found.substr(at))) {
            return hasRecord(found.substr(at));
        }
    }
    return false;
}

} // namespace varno
