#include "RiffChunks.h"

#include "FileTransfer.h"

#include <algorithm>
#include <cerrno>
#include <string_view>
#include <unistd.h>

namespace varno {

namespace {

constexpr std::string_view kCarriedIds[] = {
    "bext", "cue ", "LIST", "iXML", "axml", "chna", "cart",
    "smpl", "inst", "acid", "DISP", "ID3 ", "id3 ", "_PMX",
};
constexpr std::string_view kCarriedLists[] = {"INFO", "adtl"};

constexpr std::int64_t kRiffSizeOffset = 4;  // 32 bits, counts what follows it
constexpr std::int64_t kRf64SizeOffset = 20; // 64 bits, within the chunk "ds64" that stands first
constexpr std::int64_t kRiffHeaderBytes = 8; // not counted by either

template<typename Range>
bool contains(const Range& texts, std::string_view text) {
    return std::find(std::begin(texts), std::end(texts), text) != std::end(texts);
}

bool isCarried(const RiffChunk& chunk) {
    if (chunk.id != "LIST")
        return true;
    return chunk.data.size() >= 4 && contains(kCarriedLists, std::string_view(chunk.data.data(), 4));
}

std::string littleEndian(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(value >> (8 * i) & 0xFF);
    return text;
}

std::string word(std::uint64_t value) {
    return littleEndian(value, 4);
}

RiffChunk makeChunk(const char* id, const std::string& data) {
    return {id, {data.begin(), data.end()}};
}

// Chunk header, data and the zero that brings the next chunk to an even offset.
std::string chunkBytes(std::string_view id, std::string_view data) {
    std::string bytes(id);
    bytes += word(data.size());
    bytes += data;
    if (data.size() % 2 != 0)
        bytes += '\0';
    return bytes;
}

void overwrite(int descriptor, std::int64_t offset, const std::string& bytes, const std::string& name) {
    if (::pwrite(descriptor, bytes.data(), bytes.size(), offset) != static_cast<ssize_t>(bytes.size()))
        throwWriteError(name, errno);
}

} // namespace

std::vector<RiffChunk> readCarriedChunks(int descriptor, const ContainerChunks& container,
                                         std::vector<std::string>& tooLarge) {
    std::vector<RiffChunk> carried;
    if (!container.isLittleRiff)
        return carried;
    std::int64_t left = kMostCarriedBytes;
    for (const ContainerChunk& chunk : container.chunks) {
        if (!contains(kCarriedIds, chunk.id) || chunk.dataBytes > container.fileBytes - chunk.dataOffset)
            continue;
        if (chunk.dataBytes > left) {
            tooLarge.push_back(chunk.id);
            continue;
        }
        RiffChunk copy{chunk.id, std::vector<char>(static_cast<std::size_t>(chunk.dataBytes))};
        const ssize_t got = ::pread(descriptor, copy.data.data(), copy.data.size(), chunk.dataOffset);
        if (got != static_cast<ssize_t>(copy.data.size()) || !isCarried(copy))
            continue;
        left -= chunk.dataBytes;
        carried.push_back(std::move(copy));
    }
    return carried;
}

std::vector<RiffChunk> riffCueChunks(const std::vector<CuePoint>& cues) {
    if (cues.empty())
        return {};
    std::string points = word(cues.size());
    std::string labels = "adtl";
    for (const CuePoint& cue : cues) {
        const auto id = static_cast<std::uint32_t>(cue.id);
        // identifier, place in a play list, chunk, offsets of chunk and block (for packed data), frame
        points += word(id) + word(cue.frame) + "data" + word(0) + word(0) + word(cue.frame);
        if (!cue.name.empty())
            labels += chunkBytes("labl", word(id) + cue.name + '\0');
    }
    std::vector<RiffChunk> chunks{makeChunk("cue ", points)};
    if (labels.size() > 4)
        chunks.push_back(makeChunk("LIST", labels));
    return chunks;
}

void appendRiffChunks(int descriptor, const std::vector<RiffChunk>& chunks, const std::string& name) {
    char magic[4];
    std::int64_t fileBytes = ::lseek(descriptor, 0, SEEK_END);
    if (fileBytes < 0 || ::pread(descriptor, magic, sizeof magic, 0) != static_cast<ssize_t>(sizeof magic))
        throwReadError(name, errno);
    std::string bytes(static_cast<std::size_t>(fileBytes % 2), '\0');
    for (const RiffChunk& chunk : chunks)
        bytes += chunkBytes(chunk.id, {chunk.data.data(), chunk.data.size()});
    writeAll(descriptor, bytes, name);
    fileBytes += static_cast<std::int64_t>(bytes.size());
    const auto riffBytes = static_cast<std::uint64_t>(fileBytes - kRiffHeaderBytes);
    if (std::string_view(magic, sizeof magic) == "RF64")
        overwrite(descriptor, kRf64SizeOffset, littleEndian(riffBytes, 8), name);
    else
        overwrite(descriptor, kRiffSizeOffset, word(riffBytes), name);
}

} // namespace varno
