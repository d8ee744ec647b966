#include "AudioFile/FlacBlocks.h"

#include "Files/FileError.h"
#include "Files/Transfer.h"

#include <FLAC/metadata.h>
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace varno {

namespace {

constexpr std::size_t kMostBlockBytes = (std::size_t{1} << 24) - 1; // lengths have 24 bits
constexpr std::size_t kPictureFieldBytes = 32; // of a picture's block, beside texts and data
constexpr std::size_t kLengthFieldBytes = 4;   // of a comment
constexpr std::size_t kMostVendorBytes = 1024; // left free in the block of comments
constexpr std::size_t kMostComments = 100'000; // with more, libFLAC's decoder refuses the file
constexpr std::uint64_t kFramesPerCdSector = 588;
constexpr std::string_view kForeignHeaders[] = {"riff", "aiff", "w64 "};
constexpr std::int64_t kSyncBytes = 4;

struct BlockDeleter {
    void operator()(FLAC__StreamMetadata* block) const { FLAC__metadata_object_delete(block); }
};
using OwnedBlock = std::unique_ptr<FLAC__StreamMetadata, BlockDeleter>;

struct ChainDeleter {
    void operator()(FLAC__Metadata_Chain* chain) const { FLAC__metadata_chain_delete(chain); }
};
using Chain = std::unique_ptr<FLAC__Metadata_Chain, ChainDeleter>;

struct IteratorDeleter {
    void operator()(FLAC__Metadata_Iterator* iterator) const { FLAC__metadata_iterator_delete(iterator); }
};
using Iterator = std::unique_ptr<FLAC__Metadata_Iterator, IteratorDeleter>;

// libFLAC reports a lack of memory by null.
template<class Object>
Object* orBadAlloc(Object* object) {
    if (object == nullptr) {
        throw std::bad_alloc();
    }
    return object;
}

OwnedBlock makeBlock(FLAC__MetadataType type) {
    return OwnedBlock(orBadAlloc(FLAC__metadata_object_new(type)));
}

OwnedBlock copyOf(const FLAC__StreamMetadata& block) {
    return OwnedBlock(orBadAlloc(FLAC__metadata_object_clone(&block)));
}

Iterator startOf(FLAC__Metadata_Chain* chain) {
    Iterator iterator(orBadAlloc(FLAC__metadata_iterator_new()));
    FLAC__metadata_iterator_init(iterator.get(), chain);
    return iterator;
}

// The beginning of a file as libFLAC reads it: `endBytes` of it, and `leftBytes` in all.
struct FileStart {
    int descriptor = -1;
    std::int64_t endBytes = 0;
    std::int64_t leftBytes = 0;
    std::int64_t position = 0;
    bool isOverLimit = false;
};

std::size_t readFlac(void* data, std::size_t size, std::size_t count, FLAC__IOHandle handle) {
    auto& start = *static_cast<FileStart*>(handle);
    const std::int64_t inFile = std::max<std::int64_t>(start.endBytes - start.position, 0);
    const std::int64_t wanted = std::min(static_cast<std::int64_t>(size * count), inFile);
    if (wanted > start.leftBytes) {
        start.isOverLimit = true;
        return 0;
    }
    const auto bytes = static_cast<std::size_t>(wanted);
    if (bytes == 0 || !readAt(start.descriptor, start.position, data, bytes)) {
        return 0;
    }
    start.leftBytes -= wanted;
    start.position += wanted;
    return bytes / size;
}

int seekFlac(FLAC__IOHandle handle, FLAC__int64 offset, int whence) {
    auto& start = *static_cast<FileStart*>(handle);
    if (whence == SEEK_CUR) {
        offset += start.position;
    } else if (whence == SEEK_END) {
        offset += start.endBytes;
    }
    if (offset < 0 || offset > start.endBytes) {
        return -1;
    }
    start.position = offset;
    return 0;
}

FLAC__int64 tellFlac(FLAC__IOHandle handle) {
    return static_cast<FileStart*>(handle)->position;
}

int isFlacAtEnd(FLAC__IOHandle handle) {
    const auto& start = *static_cast<FileStart*>(handle);
    return start.position >= start.endBytes ? 1 : 0;
}

// The text has the capacity: nothing may throw through libFLAC.
std::size_t appendFlac(const void* data, std::size_t size, std::size_t count,
                       FLAC__IOHandle handle) noexcept {
    static_cast<std::string*>(handle)->append(static_cast<const char*>(data), size * count);
    return count;
}

constexpr FLAC__IOCallbacks kReadFlac = {readFlac, nullptr, seekFlac, tellFlac, isFlacAtEnd, nullptr};
constexpr FLAC__IOCallbacks kAppendFlac = {nullptr, appendFlac, nullptr, nullptr, nullptr, nullptr};

FileStart wholeFile(int descriptor, std::int64_t mostBytes) {
    struct stat status {};
    const bool known = ::fstat(descriptor, &status) == 0;
    return {descriptor, known ? status.st_size : 0, mostBytes};
}

std::string textOf(const void* bytes, std::size_t count) {
    return count == 0 ? std::string() : std::string(static_cast<const char*>(bytes), count);
}

std::string applicationId(const FLAC__StreamMetadata& block) {
    const auto& id = block.data.application.id;
    return textOf(id, sizeof id);
}

static_assert(sizeof(FLAC__StreamMetadata_Picture_Type) == sizeof(Picture::type));

Picture pictureOf(const FLAC__StreamMetadata_Picture& block) {
    Picture picture;
    std::memcpy(&picture.type, &block.type, sizeof picture.type); // files have numbers that are no enumerator
    picture.mime = block.mime_type;
    picture.description = reinterpret_cast<const char*>(block.description);
    picture.width = block.width;
    picture.height = block.height;
    picture.depth = block.depth;
    picture.colors = block.colors;
    picture.data = textOf(block.data, block.data_length);
    return picture;
}

// libFLAC reads a damaged block as far as it goes, without a word.
void takeComments(const FLAC__StreamMetadata& block, FlacMetadata& metadata, LeftOutList& leftOut) {
    const FLAC__StreamMetadata_VorbisComment& read = block.data.vorbis_comment;
    std::size_t bytes = 2 * kLengthFieldBytes + read.vendor_string.length;
    for (std::uint32_t i = 0; i < read.num_comments; ++i) {
        metadata.comments.push_back(textOf(read.comments[i].entry, read.comments[i].length));
        bytes += kLengthFieldBytes + read.comments[i].length;
    }
    if (bytes != block.length) {
        addLeftOut(leftOut, LeftOutReason::kUnreadable, LeftOutKind::kComment);
    }
}

void take(const FLAC__StreamMetadata& block, FlacMetadata& metadata, LeftOutList& leftOut) {
    switch (block.type) {
    case FLAC__METADATA_TYPE_STREAMINFO:
    case FLAC__METADATA_TYPE_SEEKTABLE:
    case FLAC__METADATA_TYPE_PADDING:
        return;
    case FLAC__METADATA_TYPE_VORBIS_COMMENT:
        takeComments(block, metadata, leftOut);
        return;
    case FLAC__METADATA_TYPE_PICTURE:
        metadata.pictures.push_back(pictureOf(block.data.picture));
        return;
    default:
        metadata.others.emplace_back(copyOf(block));
    }
}

// Memory that libFLAC will free.
FLAC__byte* libraryCopy(std::string_view bytes) {
    auto* copy = static_cast<FLAC__byte*>(orBadAlloc(std::malloc(bytes.size() + 1)));
    std::copy(bytes.begin(), bytes.end(), copy);
    copy[bytes.size()] = '\0';
    return copy;
}

std::size_t blockBytes(const Picture& picture) {
    return kPictureFieldBytes + picture.mime.size() + picture.description.size() + picture.data.size();
}

// Filled in directly: libFLAC's function for a single comment adds up the lengths of all of them.
OwnedBlock commentBlock(const XiphComments& comments, const std::string& vendor) {
    OwnedBlock block = makeBlock(FLAC__METADATA_TYPE_VORBIS_COMMENT);
    FLAC__StreamMetadata_VorbisComment_Entry name{};
    name.entry = libraryCopy(vendor);
    name.length = static_cast<std::uint32_t>(vendor.size());
    FLAC__metadata_object_vorbiscomment_set_vendor_string(block.get(), name, false);
    if (FLAC__metadata_object_vorbiscomment_resize_comments(
            block.get(), static_cast<std::uint32_t>(comments.size())) == 0) {
        throw std::bad_alloc();
    }
    auto* entry = block->data.vorbis_comment.comments;
    for (const std::string& comment : comments) {
        std::free(entry->entry);
        entry->entry = libraryCopy(comment);
        entry->length = static_cast<std::uint32_t>(comment.size());
        block->length += entry->length;
        ++entry;
    }
    return block;
}

OwnedBlock pictureBlock(const Picture& picture) {
    OwnedBlock block = makeBlock(FLAC__METADATA_TYPE_PICTURE);
    auto& fields = block->data.picture;
    std::memcpy(&fields.type, &picture.type, sizeof fields.type);
    fields.width = picture.width;
    fields.height = picture.height;
    fields.depth = picture.depth;
    fields.colors = picture.colors;
    const std::string& data = picture.data;
    std::string mime = picture.mime;
    std::string description = picture.description;
    const bool isSet =
        FLAC__metadata_object_picture_set_mime_type(block.get(), mime.data(), true) != 0 &&
        FLAC__metadata_object_picture_set_description(
            block.get(), reinterpret_cast<FLAC__byte*>(description.data()), true) != 0 &&
        FLAC__metadata_object_picture_set_data(
            block.get(), const_cast<FLAC__byte*>(reinterpret_cast<const FLAC__byte*>(data.data())),
            static_cast<std::uint32_t>(data.size()), true) != 0;
    if (!isSet) {
        throw std::bad_alloc();
    }
    return block;
}

void fitComments(XiphComments& comments, LeftOutList& leftOut) {
    std::size_t bytes = kMostVendorBytes;
    std::size_t count = 0;
    const auto doesNotFit = [&](const std::string& comment) {
        if (count < kMostComments && bytes + kLengthFieldBytes + comment.size() <= kMostBlockBytes) {
            ++count;
            bytes += kLengthFieldBytes + comment.size();
            return false;
        }
        addLeftOut(leftOut, LeftOutReason::kNoPlace, LeftOutKind::kComment, keyOfComment(comment));
        return true;
    };
    comments.erase(std::remove_if(comments.begin(), comments.end(), doesNotFit), comments.end());
}

bool isForeignHeader(const FlacBlock& block) {
    return block->type == FLAC__METADATA_TYPE_APPLICATION &&
           std::find(std::begin(kForeignHeaders), std::end(kForeignHeaders), applicationId(*block)) !=
               std::end(kForeignHeaders);
}

// The last track of a cue sheet is where the audio ends; on a CD that is the start of a sector.
FlacBlock withEnd(const FlacBlock& block, std::uint64_t inputFrames, std::uint64_t outputFrames) {
    OwnedBlock copy = copyOf(*block);
    FLAC__StreamMetadata_CueSheet& sheet = copy->data.cue_sheet;
    if (sheet.num_tracks == 0) {
        return block;
    }
    std::uint64_t& end = sheet.tracks[sheet.num_tracks - 1].offset;
    if (end == inputFrames && (sheet.is_cd == 0 || outputFrames % kFramesPerCdSector == 0)) {
        end = outputFrames;
    }
    return copy;
}

[[noreturn]] void throwDamaged(const std::string& name) {
    throw FileError(name + ": damaged while it was written: no metadata of FLAC");
}

// The bytes of the metadata, from the start of the file to its first frame.
std::int64_t metadataBytes(FLAC__Metadata_Chain* chain) {
    std::int64_t bytes = kSyncBytes;
    const Iterator iterator = startOf(chain);
    do {
        const FLAC__StreamMetadata* block = FLAC__metadata_iterator_get_block(iterator.get());
        bytes += FLAC__STREAM_METADATA_HEADER_LENGTH + block->length;
    } while (FLAC__metadata_iterator_next(iterator.get()) != 0);
    return bytes;
}

void append(FLAC__Metadata_Iterator* iterator, OwnedBlock block) {
    if (FLAC__metadata_iterator_insert_block_after(iterator, block.get()) == 0) {
        throw std::bad_alloc();
    }
    std::ignore = block.release(); // the chain owns it
}

// In the chain of a file that has been written: the comments with their vendor, then everything else.
void replaceBlocks(FLAC__Metadata_Chain* chain, const FlacMetadata& metadata) {
    const Iterator iterator = startOf(chain);
    std::string vendor;
    while (FLAC__metadata_iterator_next(iterator.get()) != 0) {
        const FLAC__StreamMetadata* block = FLAC__metadata_iterator_get_block(iterator.get());
        if (block->type == FLAC__METADATA_TYPE_VORBIS_COMMENT) {
            const auto& name = block->data.vorbis_comment.vendor_string;
            vendor = textOf(name.entry, name.length);
            FLAC__metadata_iterator_delete_block(iterator.get(), false); // goes to the one before
        }
    }
    append(iterator.get(), commentBlock(metadata.comments, vendor));
    for (const FlacBlock& block : metadata.others) {
        append(iterator.get(), copyOf(*block));
    }
    for (const Picture& picture : metadata.pictures) {
        append(iterator.get(), pictureBlock(picture));
    }
}

} // namespace

FlacMetadata readFlacMetadata(int descriptor, std::int64_t mostBytes, LeftOutList& leftOut) {
    const Chain chain(orBadAlloc(FLAC__metadata_chain_new()));
    FileStart start = wholeFile(descriptor, mostBytes);
    if (FLAC__metadata_chain_read_with_callbacks(chain.get(), &start, kReadFlac) == 0) {
        addLeftOut(leftOut, start.isOverLimit ? LeftOutReason::kTooLarge : LeftOutReason::kUnreadable,
                   LeftOutKind::kTags);
        return {};
    }
    FlacMetadata metadata;
    const Iterator iterator = startOf(chain.get());
    do {
        take(*FLAC__metadata_iterator_get_block(iterator.get()), metadata, leftOut);
    } while (FLAC__metadata_iterator_next(iterator.get()) != 0);
    return metadata;
}

void leaveOutBlock(const FlacBlock& block, LeftOutReason reason, LeftOutList& leftOut) {
    if (block->type == FLAC__METADATA_TYPE_CUESHEET) {
        addLeftOut(leftOut, reason, LeftOutKind::kCueSheet);
    } else {
        addLeftOut(leftOut, reason, LeftOutKind::kBlock,
                   block->type == FLAC__METADATA_TYPE_APPLICATION ? applicationId(*block)
                                                                  : std::to_string(block->type));
    }
}

void fitFlacMetadata(FlacMetadata& metadata, std::int64_t inputFrames, std::int64_t outputFrames,
                     LeftOutList& leftOut) {
    fitComments(metadata.comments, leftOut);
    const auto isTooLarge = [&](const Picture& picture) {
        const bool isIt = blockBytes(picture) > kMostBlockBytes;
        if (isIt) {
            addLeftOut(leftOut, LeftOutReason::kNoPlace, LeftOutKind::kPicture);
        }
        return isIt;
    };
    metadata.pictures.erase(std::remove_if(metadata.pictures.begin(), metadata.pictures.end(), isTooLarge),
                            metadata.pictures.end());
    std::vector<FlacBlock> kept;
    for (const FlacBlock& block : metadata.others) {
        if (isForeignHeader(block)) {
            leaveOutBlock(block, LeftOutReason::kDescribesSamples, leftOut);
        } else if (block->type == FLAC__METADATA_TYPE_CUESHEET) {
            kept.push_back(withEnd(block, static_cast<std::uint64_t>(inputFrames),
                                   static_cast<std::uint64_t>(outputFrames)));
        } else {
            kept.push_back(block);
        }
    }
    metadata.others = std::move(kept);
}

// libFLAC copies the metadata alone, into memory; the frames then move by the difference.
void writeFlacMetadata(int descriptor, const FlacMetadata& metadata, const std::string& name) {
    const Chain chain(orBadAlloc(FLAC__metadata_chain_new()));
    FileStart start = wholeFile(descriptor, std::numeric_limits<std::int64_t>::max());
    if (FLAC__metadata_chain_read_with_callbacks(chain.get(), &start, kReadFlac) == 0) {
        throwDamaged(name);
    }
    const std::int64_t oldBytes = metadataBytes(chain.get());
    replaceBlocks(chain.get(), metadata);
    start.position = 0;
    start.endBytes = oldBytes;
    std::string written;
    written.reserve(static_cast<std::size_t>(metadataBytes(chain.get())));
    if (FLAC__metadata_chain_write_with_callbacks_and_tempfile(chain.get(), false, &start, kReadFlac,
                                                               &written, kAppendFlac) == 0) {
        throwDamaged(name);
    }
    replaceRange(descriptor, 0, oldBytes, written, name);
}

} // namespace varno
