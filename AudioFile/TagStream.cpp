#include "AudioFile/TagStream.h"

#include "Files/Transfer.h"

#include <algorithm>
#include <string_view>
#include <sys/stat.h>
#include <taglib/tdebuglistener.h>
#include <unistd.h>
#include <utility>

namespace varno {

namespace {

std::string_view viewOf(const TagLib::ByteVector& data) {
    return {data.data(), data.size()};
}

class SilentListener final : public TagLib::DebugListener {
public:
    SilentListener() { TagLib::setDebugListener(this); }
    void printMessage(const TagLib::String& /*msg*/) override {}
};

} // namespace

TagStream::TagStream(int descriptor, std::int64_t mostBytes, std::string name)
    : mDescriptor(descriptor),
      mLeftBytes(mostBytes),
      mName(std::move(name)) {
}

void TagStream::throwIfFailed() const {
    if (mFailure) {
        std::rethrow_exception(mFailure);
    }
}

TagLib::ByteVector TagStream::readBlock(std::size_t length) {
    const std::int64_t inFile = std::max<std::int64_t>(this->length() - mPosition, 0);
    const auto wanted =
        static_cast<std::int64_t>(std::min<std::uint64_t>(length, static_cast<std::uint64_t>(inFile)));
    if (wanted > mLeftBytes) {
        mIsOverLimit = true;
        return {};
    }
    TagLib::ByteVector block(static_cast<unsigned>(wanted), '\0');
    if (wanted == 0 || !readAt(mDescriptor, mPosition, block.data(), block.size())) {
        return {};
    }
    mLeftBytes -= wanted;
    mPosition += wanted;
    return block;
}

template<class Write>
void TagStream::attempt(Write write) {
    if (mFailure) {
        return;
    }
    try {
        write();
    } catch (...) { // not through TagLib, whose objects would stay half changed
        mFailure = std::current_exception();
    }
}

void TagStream::writeBlock(const TagLib::ByteVector& data) {
    attempt([&] { writeAt(mDescriptor, mPosition, viewOf(data), mName); });
    mPosition += data.size();
}

void TagStream::insert(const TagLib::ByteVector& data, TagStart start, std::size_t replace) {
    const auto offset = static_cast<std::int64_t>(start);
    attempt(
        [&] { replaceRange(mDescriptor, offset, static_cast<std::int64_t>(replace), viewOf(data), mName); });
    mPosition = offset + data.size();
}

void TagStream::removeBlock(TagStart start, std::size_t length) {
    insert({}, start, length);
}

void TagStream::seek(std::int64_t offset, Position position) {
    if (position == Current) {
        offset += mPosition;
    } else if (position == End) {
        offset += length();
    }
    mPosition = std::max<std::int64_t>(offset, 0);
}

std::int64_t TagStream::length() {
    struct stat status {};
    return ::fstat(mDescriptor, &status) == 0 ? status.st_size : 0;
}

void TagStream::truncate(std::int64_t length) {
    if (length < this->length()) {
        removeBlock(static_cast<TagStart>(length), static_cast<std::size_t>(this->length() - length));
    }
}

void silenceTagLib() {
    static SilentListener listener;
}

} // namespace varno
