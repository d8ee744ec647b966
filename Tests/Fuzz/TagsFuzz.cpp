// Tags of audio files: ID3v2, comments of Vorbis and FLAC, blocks of FLAC, pages of Ogg, heads of MP3 files,
// chunks with texts.
#include "AudioFile/ChunkTexts.h"
#include "AudioFile/FlacBlocks.h"
#include "AudioFile/Id3.h"
#include "AudioFile/Metadata.h"
#include "AudioFile/MpegLength.h"
#include "AudioFile/OggPages.h"
#include "AudioFile/OggTags.h"
#include "AudioFile/TagStream.h"
#include "AudioFile/XiphComments.h"
#include "Files/FileError.h"
#include "Tests/Fuzz/FuzzInput.h"
#include "Tests/Fuzz/FuzzSubjects.h"
#include "Tests/Fuzz/MemoryFile.h"

#include <algorithm>

namespace varno::fuzz {
namespace {

// How the first byte of an input has the rest used.
enum class TagUse : unsigned char {
    kComments,   ///< A comment structure.
    kId3,        ///< An ID3v2 tag.
    kMp3,        ///< An MP3 file.
    kFlac,       ///< A FLAC file.
    kOgg,        ///< An Ogg file.
    kChunkTexts, ///< A chunk with texts: its family, and its data.
    kCount,
};

// What of the product a planted fault replaces.
struct TagCalls {
    std::function<std::optional<XiphCommentStructure>(std::string_view)> readComments = readXiphComments;
    std::function<std::string(std::string_view, const Tags&, LeftOutList&)> addToTag = addToId3;
    std::function<FlacMetadata(int, std::int64_t, LeftOutList&)> readFlac = readFlacMetadata;
    std::function<void(int, const std::string&)> setSerial = setOggSerial;
    std::function<std::vector<TextTag>(const XiphComments&, LeftOutList&)> textsOf = textsOfComments;
};

class TagsTarget : public FuzzTarget {
public:
    explicit TagsTarget(TagCalls calls = {})
        : mCalls(std::move(calls)) {
        silenceTagLib();
    }

    void run(std::string_view input) override {
        FuzzInput parts(input);
        const auto use = static_cast<TagUse>(parts.choose(static_cast<std::size_t>(TagUse::kCount)));
        mFile.set(parts.rest());
        switch (use) {
        case TagUse::kComments:
            checkComments(parts.rest());
            break;
        case TagUse::kId3:
            checkId3(parts.rest());
            break;
        case TagUse::kMp3:
            checkMp3(parts.rest());
            break;
        case TagUse::kFlac:
            checkFlac(parts.rest().size());
            break;
        case TagUse::kOgg:
            checkOgg(parts.rest());
            break;
        default:
            checkChunkTexts(parts);
            break;
        }
        require(mFile.position() == 0, "the file's position has moved");
    }

private:
    static void checkTexts(const std::vector<TextTag>& texts) {
        for (const TextTag& text : texts) {
            require(isUtf8(text.key) && isUtf8(text.value), "a text is not UTF-8");
            require(text.key == upperCase(text.key), "a key is not in upper case");
        }
    }

    void checkComments(std::string_view bytes) const {
        const auto structure = mCalls.readComments(bytes);
        if (!structure) {
            return;
        }
        const std::string written = writeXiphComments(structure->vendor, structure->comments);
        require(!structure->isWhole || bytes.starts_with(written),
                "comments are not read as they were written");
        const auto again = mCalls.readComments(written);
        require(again && again->isWhole && again->vendor == structure->vendor &&
                    again->comments == structure->comments,
                "comments are not written as they were read");
        LeftOutList leftOut;
        checkTexts(mCalls.textsOf(structure->comments, leftOut));
        XiphComments comments = structure->comments;
        for (const Picture& picture : takePictures(comments)) {
            XiphComments one = {commentOfPicture(picture)};
            require(takePictures(one) == std::vector{picture}, "a picture is not read as it was written");
        }
    }

    void checkId3(std::string_view bytes) const {
        LeftOutList leftOut;
        const Tags tags = readId3(bytes, leftOut);
        checkTexts(tags.texts);
        const std::string tag = mCalls.addToTag(bytes, {{{"TITLE", "one"}}, {}}, leftOut);
        const Tags more = readId3(tag, leftOut);
        require(std::ranges::count(more.texts, "TITLE", &TextTag::key) > 0, "a tag does not hold a title");
        require(more.pictures.size() >= tags.pictures.size(), "a tag has lost a picture");
        for (const TextTag& text : tags.texts) {
            require(!leftOut.empty() || std::ranges::count(more.texts, text) > 0, "a tag has lost a text");
        }
    }

    void checkMp3(std::string_view bytes) {
        LeftOutList leftOut;
        const Mp3Tags tags = readMp3Tags(mFile.descriptor(), kMostCarriedBytes, leftOut);
        require(bytes.starts_with(tags.id3), "a tag is not that of the file's start");
        checkTexts(tags.texts);
        mpegStatesLength(mFile.descriptor());
    }

    void checkFlac(std::size_t fileBytes) {
        LeftOutList leftOut;
        FlacMetadata metadata = mCalls.readFlac(mFile.descriptor(), kMostCarriedBytes, leftOut);
        std::size_t bytes = 0;
        for (const std::string& comment : metadata.comments) {
            bytes += comment.size();
        }
        for (const Picture& picture : metadata.pictures) {
            bytes += picture.data.size() + picture.mime.size() + picture.description.size();
        }
        require(bytes <= fileBytes, "more is read than the file has");
        fitFlacMetadata(metadata, 100, 50, leftOut);
        checkTexts(mCalls.textsOf(metadata.comments, leftOut));
    }

    void checkOgg(std::string_view bytes) {
        LeftOutList leftOut;
        isOggWithoutEnd(mFile.descriptor());
        readOggComments(mFile.descriptor(), kMostCarriedBytes, leftOut);
        require(mFile.position() == 0, "the file's position has moved");
        try {
            mCalls.setSerial(mFile.descriptor(), "input");
            const std::string once = mFile.content();
            mCalls.setSerial(mFile.descriptor(), "input");
            require(once == mFile.content(), "a serial number that is set changes again");
            require(once.size() == bytes.size(), "a serial number changes the length of the file");
        } catch (const FileError&) {
        }
        mFile.set({});
    }

    void checkChunkTexts(FuzzInput& parts) const {
        static constexpr struct {
            ChunkFamily family;
            const char* id;
        } kKinds[] = {
            {ChunkFamily::kRiff, "LIST"}, {ChunkFamily::kAiff, "ANNO"}, {ChunkFamily::kCaf, "info"}};
        const auto& kind = kKinds[parts.choose(std::size(kKinds))];
        LeftOutList leftOut;
        const auto texts = textsOfChunks(kind.family, {makeChunk(kind.id, parts.rest())}, leftOut);
        checkTexts(texts);
        const TagChunks made = makeTagChunks(kind.family, {texts, {}}, {});
        checkTexts(textsOfChunks(kind.family, made.chunks, leftOut));
    }

    TagCalls mCalls;
    MemoryFile mFile;
};

// A page of Ogg with one segment.
std::string oggPage(const std::string& packet, unsigned char flags, char number) {
    return std::string("OggS\0", 5) + static_cast<char>(flags) + std::string(8, '\0') + "abcd" + number +
           std::string(7, '\0') + '\1' + static_cast<char>(packet.size()) + packet;
}

// A block of FLAC. @param type with the mark of the last one
std::string flacBlock(unsigned char type, const std::string& data) {
    return std::string{static_cast<char>(type), '\0', '\0', static_cast<char>(data.size())} + data;
}

std::vector<std::string> tagsSeeds() {
    const auto use = [](TagUse kind, const std::string& bytes) {
        return std::string(1, static_cast<char>(kind)) + bytes;
    };
    const std::string comments = writeXiphComments("v", {"TITLE=one", "X", "\xE4=\xE4"});
    const Picture cover{3, "image/png", "cover", 1, 2, 24, 0, "data"};
    LeftOutList leftOut;
    const Tags tags{{{"TITLE", "one"}, {"ARTIST", "two"}, {"X", "y"}}, {cover}};
    const std::string id3 = addToId3({}, tags, leftOut);
    const std::string ape =
        std::string("APETAGEX\xD0\7\0\0\x33\0\0\0\1\0\0\0\0\0\0\x80", 24) + std::string(8, '\0');
    const std::string flac = "fLaC" + flacBlock(0, std::string(34, '\1'));
    return {use(TagUse::kComments, comments),
            use(TagUse::kComments, writeXiphComments("v", {commentOfPicture(cover)})),
            use(TagUse::kId3, id3),
            use(TagUse::kId3, std::string("ID3\2\0\0\0\0\0\x0B"
                                          "TT2\0\0\5\0one\0",
                                          21)),
            use(TagUse::kId3, std::string("ID3\2\0\0\0\0\0\x0B"
                                          "TT2\0\0\5\0",
                                          17)), // a title without a text
            use(TagUse::kId3, std::string("ID3\4\0\0\0\0\0\x12"
                                          "APIC\0\0\0\7\x40\0\0a\0\3\0xy",
                                          28)), // a picture to be discarded when the tag changes
            use(TagUse::kMp3, id3.substr(0, 64) + std::string("\xFF\xFB\x90\x64", 4) + std::string(32, '\0') +
                                  "Xing" + std::string("\0\0\0\1", 4) + "TAG" + std::string(125, 'a')),
            use(TagUse::kMp3, "sound" + ape),
            use(TagUse::kFlac, flac + flacBlock(0x84, comments)),
            use(TagUse::kFlac, flac + flacBlock(2, "riffabcd") + flacBlock(0x81, std::string(2, '\0'))),
            use(TagUse::kOgg,
                oggPage("OpusHead", 2, 0) + oggPage("OpusTags" + comments, 0, 1) + oggPage("x", 4, 2)),
            use(TagUse::kOgg, oggPage("\1vorbis", 2, 0) + oggPage("\3vorbis" + comments + "\1", 0, 1)),
            use(TagUse::kChunkTexts, std::string("\0INFOINAM\4\0\0\0one\0IXYZ\1\0\0\0a\0", 27)),
            use(TagUse::kChunkTexts, std::string("\2\0\0\0\2title\0one\0year\0\xE4\0", 22)),
            use(TagUse::kChunkTexts, "\1text")};
}

// The planted faults.

std::optional<XiphCommentStructure> readHalvesOfComments(std::string_view bytes) {
    auto structure = readXiphComments(bytes);
    if (structure) {
        structure->isWhole = true;
        for (std::string& comment : structure->comments) {
            comment = comment.substr(0, comment.find('\0'));
        }
    }
    return structure;
}

std::string addNothing(std::string_view tag, const Tags& more, LeftOutList& leftOut) {
    return tag.size() > 10 ? std::string(tag) : addToId3(tag, more, leftOut);
}

FlacMetadata readMoreThanThereIs(int descriptor, std::int64_t mostBytes, LeftOutList& leftOut) {
    FlacMetadata metadata = readFlacMetadata(descriptor, mostBytes, leftOut);
    if (!leftOut.empty()) {
        metadata.comments.emplace_back(1000, '\0');
    }
    return metadata;
}

void setNextSerial(int descriptor, const std::string& name) {
    setOggSerial(descriptor, name);
    unsigned char serial = 0;
    if (readAt(descriptor, 100, &serial, 1)) {
        const char next = static_cast<char>(serial + 1);
        writeAt(descriptor, 100, {&next, 1}, name);
    }
}

std::vector<TextTag> textsOfAnyBytes(const XiphComments& comments, LeftOutList& leftOut) {
    std::vector<TextTag> texts = textsOfComments(comments, leftOut);
    for (const std::string& comment : comments) {
        const std::string_view key = keyOfComment(comment);
        texts.push_back({upperCase(key), comment.substr(key.size())});
    }
    return texts;
}

} // namespace

FuzzSubject tagsSubject() {
    return {"tags",
            makerOf<TagsTarget>(),
            tagsSeeds(),
            {{"comments end at a zero", makerOf<TagsTarget>(TagCalls{readHalvesOfComments})},
             {"nothing is added to a tag", makerOf<TagsTarget>(TagCalls{.addToTag = addNothing})},
             {"more is read than there is", makerOf<TagsTarget>(TagCalls{.readFlac = readMoreThanThereIs})},
             {"each serial number is another", makerOf<TagsTarget>(TagCalls{.setSerial = setNextSerial})},
             {"texts have any bytes", makerOf<TagsTarget>(TagCalls{.textsOf = textsOfAnyBytes})}},
            {"AudioFile/XiphComments.cpp", "AudioFile/Id3.cpp", "AudioFile/FlacBlocks.cpp",
             "AudioFile/OggPages.cpp", "AudioFile/OggTags.cpp", "AudioFile/MpegLength.cpp",
             "AudioFile/ChunkTexts.cpp"}};
}

} // namespace varno::fuzz
