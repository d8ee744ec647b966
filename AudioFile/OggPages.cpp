#include "AudioFile/OggPages.h"

#include "Files/FileError.h"
#include "Files/Transfer.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace varno {

namespace {

// The page header of RFC 3533, section 6.
constexpr std::size_t kFlagsOffset = 5;
constexpr unsigned kEndOfStreamFlag = 4;
constexpr std::size_t kSerialOffset = 14;   // 32 bits, little-endian
constexpr std::size_t kChecksumOffset = 22; // 32 bits, little-endian; zero while it is computed
constexpr std::size_t kSegmentCountOffset = 26;
constexpr std::size_t kHeaderBytes = 27; // then one byte of length per segment, then the segments
constexpr std::int64_t kMostPageBytes = 27 + 255 + 255 * 255;
constexpr std::uint32_t kSerial = 1;
constexpr std::uint32_t kPolynomial = 0x04C11DB7; // of the checksum: not reflected, starting from 0

constexpr std::array<std::uint32_t, 256> makeChecksumTable() {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < table.size(); ++byte) {
        std::uint32_t value = byte << 24;
        for (int bit = 0; bit < 8; ++bit) {
            value = value << 1 ^ ((value & 0x80000000U) != 0 ? kPolynomial : 0);
        }
        table[byte] = value;
    }
    return table;
}

constexpr std::array<std::uint32_t, 256> kChecksumTable = makeChecksumTable();

std::uint32_t checksum(const std::vector<unsigned char>& page) {
    std::uint32_t value = 0;
    for (const unsigned char byte : page) {
        value = value << 8 ^ kChecksumTable[(value >> 24) ^ byte];
    }
    return value;
}

void putWord(unsigned char* bytes, std::uint32_t value) {
    for (int i = 0; i < 4; ++i) {
        bytes[i] = static_cast<unsigned char>(value >> (8 * i));
    }
}

// Appends `count` bytes of the file to the page.
bool append(std::vector<unsigned char>& page, int descriptor, std::int64_t offset, std::size_t count) {
    const std::size_t before = page.size();
    page.resize(before + count);
    return readAt(descriptor, offset + static_cast<std::int64_t>(before), page.data() + before, count);
}

bool readPage(std::vector<unsigned char>& page, int descriptor, std::int64_t offset) {
    page.clear();
    if (!append(page, descriptor, offset, kHeaderBytes) || std::memcmp(page.data(), "OggS", 4) != 0) {
        return false;
    }
    if (!append(page, descriptor, offset, page[kSegmentCountOffset])) {
        return false;
    }
    std::size_t bodyBytes = 0;
    for (std::size_t i = kHeaderBytes; i < page.size(); ++i) {
        bodyBytes += page[i];
    }
    return append(page, descriptor, offset, bodyBytes);
}

} // namespace

void setOggSerial(int descriptor, const std::string& name) {
    const std::int64_t fileBytes = ::lseek(descriptor, 0, SEEK_END);
    std::vector<unsigned char> page;
    for (std::int64_t offset = 0; offset < fileBytes; offset += static_cast<std::int64_t>(page.size())) {
        if (!readPage(page, descriptor, offset)) {
            throw FileError(name + ": damaged while it was written: no Ogg page at byte " +
                            std::to_string(offset));
        }
        putWord(page.data() + kSerialOffset, kSerial);
        putWord(page.data() + kChecksumOffset, 0);
        putWord(page.data() + kChecksumOffset, checksum(page));
        writeAt(descriptor, offset, {reinterpret_cast<const char*>(page.data()), kHeaderBytes}, name);
    }
}

bool isOggWithoutEnd(int descriptor) {
    std::vector<unsigned char> page;
    struct stat status {};
    if (!readPage(page, descriptor, 0) || ::fstat(descriptor, &status) != 0) {
        return false;
    }
    // The last page begins at most the length of a page before the end.
    const std::int64_t start = std::max<std::int64_t>(status.st_size - kMostPageBytes, 0);
    std::string tail(static_cast<std::size_t>(status.st_size - start), '\0');
    if (!readAt(descriptor, start, tail.data(), tail.size())) {
        return false;
    }
    for (std::size_t at = tail.find("OggS"); at != std::string::npos; at = tail.find("OggS", at + 1)) {
        if (readPage(page, descriptor, start + static_cast<std::int64_t>(at)) &&
            (page[kFlagsOffset] & kEndOfStreamFlag) != 0) {
            return false;
        }
    }
    return true;
}

} // namespace varno
