#include "AudioFile/Id3.h"

#include "AudioFile/TagStream.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <taglib/apefooter.h>
#include <taglib/apetag.h>
#include <taglib/attachedpictureframe.h>
#include <taglib/id3v1tag.h>
#include <taglib/id3v2extendedheader.h>
#include <taglib/id3v2frame.h>
#include <taglib/id3v2header.h>
#include <taglib/id3v2synchdata.h>
#include <taglib/id3v2tag.h>
#include <taglib/tbytevectorstream.h>
#include <taglib/tpropertymap.h>
#include <taglib/unknownframe.h>

namespace varno {

namespace {

using TagLib::ByteVector;
using TagLib::String;

// Of the frames of a tag that are compressed, together: what TagLib expands grows to the thousandfold.
constexpr std::int64_t kMostCompressedBytes = 64 << 10;

constexpr unsigned kOldVersion = 2;          // ID3v2.2, whose frame headers are shorter
constexpr unsigned kOldFrameHeaderBytes = 6; // of a frame
constexpr unsigned kId3v2HeaderBytes = 10;
constexpr unsigned kVersionWithSyncInFrames = 4;
constexpr std::int64_t kId3v1Bytes = 128; // at the end of the file

ByteVector byteVector(std::string_view bytes) {
    return {bytes.data(), static_cast<unsigned>(bytes.size())};
}

std::string stringOf(const ByteVector& bytes) {
    return {bytes.data(), bytes.size()};
}

String tagLibText(const std::string& text) {
    return {text, String::UTF8};
}

// TagLib's record of a frame header is open to frames only.
struct FrameAccess : TagLib::ID3v2::Frame {
    using Record = TagLib::ID3v2::Frame::Header;
    static Record& recordOf(const TagLib::ID3v2::Frame& frame) { return *(frame.*(&FrameAccess::header))(); }
};

bool hasLargeCompressedFrames(std::string_view tag) {
    const TagLib::ID3v2::Header header(byteVector(tag.substr(0, kId3v2HeaderBytes)));
    const unsigned version = header.majorVersion();
    ByteVector frames = byteVector(tag).mid(kId3v2HeaderBytes, header.tagSize());
    if (header.unsynchronisation() && version < kVersionWithSyncInFrames) {
        frames = TagLib::ID3v2::SynchData::decode(frames);
    }
    unsigned at = 0;
    if (header.extendedHeader()) {
        TagLib::ID3v2::ExtendedHeader extended;
        extended.setData(frames);
        at = extended.size() <= frames.size() ? extended.size() : 0;
    }
    const unsigned headerBytes = version <= kOldVersion ? kOldFrameHeaderBytes : kId3v2HeaderBytes;
    std::int64_t compressed = 0;
    while (at + headerBytes < frames.size() && frames[static_cast<int>(at)] != '\0') {
        const FrameAccess::Record frame(frames.mid(at), version);
        const unsigned bytes = frame.frameSize();
        compressed += frame.compression() ? bytes : 0;
        if (bytes > frames.size() - at - headerBytes) {
            break;
        }
        at += headerBytes + bytes;
    }
    return compressed > kMostCompressedBytes;
}

// A tag in memory, with what TagLib needs to read it.
class Id3InMemory {
public:
    explicit Id3InMemory(std::string_view bytes)
        : mStream(byteVector(bytes)),
          mFile(&mStream) {
        const bool isTag = bytes.size() >= kId3v2HeaderBytes && bytes.starts_with("ID3");
        if (isTag && !hasLargeCompressedFrames(bytes)) {
            mTag = std::make_unique<TagLib::ID3v2::Tag>(&mFile, 0);
        }
    }

    /// Null where the bytes are no tag that can be read.
    TagLib::ID3v2::Tag* tag() { return mTag.get(); }

private:
    TagLib::ByteVectorStream mStream;
    PlainTagFile mFile;
    std::unique_ptr<TagLib::ID3v2::Tag> mTag;
};

std::vector<TextTag> textsOf(const TagLib::PropertyMap& properties) {
    std::vector<TextTag> texts;
    for (const auto& [key, values] : properties) {
        for (const auto& value : values) {
            texts.push_back({key.to8Bit(true), value.to8Bit(true)});
        }
    }
    return texts;
}

TagLib::PropertyMap propertiesOf(const std::vector<TextTag>& texts) {
    TagLib::PropertyMap properties;
    for (const TextTag& text : texts) {
        properties.insert(tagLibText(text.key), TagLib::StringList(tagLibText(text.value)));
    }
    return properties;
}

// A frame without text, as a damaged one may be, is none.
bool hasText(const TagLib::PropertyMap& properties, const std::string& key) {
    const auto found = properties.find(tagLibText(key));
    return found != properties.end() && !found->second.isEmpty();
}

Picture pictureOfFrame(const TagLib::ID3v2::AttachedPictureFrame& frame) {
    Picture picture;
    picture.type = static_cast<unsigned>(frame.type());
    picture.mime = frame.mimeType().to8Bit(true);
    picture.description = frame.description().to8Bit(true);
    picture.data = stringOf(frame.picture());
    return picture;
}

// The tag owns the result.
TagLib::ID3v2::AttachedPictureFrame* frameOf(const Picture& picture) {
    auto frame = std::make_unique<TagLib::ID3v2::AttachedPictureFrame>();
    frame->setTextEncoding(String::UTF8);
    frame->setType(static_cast<TagLib::ID3v2::AttachedPictureFrame::Type>(picture.type));
    frame->setMimeType(tagLibText(picture.mime));
    frame->setDescription(tagLibText(picture.description));
    frame->setPicture(byteVector(picture.data));
    return frame.release();
}

// TagLib's list of what is no text has "APIC", and from version 2 on "PRIV/owner" and "UNKNOWN/XYZW".
void leaveOutItems(const TagLib::StringList& items, LeftOutList& leftOut) {
    constexpr std::string_view kUnknown = "UNKNOWN/";
    for (const auto& item : items) {
        const std::string text = item.to8Bit(true);
        const std::size_t start = text.starts_with(kUnknown) ? kUnknown.size() : 0;
        const std::string name = text.substr(start, text.find('/', start) - start);
        if (name != "APIC" && name != "PIC") {
            addLeftOut(leftOut, LeftOutReason::kNoPlace, LeftOutKind::kTagItem, name);
        }
    }
}

void leaveOutChanged(const TagLib::PropertyMap& wanted, const TagLib::PropertyMap& held,
                     LeftOutList& leftOut) {
    for (const auto& [key, values] : wanted) {
        for (std::size_t i = 0; held[key] != values && i < values.size(); ++i) {
            addLeftOut(leftOut, LeftOutReason::kNoPlace, LeftOutKind::kComment, key.to8Bit(true));
        }
    }
}

// A frame may ask those that do not know it to discard it when the tag changes. TagLib does so with those
// that it knows, too.
void keepKnownFrames(TagLib::ID3v2::Tag& tag, LeftOutList& leftOut) {
    for (const auto* frame : tag.frameList()) {
        FrameAccess::Record& record = FrameAccess::recordOf(*frame);
        if (dynamic_cast<const TagLib::ID3v2::UnknownFrame*>(frame) == nullptr) {
            record.setTagAlterPreservation(false);
        } else if (record.tagAlterPreservation()) {
            addLeftOut(leftOut, LeftOutReason::kNoPlace, LeftOutKind::kTagItem, stringOf(frame->frameID()));
        }
    }
}

} // namespace

Tags readId3(std::string_view tag, LeftOutList& leftOut) {
    Id3InMemory id3(tag);
    if (id3.tag() == nullptr || (id3.tag()->isEmpty() && id3.tag()->frameList().isEmpty())) {
        addLeftOut(leftOut, LeftOutReason::kUnreadable, LeftOutKind::kTags);
        return {};
    }
    Tags tags;
    const TagLib::PropertyMap properties = id3.tag()->properties();
    tags.texts = textsOf(properties);
    leaveOutItems(properties.unsupportedData(), leftOut);
    for (const auto* frame : id3.tag()->frameList("APIC")) {
        if (const auto* picture = dynamic_cast<const TagLib::ID3v2::AttachedPictureFrame*>(frame)) {
            tags.pictures.push_back(pictureOfFrame(*picture));
        }
    }
    return tags;
}

std::string addToId3(std::string_view tag, const Tags& more, LeftOutList& leftOut) {
    Id3InMemory id3(tag);
    TagLib::ID3v2::Tag fresh;
    TagLib::ID3v2::Tag& target = id3.tag() != nullptr ? *id3.tag() : fresh;
    TagLib::PropertyMap properties = target.properties();
    std::vector<TextTag> added;
    std::copy_if(more.texts.begin(), more.texts.end(), std::back_inserter(added),
                 [&](const TextTag& text) { return !hasText(properties, text.key); });
    if (added.empty() && more.pictures.empty()) {
        return std::string(tag);
    }
    properties.merge(propertiesOf(added));
    target.setProperties(properties);
    keepKnownFrames(target, leftOut);
    for (const Picture& picture : more.pictures) {
        target.addFrame(frameOf(picture));
    }
    // Of damaged frames, a text may be read that cannot be written.
    std::string result = stringOf(target.render());
    Id3InMemory written(result);
    leaveOutChanged(properties,
                    written.tag() == nullptr ? TagLib::PropertyMap() : written.tag()->properties(), leftOut);
    return result;
}

Mp3Tags readMp3Tags(int descriptor, std::int64_t mostBytes, LeftOutList& leftOut) {
    Mp3Tags tags;
    TagStream stream(descriptor, mostBytes, {});
    const ByteVector start = stream.readBlock(kId3v2HeaderBytes);
    if (start.startsWith("ID3") && start.size() == kId3v2HeaderBytes) {
        const std::int64_t bytes = TagLib::ID3v2::Header(start).completeTagSize();
        stream.seek(0, TagStream::Beginning);
        tags.id3 = stringOf(stream.readBlock(static_cast<std::size_t>(bytes)));
    }
    PlainTagFile file(&stream);
    const std::int64_t end = stream.length();
    TagLib::ID3v1::Tag last(&file, std::max<std::int64_t>(end - kId3v1Bytes, 0));
    const bool hasLast = !last.isEmpty();
    const auto footerBytes = static_cast<std::int64_t>(TagLib::APE::Footer::size());
    const std::int64_t footer = end - (hasLast ? kId3v1Bytes : 0) - footerBytes;
    stream.seek(std::max<std::int64_t>(footer, 0), TagStream::Beginning);
    if (footer >= 0 &&
        stream.readBlock(TagLib::APE::Tag::fileIdentifier().size()) == TagLib::APE::Tag::fileIdentifier()) {
        const TagLib::APE::Tag ape(&file, footer);
        tags.texts = textsOf(ape.properties());
        leaveOutItems(ape.properties().unsupportedData(), leftOut);
    }
    if (hasLast) {
        addMissing(tags.texts, textsOf(last.properties()));
    }
    if (stream.isOverLimit()) {
        addLeftOut(leftOut, LeftOutReason::kTooLarge, LeftOutKind::kTags);
    }
    return tags;
}

} // namespace varno
