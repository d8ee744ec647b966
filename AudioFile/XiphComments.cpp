#include "AudioFile/XiphComments.h"

#include <algorithm>
#include <cstdint>
#include <taglib/flacpicture.h>

namespace varno {

namespace {

constexpr std::string_view kPictureKey = "METADATA_BLOCK_PICTURE";
constexpr std::size_t kLengthBytes = 4;

// Takes bytes from the front of a text; an announced length beyond its end ends it.
class ByteReader {
public:
    explicit ByteReader(std::string_view bytes)
        : mBytes(bytes) {}

    std::optional<std::uint32_t> number() {
        if (mBytes.size() < kLengthBytes) {
            return std::nullopt;
        }
        std::uint32_t value = 0;
        for (std::size_t i = kLengthBytes; i-- > 0;) {
            value = value << 8 | static_cast<unsigned char>(mBytes[i]);
        }
        mBytes.remove_prefix(kLengthBytes);
        return value;
    }

    std::optional<std::string> text() {
        const std::optional<std::uint32_t> length = number();
        if (!length || *length > mBytes.size()) {
            return std::nullopt;
        }
        std::string value(mBytes.substr(0, *length));
        mBytes.remove_prefix(*length);
        return value;
    }

private:
    std::string_view mBytes;
};

std::string lengthOf(std::size_t value) {
    std::string bytes;
    for (std::size_t i = 0; i < kLengthBytes; ++i) {
        bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    }
    return bytes;
}

// Vorbis I, section 5.2.2: ASCII without control characters, "=" and "~".
bool isCommentKey(std::string_view key) {
    return !key.empty() &&
           std::all_of(key.begin(), key.end(), [](char c) { return c >= ' ' && c <= '}' && c != '='; });
}

TagLib::ByteVector bytesOf(std::string_view text) {
    return {text.data(), static_cast<unsigned>(text.size())};
}

std::string textOf(const TagLib::ByteVector& bytes) {
    return {bytes.data(), bytes.size()};
}

} // namespace

std::optional<XiphCommentStructure> readXiphComments(std::string_view bytes) {
    ByteReader reader(bytes);
    const std::optional<std::string> vendor = reader.text();
    const std::optional<std::uint32_t> count = vendor ? reader.number() : std::nullopt;
    if (!count) {
        return std::nullopt;
    }
    XiphCommentStructure structure;
    structure.vendor = *vendor;
    for (std::uint32_t i = 0; i < *count && structure.isWhole; ++i) {
        if (std::optional<std::string> comment = reader.text()) {
            structure.comments.push_back(std::move(*comment));
        } else {
            structure.isWhole = false;
        }
    }
    return structure;
}

std::string writeXiphComments(const std::string& vendor, const XiphComments& comments) {
    std::string bytes = lengthOf(vendor.size()) + vendor + lengthOf(comments.size());
    for (const std::string& comment : comments) {
        bytes += lengthOf(comment.size());
        bytes += comment;
    }
    return bytes;
}

std::string_view keyOfComment(std::string_view comment) {
    return comment.substr(0, comment.find('='));
}

std::vector<TextTag> textsOfComments(const XiphComments& comments, LeftOutList& leftOut) {
    std::vector<TextTag> texts;
    for (const std::string& comment : comments) {
        const std::string_view key = keyOfComment(comment);
        if (key.size() < comment.size() && isCommentKey(key) && isUtf8(comment)) {
            texts.push_back({upperCase(key), comment.substr(key.size() + 1)});
        } else {
            addLeftOut(leftOut, LeftOutReason::kUnreadable, LeftOutKind::kComment, key);
        }
    }
    return texts;
}

XiphComments commentsOfTexts(const std::vector<TextTag>& texts, LeftOutList& leftOut) {
    XiphComments comments;
    for (const TextTag& text : texts) {
        if (isCommentKey(text.key)) {
            comments.push_back(text.key + '=' + text.value);
        } else {
            addLeftOut(leftOut, LeftOutReason::kNoPlace, LeftOutKind::kComment, text.key);
        }
    }
    return comments;
}

std::vector<Picture> takePictures(XiphComments& comments) {
    std::vector<Picture> pictures;
    const auto isTaken = [&](const std::string& comment) {
        if (upperCase(keyOfComment(comment)) != kPictureKey || comment.size() <= kPictureKey.size()) {
            return false;
        }
        const auto block = TagLib::ByteVector::fromBase64(bytesOf(comment).mid(kPictureKey.size() + 1));
        TagLib::FLAC::Picture read;
        if (block.isEmpty() || !read.parse(block)) {
            return false;
        }
        pictures.push_back({static_cast<unsigned>(read.type()), read.mimeType().to8Bit(true),
                            read.description().to8Bit(true), static_cast<unsigned>(read.width()),
                            static_cast<unsigned>(read.height()), static_cast<unsigned>(read.colorDepth()),
                            static_cast<unsigned>(read.numColors()), textOf(read.data())});
        return true;
    };
    comments.erase(std::remove_if(comments.begin(), comments.end(), isTaken), comments.end());
    return pictures;
}

std::string commentOfPicture(const Picture& picture) {
    using TagLib::String;
    TagLib::FLAC::Picture block;
    block.setType(static_cast<TagLib::FLAC::Picture::Type>(picture.type));
    block.setMimeType(String(picture.mime, String::UTF8));
    block.setDescription(String(picture.description, String::UTF8));
    block.setWidth(static_cast<int>(picture.width));
    block.setHeight(static_cast<int>(picture.height));
    block.setColorDepth(static_cast<int>(picture.depth));
    block.setNumColors(static_cast<int>(picture.colors));
    block.setData(bytesOf(picture.data));
    return std::string(kPictureKey) + '=' + textOf(block.render().toBase64());
}

} // namespace varno
