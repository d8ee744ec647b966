#include "AudioFile/CarryOver.h"

#include "AudioFile/ChunkTexts.h"
#include "AudioFile/Id3.h"
#include "AudioFile/OggTags.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <utility>

namespace varno {

namespace {

constexpr std::size_t kLabelListTypeBytes = 4;
constexpr std::size_t kLabelHeaderBytes = 8;

void addNoPlace(LeftOutList& list, LeftOutKind kind, std::string_view name = {}) {
    addLeftOut(list, LeftOutReason::kNoPlace, kind, name);
}

// All ID3v2 tags of an input.
std::vector<std::string> id3TagsOf(const FileMetadata& metadata) {
    std::vector<std::string> tags;
    if (!metadata.id3.empty()) {
        tags.push_back(metadata.id3);
    }
    for (const CarriedChunk& chunk : metadata.chunks) {
        if (isId3Chunk(metadata.family, chunk)) {
            tags.emplace_back(bytesOf(chunk));
        }
    }
    return tags;
}

// Of an input's texts, those of an earlier place count where several have the same key.
struct InputTags {
    Tags tags;
    std::string id3; // a tag that is written as it is; its pictures are not in `tags`
};

// @param keepsId3 whether the output holds an ID3v2 tag
InputTags tagsOf(const FileMetadata& metadata, bool keepsId3, LeftOutList& leftOut) {
    InputTags input;
    XiphComments comments = metadata.comments;
    std::vector<Picture> pictures = takePictures(comments);
    comments.insert(comments.end(), metadata.flac.comments.begin(), metadata.flac.comments.end());
    pictures.insert(pictures.end(), metadata.flac.pictures.begin(), metadata.flac.pictures.end());
    input.tags = {textsOfComments(comments, leftOut), std::move(pictures)};
    for (const std::string& tag : id3TagsOf(metadata)) {
        LeftOutList ofTag;
        Tags read = readId3(tag, ofTag);
        addMissing(input.tags.texts, read.texts);
        if (keepsId3 && input.id3.empty()) {
            input.id3 = tag;
        } else {
            std::move(read.pictures.begin(), read.pictures.end(), std::back_inserter(input.tags.pictures));
            addLeftOut(leftOut, ofTag);
        }
    }
    addMissing(input.tags.texts, metadata.texts);
    addMissing(input.tags.texts, textsOfChunks(metadata.family, metadata.chunks, leftOut));
    return input;
}

// What a list of labels holds beside names: notes, and texts for a length of time.
void leaveOutCueTexts(std::string_view list, LeftOutList& leftOut) {
    list.remove_prefix(kLabelListTypeBytes);
    while (list.size() >= kLabelHeaderBytes) {
        const std::string_view id = list.substr(0, 4);
        std::size_t bytes = 0;
        for (std::size_t i = 4; i > 0; --i) {
            bytes = bytes << 8 | static_cast<unsigned char>(list[3 + i]);
        }
        if (id != "labl") {
            addNoPlace(leftOut, LeftOutKind::kCueText, id);
        }
        list.remove_prefix(std::min(kLabelHeaderBytes + bytes + bytes % 2, list.size()));
    }
}

bool isCueChunk(const CarriedChunk& chunk) {
    return chunk.id == "cue " || chunk.id == "MARK";
}

// The chunks of an input for an output of another family.
void convertChunks(const FileMetadata& metadata, ChunkFamily output, CarriedOver& carried) {
    std::vector<CarriedChunk> cues = cueChunks(output, metadata.cues);
    if (cues.empty()) {
        for (const CuePoint& cue : metadata.cues) {
            addNoPlace(carried.leftOut, LeftOutKind::kCuePoint, cue.name);
        }
    }
    for (const CarriedChunk& chunk : metadata.chunks) {
        const std::string_view bytes = bytesOf(chunk);
        if (isTextChunk(metadata.family, chunk) || (isCueChunk(chunk) && !metadata.cues.empty())) {
            continue;
        }
        if (metadata.family == ChunkFamily::kRiff && chunk.id == "LIST" && bytes.starts_with("adtl") &&
            !metadata.cues.empty()) {
            leaveOutCueTexts(bytes, carried.leftOut);
        } else {
            const bool isList = chunk.id == "LIST" && bytes.size() >= kLabelListTypeBytes;
            addNoPlace(carried.leftOut, LeftOutKind::kChunk,
                       isList ? "LIST " + std::string(bytes.substr(0, kLabelListTypeBytes)) : chunk.id);
        }
    }
    carried.chunks = std::move(cues);
}

void toChunks(const FileMetadata& metadata, ChunkFamily output, CarriedOver& carried) {
    const InputTags input = tagsOf(metadata, output != ChunkFamily::kCaf, carried.leftOut);
    TagChunks tags = makeTagChunks(output, input.tags, input.id3);
    std::move(tags.chunks.begin(), tags.chunks.end(), std::back_inserter(carried.chunks));
    addLeftOut(carried.leftOut, tags.leftOut);
}

bool isXiph(const FileMetadata& metadata) {
    return metadata.family == ChunkFamily::kNone && metadata.id3.empty() && metadata.texts.empty();
}

void toFlac(const FileMetadata& metadata, std::int64_t outputFrames, CarriedOver& carried) {
    carried.flac = metadata.flac;
    if (isXiph(metadata)) { // as they are
        carried.flac.comments.insert(carried.flac.comments.end(), metadata.comments.begin(),
                                     metadata.comments.end());
        for (Picture& picture : takePictures(carried.flac.comments)) {
            carried.flac.pictures.push_back(std::move(picture));
        }
    } else {
        InputTags input = tagsOf(metadata, false, carried.leftOut);
        carried.flac.comments = commentsOfTexts(input.tags.texts, carried.leftOut);
        carried.flac.pictures = std::move(input.tags.pictures);
    }
    fitFlacMetadata(carried.flac, metadata.frames, outputFrames, carried.leftOut);
}

void toOgg(const FileMetadata& metadata, CarriedOver& carried) {
    std::vector<Picture> pictures;
    if (isXiph(metadata)) {
        carried.comments = metadata.comments;
        carried.comments.insert(carried.comments.end(), metadata.flac.comments.begin(),
                                metadata.flac.comments.end());
        pictures = metadata.flac.pictures;
    } else {
        InputTags input = tagsOf(metadata, false, carried.leftOut);
        carried.comments = commentsOfTexts(input.tags.texts, carried.leftOut);
        pictures = std::move(input.tags.pictures);
    }
    for (const Picture& picture : pictures) {
        carried.comments.push_back(commentOfPicture(picture));
    }
}

void toNowhere(const FileMetadata& metadata, CarriedOver& carried) {
    const InputTags input = tagsOf(metadata, false, carried.leftOut);
    for (const TextTag& text : input.tags.texts) {
        addNoPlace(carried.leftOut, LeftOutKind::kComment, text.key);
    }
    for (std::size_t i = 0; i < input.tags.pictures.size(); ++i) {
        addNoPlace(carried.leftOut, LeftOutKind::kPicture);
    }
}

} // namespace

CarriedOver carryOver(const FileMetadata& metadata, const AudioFormat& output) {
    CarriedOver carried;
    carried.leftOut = metadata.leftOut;
    const ChunkFamily family = familyOf(output.container);
    if (family != ChunkFamily::kNone && family == metadata.family) {
        carried.chunks = metadata.chunks;
        return carried;
    }
    if (output.container == Container::kFlac) {
        toFlac(metadata, output.frames, carried);
    } else if (output.container == Container::kOgg) {
        toOgg(metadata, carried);
    }
    if (output.container != Container::kFlac) {
        for (const FlacBlock& block : metadata.flac.others) {
            leaveOutBlock(block, LeftOutReason::kNoPlace, carried.leftOut);
        }
    }
    convertChunks(metadata, family, carried);
    if (family != ChunkFamily::kNone) {
        toChunks(metadata, family, carried);
    } else if (output.container != Container::kFlac && output.container != Container::kOgg) {
        toNowhere(metadata, carried);
    }
    return carried;
}

void writeCarriedOver(int descriptor, const CarriedOver& carried, Container container,
                      const std::string& name) {
    appendChunks(descriptor, familyOf(container), carried.chunks, name);
    if (!carried.flac.isEmpty()) {
        writeFlacMetadata(descriptor, carried.flac, name);
    }
    if (!carried.comments.empty()) {
        writeOggComments(descriptor, carried.comments, name);
    }
}

} // namespace varno
