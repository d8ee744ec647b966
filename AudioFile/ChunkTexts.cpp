#include "AudioFile/ChunkTexts.h"

#include "AudioFile/Id3.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <span>
#include <string_view>

namespace varno {

namespace {

// A chunk's or a field's name, and the key of its text.
struct TextName {
    std::string_view name;
    std::string_view key;
};

// Of the list INFO. The first row of a key is the one written.
constexpr TextName kInfoNames[] = {
    {"INAM", "TITLE"},     {"IART", "ARTIST"},      {"IPRD", "ALBUM"},       {"ICMT", "COMMENT"},
    {"ICRD", "DATE"},      {"IGNR", "GENRE"},       {"ITRK", "TRACKNUMBER"}, {"IPRT", "TRACKNUMBER"},
    {"ICOP", "COPYRIGHT"}, {"ISFT", "ENCODER"},     {"ITCH", "ENCODEDBY"},   {"IENG", "ENGINEER"},
    {"IMUS", "COMPOSER"},  {"IWRI", "LYRICIST"},    {"ILNG", "LANGUAGE"},    {"ISBJ", "SUBJECT"},
    {"IKEY", "KEYWORDS"},  {"IMED", "SOURCEMEDIA"}, {"ISRC", "SOURCE"},
};

// Chunks of an AIFF file.
constexpr TextName kAiffNames[] = {
    {"NAME", "TITLE"}, {"AUTH", "ARTIST"}, {"(c) ", "COPYRIGHT"}, {"ANNO", "COMMENT"}};
constexpr std::string_view kRepeatedAiffKey = "COMMENT"; // a file has any number of its chunks

// Entries of a CAF file's chunk "info", where they are not the key in lower case.
constexpr TextName kCafNames[] = {{"comments", "COMMENT"},
                                  {"track number", "TRACKNUMBER"},
                                  {"year", "DATE"},
                                  {"encoding application", "ENCODER"}};

constexpr std::size_t kNumberBytes = 4;
constexpr std::size_t kFieldHeaderBytes = 2 * kNumberBytes;

std::string_view keyOf(std::span<const TextName> names, std::string_view name) {
    const auto found =
        std::find_if(names.begin(), names.end(), [&](const TextName& one) { return one.name == name; });
    return found == names.end() ? std::string_view() : found->key;
}

std::string_view nameOf(std::span<const TextName> names, std::string_view key) {
    const auto found =
        std::find_if(names.begin(), names.end(), [&](const TextName& one) { return one.key == key; });
    return found == names.end() ? std::string_view() : found->name;
}

std::string_view untilZero(std::string_view text) {
    return text.substr(0, text.find('\0'));
}

std::uint32_t number(std::string_view bytes, bool bigEndian) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < kNumberBytes; ++i) {
        value = value << 8 | static_cast<unsigned char>(bytes[bigEndian ? i : kNumberBytes - 1 - i]);
    }
    return value;
}

bool isInfo(const CarriedChunk& chunk) {
    return chunk.id == "LIST" && bytesOf(chunk).starts_with("INFO");
}

void addInfo(std::string_view list, std::vector<TextTag>& texts, LeftOutList& leftOut) {
    list.remove_prefix(kNumberBytes);
    while (list.size() >= kFieldHeaderBytes) {
        const std::string_view id = list.substr(0, kNumberBytes);
        const std::size_t bytes = number(list.substr(kNumberBytes), false);
        list.remove_prefix(kFieldHeaderBytes);
        if (bytes > list.size()) {
            addLeftOut(leftOut, LeftOutReason::kUnreadable, LeftOutKind::kComment, id);
            return;
        }
        const std::string_view key = keyOf(kInfoNames, id);
        const std::string_view text = untilZero(list.substr(0, bytes));
        if (!text.empty()) {
            texts.push_back({key.empty() ? upperCase(toUtf8(id)) : std::string(key), toUtf8(text)});
        }
        list.remove_prefix(std::min(bytes + bytes % 2, list.size()));
    }
}

void addCafInfo(std::string_view info, std::vector<TextTag>& texts, LeftOutList& leftOut) {
    const auto takeText = [&] {
        const std::string_view text = untilZero(info);
        info.remove_prefix(std::min(text.size() + 1, info.size()));
        return text;
    };
    std::uint32_t count = info.size() < kNumberBytes ? 0 : number(info, true);
    info.remove_prefix(std::min(kNumberBytes, info.size()));
    for (; count > 0 && !info.empty(); --count) {
        const std::string_view name = takeText();
        const std::string_view key = keyOf(kCafNames, name);
        const std::string_view text = takeText();
        texts.push_back({key.empty() ? upperCase(toUtf8(name)) : std::string(key), toUtf8(text)});
    }
    if (count > 0) {
        addLeftOut(leftOut, LeftOutReason::kUnreadable, LeftOutKind::kComment);
    }
}

// The values of each key, joined for forms that hold one.
std::map<std::string, std::string> joined(const std::vector<TextTag>& texts) {
    std::map<std::string, std::string> values;
    for (const TextTag& text : texts) {
        std::string& value = values[text.key];
        value += (value.empty() ? "" : "; ") + text.value;
    }
    return values;
}

std::vector<CarriedChunk> infoList(const std::vector<TextTag>& texts) {
    std::string list = "INFO";
    for (const auto& [key, value] : joined(texts)) {
        if (const std::string_view id = nameOf(kInfoNames, key); !id.empty()) {
            list += chunkBytes(ChunkFamily::kRiff, id, value + '\0');
        }
    }
    return list.size() == kNumberBytes ? std::vector<CarriedChunk>() : std::vector{makeChunk("LIST", list)};
}

std::vector<CarriedChunk> aiffChunks(const std::vector<TextTag>& texts) {
    std::vector<CarriedChunk> chunks;
    for (const auto& [key, value] : joined(texts)) {
        const std::string_view id = nameOf(kAiffNames, key);
        if (!id.empty() && key != kRepeatedAiffKey) {
            chunks.push_back(makeChunk(id, value));
        }
    }
    for (const TextTag& text : texts) {
        if (text.key == kRepeatedAiffKey) {
            chunks.push_back(makeChunk(nameOf(kAiffNames, kRepeatedAiffKey), text.value));
        }
    }
    return chunks;
}

std::vector<CarriedChunk> cafInfo(const std::vector<TextTag>& texts) {
    if (texts.empty()) {
        return {};
    }
    std::string info;
    for (int shift = 24; shift >= 0; shift -= 8) {
        info += static_cast<char>(texts.size() >> shift & 0xFF);
    }
    for (const TextTag& text : texts) {
        std::string name(nameOf(kCafNames, text.key));
        if (name.empty()) {
            std::transform(text.key.begin(), text.key.end(), std::back_inserter(name), [](char c) {
                return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
            });
        }
        info += name + '\0' + text.value + '\0';
    }
    return {makeChunk("info", info)};
}

bool isHeldOnce(std::span<const TextName> names, const TextTag& text, const std::vector<TextTag>& texts) {
    const auto sameKey = [&](const TextTag& other) { return other.key == text.key; };
    return !nameOf(names, text.key).empty() && !text.value.empty() &&
           (std::count_if(texts.begin(), texts.end(), sameKey) == 1 ||
            (names.data() == kAiffNames && text.key == kRepeatedAiffKey));
}

bool isHeld(std::span<const TextName> names, const Tags& tags) {
    return tags.pictures.empty() && tags.texts.size() <= 2 * names.size() &&
           std::all_of(tags.texts.begin(), tags.texts.end(),
                       [&](const TextTag& text) { return isHeldOnce(names, text, tags.texts); });
}

} // namespace

bool isId3Chunk(ChunkFamily family, const CarriedChunk& chunk) {
    return family != ChunkFamily::kCaf && (chunk.id == "id3 " || chunk.id == "ID3 ");
}

bool isTextChunk(ChunkFamily family, const CarriedChunk& chunk) {
    switch (family) {
    case ChunkFamily::kRiff:
        return isInfo(chunk) || isId3Chunk(family, chunk);
    case ChunkFamily::kAiff:
        return !keyOf(kAiffNames, chunk.id).empty() || isId3Chunk(family, chunk);
    case ChunkFamily::kCaf:
        return chunk.id == "info";
    case ChunkFamily::kNone:
        break;
    }
    return false;
}

std::vector<TextTag> textsOfChunks(ChunkFamily family, const std::vector<CarriedChunk>& chunks,
                                   LeftOutList& leftOut) {
    std::vector<TextTag> texts;
    for (const CarriedChunk& chunk : chunks) {
        if (isId3Chunk(family, chunk) || !isTextChunk(family, chunk)) {
            continue;
        }
        if (family == ChunkFamily::kRiff) {
            addInfo(bytesOf(chunk), texts, leftOut);
        } else if (family == ChunkFamily::kCaf) {
            addCafInfo(bytesOf(chunk), texts, leftOut);
        } else {
            texts.push_back({std::string(keyOf(kAiffNames, chunk.id)), toUtf8(untilZero(bytesOf(chunk)))});
        }
    }
    return texts;
}

TagChunks makeTagChunks(ChunkFamily family, const Tags& tags, const std::string& id3) {
    TagChunks result;
    if (family == ChunkFamily::kCaf) {
        result.chunks = cafInfo(tags.texts);
        for (std::size_t i = 0; i < tags.pictures.size(); ++i) {
            addLeftOut(result.leftOut, LeftOutReason::kNoPlace, LeftOutKind::kPicture);
        }
        return result;
    }
    const bool isRiff = family == ChunkFamily::kRiff;
    result.chunks = isRiff ? infoList(tags.texts) : aiffChunks(tags.texts);
    const bool isAllThere = isRiff ? isHeld(kInfoNames, tags) : isHeld(kAiffNames, tags);
    if (!id3.empty() || !isAllThere) {
        const std::string tag = addToId3(id3, tags, result.leftOut);
        result.chunks.push_back(makeChunk(isRiff ? "id3 " : "ID3 ", tag));
    }
    return result;
}

} // namespace varno
