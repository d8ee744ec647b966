#ifndef VARNO_AUDIOFILE_TAGSTREAM_H
#define VARNO_AUDIOFILE_TAGSTREAM_H

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <taglib/taglib.h>
#include <taglib/tfile.h>
#include <taglib/tiostream.h>

namespace varno {

#if TAGLIB_MAJOR_VERSION >= 2
using TagStart = TagLib::offset_t;
#else
using TagStart = unsigned long; // NOLINT(google-runtime-int): as the functions that are overridden
#endif

/// Lets TagLib read and write an open file of the system without moving its position. Reading is limited:
/// beyond, the file seems to end. The first failed write is kept, since TagLib does not report them. One
/// thread at a time.
class TagStream final : public TagLib::IOStream {
public:
    /// @param descriptor open for reading and, where it is to be changed, for writing; stays the caller's
    /// @param mostBytes that may be read in all
    /// @param name of the file for messages
    TagStream(int descriptor, std::int64_t mostBytes, std::string name);

    /// Whether more than `mostBytes` were asked for.
    bool isOverLimit() const { return mIsOverLimit; }

    /// @throws FileError where a write has failed
    void throwIfFailed() const;

    TagLib::FileName name() const override { return mName.c_str(); }
    TagLib::ByteVector readBlock(std::size_t length) override;
    void writeBlock(const TagLib::ByteVector& data) override;
    void insert(const TagLib::ByteVector& data, TagStart start, std::size_t replace) override;
    void removeBlock(TagStart start, std::size_t length) override;
    bool readOnly() const override { return false; }
    bool isOpen() const override { return true; }
    void seek(std::int64_t offset, Position position) override;
    std::int64_t tell() const override { return mPosition; }
    std::int64_t length() override;
    void truncate(std::int64_t length) override;

private:
    template<class Write>
    void attempt(Write write);

    int mDescriptor;
    std::int64_t mLeftBytes;
    std::string mName;
    std::int64_t mPosition = 0;
    bool mIsOverLimit = false;
    std::exception_ptr mFailure;
};

/// A file of no format, with which TagLib reads single tags.
class PlainTagFile final : public TagLib::File {
public:
    explicit PlainTagFile(TagLib::IOStream* stream)
        : File(stream) {}

    TagLib::Tag* tag() const override { return nullptr; }
    TagLib::AudioProperties* audioProperties() const override { return nullptr; }
    bool save() override { return false; }
};

/// Keeps what builds of TagLib for its own developers note about damaged files off standard error. Once is
/// enough; any number of times and threads is allowed.
void silenceTagLib();

} // namespace varno

#endif
