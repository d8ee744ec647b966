#include "AAX_CChunkDataParser.h"

#include "AAX_CHostServices.h"
#include "BigEndian.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <exception>
#include <limits>
#include <stdexcept>
#include <string>
#include <utility>

namespace {

using DataValue = AAX_CChunkDataParser::DataValue;

constexpr char kMarker[] = {1, 1, 1, 1};
constexpr std::size_t kAlignment = 4;
constexpr std::size_t kTagLength = 2;        // Characters before an entry's name.
constexpr std::size_t kMaxEntryText = 255;   // Characters read of an entry's tag and name.
constexpr std::size_t kMostKeptValues = 256; // For which memory is kept, 24 KiB.

constexpr std::size_t RoundUp(std::size_t bytes) {
    return (bytes + kAlignment - 1) / kAlignment * kAlignment;
}

// Bytes of tag, name and terminator.
std::size_t EntryTextBytes(const DataValue& value) {
    return kTagLength + value.mDataName.Length() + 1;
}

// Bytes of a value that has a type, without padding.
std::size_t ValueBytes(const DataValue& value) {
    switch (value.mDataType) {
    case AAX_CChunkDataParser::eDouble:
        return sizeof(double);
    case AAX_CChunkDataParser::eInt16:
        return sizeof(int16_t);
    case AAX_CChunkDataParser::eString:
        return value.mStringValue.Length() + std::size_t{1};
    default:
        return sizeof(int32_t); // also that of a float
    }
}

// The tag of a value that has a type.
const char* Tag(AAX_CChunkDataParser::EDataType type) {
    constexpr const char* kTags[] = {"", "f_", "l_", "d_", "s_", "r_"};
    return kTags[type];
}

void WriteValue(const DataValue& value, char* bytes) {
    switch (value.mDataType) {
    case AAX_CChunkDataParser::eFloat:
        WriteBigEndian(std::bit_cast<uint32_t>(static_cast<float>(value.mNumber)), bytes);
        break;
    case AAX_CChunkDataParser::eInt32:
        WriteBigEndian(static_cast<uint32_t>(static_cast<int32_t>(value.mNumber)), bytes);
        break;
    case AAX_CChunkDataParser::eDouble:
        WriteBigEndian(std::bit_cast<uint64_t>(value.mNumber), bytes);
        break;
    case AAX_CChunkDataParser::eInt16:
        WriteBigEndian(static_cast<uint16_t>(static_cast<int16_t>(value.mNumber)), bytes);
        break;
    default: // a string
        std::memcpy(bytes, value.mStringValue.Get(), value.mStringValue.Length());
        break;
    }
}

// Writes one entry into a cleared data area of `size` bytes. Returns the position behind it.
std::size_t WriteEntry(const DataValue& value, char* data, std::size_t size, std::size_t position) {
    // Padding is left out on purpose: this check is for values that do not match the size at all.
    if (position + EntryTextBytes(value) + ValueBytes(value) > size) {
        throw std::logic_error("aborting: chunk data will overflow buffer");
    }
    std::memcpy(data + position, Tag(value.mDataType), kTagLength);
    std::memcpy(data + position + kTagLength, value.mDataName.Get(), value.mDataName.Length());
    position = RoundUp(position + EntryTextBytes(value));
    WriteValue(value, data + position);
    return position + RoundUp(ValueBytes(value));
}

// Reads a data area from front to back, never beyond its end.
class Reader {
public:
    Reader(const char* data, std::size_t size)
        : mData(data),
          mSize(size) {}

    // Reads the next entry. False at the end, and for an entry whose value is cut off by it.
    bool Next(DataValue* entry) {
        if (mPosition >= mSize) {
            return false;
        }
        const char* text = mData + mPosition;
        const std::size_t length = strnlen(text, std::min(mSize - mPosition, kMaxEntryText));
        mPosition = RoundUp(mPosition + length + 1);
        if (length > kTagLength) {
            entry->mDataName.Set(std::string(text + kTagLength, length - kTagLength).c_str());
        }
        return ReadValue(length > 0 ? text[0] : '\0', entry);
    }

private:
    bool ReadValue(char tag, DataValue* entry) {
        switch (tag) {
        case 'd':
            return ReadNumber<uint64_t, double>(AAX_CChunkDataParser::eDouble, entry);
        case 'f':
            return ReadNumber<uint32_t, float>(AAX_CChunkDataParser::eFloat, entry);
        case 'l':
            return ReadNumber<uint32_t, int32_t>(AAX_CChunkDataParser::eInt32, entry);
        case 's':
            return ReadNumber<uint16_t, int16_t>(AAX_CChunkDataParser::eInt16, entry);
        case 'r':
            return ReadString(entry);
        default:
            return true;
        }
    }

    template<class Bits, class Number>
    bool ReadNumber(AAX_CChunkDataParser::EDataType type, DataValue* entry) {
        if (Remaining() < sizeof(Bits)) {
            return false;
        }
        entry->mDataType = type;
        entry->mNumber = std::bit_cast<Number>(ReadBigEndian<Bits>(mData + mPosition));
        mPosition += RoundUp(sizeof(Bits));
        return true;
    }

    // Unlike the writer it does not round up behind a text: the padding there reads as an entry without tag
    // and name, which is never looked up, and leads to the next multiple of 4.
    bool ReadString(DataValue* entry) {
        const char* text = mData + mPosition;
        const std::size_t length = Remaining() > 0 ? strnlen(text, Remaining()) : 0;
        if (length == Remaining()) {
            return false;
        }
        entry->mDataType = AAX_CChunkDataParser::eString;
        entry->mStringValue.Set(text);
        mPosition += length + 1;
        return true;
    }

    std::size_t Remaining() const { return mPosition < mSize ? mSize - mPosition : 0; }

    const char* mData;
    std::size_t mSize;
    std::size_t mPosition = sizeof(kMarker);
};

} // namespace

void AAX_CChunkDataParser::Clear() {
    mLastFoundIndex = -1;
    mChunkVersion = -1;
    mDataValues.clear();
    if (mDataValues.capacity() > kMostKeptValues) {
        mDataValues.shrink_to_fit();
    }
}

AAX_CChunkDataParser::DataValue& AAX_CChunkDataParser::Add(EDataType type, const char* name) {
    DataValue& value = mDataValues.emplace_back();
    value.mDataName.Set(name);
    value.mDataType = type;
    return value;
}

void AAX_CChunkDataParser::AddDouble(const char* name, double value) {
    Add(eDouble, name).mNumber = value;
}

void AAX_CChunkDataParser::AddInt32(const char* name, int32_t value) {
    Add(eInt32, name).mNumber = static_cast<double>(value);
}

void AAX_CChunkDataParser::AddString(const char* name, const AAX_CString& value) {
    Add(eString, name).mStringValue = value;
}

bool AAX_CChunkDataParser::FindDouble(const char* name, double* outValue) {
    const DataValue* value = FindValue(name, eDouble);
    if (value != nullptr) {
        *outValue = value->mNumber;
    }
    return value != nullptr;
}

bool AAX_CChunkDataParser::FindInt32(const char* name, int32_t* outValue) {
    const DataValue* value = FindValue(name, eInt32);
    if (value != nullptr) {
        *outValue = static_cast<int32_t>(value->mNumber);
    }
    return value != nullptr;
}

bool AAX_CChunkDataParser::FindString(const char* name, AAX_CString* outValue) {
    const DataValue* value = FindValue(name, eString);
    if (value != nullptr) {
        *outValue = value->mStringValue;
    }
    return value != nullptr;
}

int32_t AAX_CChunkDataParser::FindName(const AAX_CString& name) {
    return FindIndex(name.Get());
}

int32_t AAX_CChunkDataParser::FindIndex(const char* name) {
    const auto count = static_cast<int32_t>(mDataValues.size());
    if (mLastFoundIndex < -1) {
        return -1;
    }
    const int32_t before = mLastFoundIndex < count ? mLastFoundIndex : -1;
    for (int32_t step = 1; step <= count; ++step) {
        const int32_t index = (before + step) % count;
        if (std::strcmp(mDataValues[static_cast<std::size_t>(index)].mDataName.Get(), name) == 0) {
            mLastFoundIndex = index;
            return index;
        }
    }
    return -1;
}

const AAX_CChunkDataParser::DataValue* AAX_CChunkDataParser::FindValue(const char* name, EDataType type) {
    const int32_t index = FindIndex(name);
    if (index < 0 || mDataValues[static_cast<std::size_t>(index)].mDataType != type) {
        return nullptr;
    }
    return &mDataValues[static_cast<std::size_t>(index)];
}

int32_t AAX_CChunkDataParser::GetChunkDataSize() const {
    std::size_t size = sizeof(kMarker);
    for (const DataValue& value : mDataValues) {
        if (value.mDataType != eNone) {
            size += RoundUp(EntryTextBytes(value)) + RoundUp(ValueBytes(value));
        }
    }
    return std::in_range<int32_t>(size) ? static_cast<int32_t>(size) : -1;
}

AAX_Result AAX_CChunkDataParser::GetChunkData(AAX_SPlugInChunk* chunk) const {
    try {
        const int32_t size = GetChunkDataSize();
        if (std::cmp_less(size, sizeof(kMarker))) {
            return kAAX_ChunkDataError;
        }
        char* data = reinterpret_cast<char*>(chunk) + kAAX_PlugInChunkHeaderSize;
        std::memset(data, 0, static_cast<std::size_t>(size));
        std::memcpy(data, kMarker, sizeof(kMarker));
        std::size_t position = sizeof(kMarker);
        for (const DataValue& value : mDataValues) {
            if (value.mDataType != eNone) {
                position = WriteEntry(value, data, static_cast<std::size_t>(size), position);
            }
        }
        chunk->fSize = size;
        return AAX_SUCCESS;
    } catch (const std::exception& error) {
        AAX_CHostServices::Trace(AAX_eTracePriorityHost_High, "AAX_CChunkDataParser::GetChunkData ERROR: %s",
                                 error.what());
        return kAAX_ChunkDataError;
    }
}

void AAX_CChunkDataParser::LoadChunk(const AAX_SPlugInChunk* chunk) {
    Clear();
    mChunkVersion = chunk->fVersion;
    const char* data = reinterpret_cast<const char*>(chunk) + kAAX_PlugInChunkHeaderSize;
    if (std::cmp_less_equal(chunk->fSize, sizeof(kMarker)) ||
        std::memcmp(data, kMarker, sizeof(kMarker)) != 0) {
        return;
    }
    Reader reader(data, static_cast<std::size_t>(chunk->fSize));
    while (reader.Next(&mDataValues.emplace_back())) {
    }
    mDataValues.pop_back(); // the entry for which no memory was left
}
