#include "AudioFile/OggTags.h"

#include "AudioFile/TagStream.h"
#include "Files/FileError.h"

#include <limits>
#include <optional>
#include <string_view>
#include <taglib/oggfile.h>

namespace varno {

namespace {

constexpr unsigned kCommentPacket = 1; // the first is 0

// What stands around the structure in the packet of a codec.
struct PacketForm {
    std::string_view magic;
    std::string_view end;
};

constexpr PacketForm kPacketForms[] = {
    {"\x03vorbis", "\x01"}, // Vorbis I, section 5.2.1: the framing bit
    {"OpusTags", ""},       // RFC 7845, section 5.2
};

const PacketForm* formOf(std::string_view packet) {
    for (const PacketForm& form : kPacketForms) {
        if (packet.starts_with(form.magic)) {
            return &form;
        }
    }
    return nullptr;
}

class OggPackets final : public TagLib::Ogg::File {
public:
    explicit OggPackets(TagLib::IOStream* stream)
        : File(stream) {}

    TagLib::Tag* tag() const override { return nullptr; }
    TagLib::AudioProperties* audioProperties() const override { return nullptr; }

    std::string comments() {
        const TagLib::ByteVector bytes = packet(kCommentPacket);
        return {bytes.data(), bytes.size()};
    }

    void setComments(const std::string& bytes) {
        setPacket(kCommentPacket, {bytes.data(), static_cast<unsigned>(bytes.size())});
        save();
    }
};

} // namespace

XiphComments readOggComments(int descriptor, std::int64_t mostBytes, LeftOutList& leftOut) {
    TagStream stream(descriptor, mostBytes, {});
    OggPackets packets(&stream);
    const std::string packet = packets.comments();
    if (stream.isOverLimit()) {
        addLeftOut(leftOut, LeftOutReason::kTooLarge, LeftOutKind::kTags);
        return {};
    }
    const PacketForm* form = formOf(packet);
    std::optional<XiphCommentStructure> structure;
    if (form != nullptr) {
        structure = readXiphComments(std::string_view(packet).substr(form->magic.size()));
    }
    if (!structure) {
        addLeftOut(leftOut, LeftOutReason::kUnreadable, LeftOutKind::kTags);
        return {};
    }
    if (!structure->isWhole) {
        addLeftOut(leftOut, LeftOutReason::kUnreadable, LeftOutKind::kComment);
    }
    return std::move(structure->comments);
}

void writeOggComments(int descriptor, const XiphComments& comments, const std::string& name) {
    TagStream stream(descriptor, std::numeric_limits<std::int64_t>::max(), name);
    OggPackets packets(&stream);
    const std::string packet = packets.comments();
    const PacketForm* form = formOf(packet);
    std::optional<XiphCommentStructure> structure;
    if (form != nullptr) {
        structure = readXiphComments(std::string_view(packet).substr(form->magic.size()));
    }
    if (!structure) {
        throw FileError(name + ": damaged while it was written: no comments of Vorbis or Opus");
    }
    packets.setComments(std::string(form->magic) + writeXiphComments(structure->vendor, comments) +
                        std::string(form->end));
    stream.throwIfFailed();
}

} // namespace varno
