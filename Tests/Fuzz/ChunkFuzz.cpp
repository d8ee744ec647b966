// Saved states: the host library's reader of records, the data model and the parser of chunks.
#include "AAX_CChunkDataParser.h"
#include "Host/HostError.h"
#include "Tests/Fuzz/FuzzInput.h"
#include "Tests/Fuzz/FuzzSubjects.h"
#include "Tests/Fuzz/FuzzedInstance.h"

#include <algorithm>
#include <cmath>

namespace varno::fuzz {
namespace {

// How the first byte of an input has the rest used.
enum class ChunkUse : unsigned char {
    kRecord,   ///< A whole record, header and all.
    kRestored, ///< The data area of a record that the effect has signed, for the host library.
    kSet,      ///< The same for the data model.
    kParsed,   ///< The same for the parser alone.
    kCount,
};

// A record without a byte behind its data area, so that the address sanitizer sees every access beyond it.
class ExactRecord {
public:
    ExactRecord(const StoredChunk& header, std::string_view data)
        : mBytes(new char[kAAX_PlugInChunkHeaderSize + data.size()]) {
        std::memcpy(mBytes.get(), header.record(), kAAX_PlugInChunkHeaderSize);
        std::copy(data.begin(), data.end(), mBytes.get() + kAAX_PlugInChunkHeaderSize);
        get()->fSize = static_cast<std::int32_t>(data.size());
    }
    AAX_SPlugInChunk* get() { return reinterpret_cast<AAX_SPlugInChunk*>(mBytes.get()); }

private:
    std::unique_ptr<char[]> mBytes;
};

class OpenParser : public AAX_CChunkDataParser {
public:
    const std::vector<DataValue>& values() const { return mDataValues; }

    // Those that are written.
    std::vector<DataValue> kept() const {
        std::vector<DataValue> kept;
        std::ranges::copy_if(mDataValues, std::back_inserter(kept),
                             [](const DataValue& value) { return value.mDataType != eNone; });
        return kept;
    }
};

bool isSameValue(const AAX_CChunkDataParser::DataValue& left, const AAX_CChunkDataParser::DataValue& right) {
    const bool isSameNumber =
        left.mNumber == right.mNumber || (std::isnan(left.mNumber) && std::isnan(right.mNumber));
    return left.mDataType == right.mDataType && left.mDataName == right.mDataName && isSameNumber &&
           left.mStringValue == right.mStringValue;
}

// What of the product a planted fault replaces.
struct ChunkCalls {
    std::function<void(Instance&, const StoredChunk&)> restore =
        [](Instance& instance, const StoredChunk& chunk) { instance.restore(chunk); };
    std::function<void(AAX_CChunkDataParser&, const AAX_SPlugInChunk*)> load =
        [](AAX_CChunkDataParser& parser, const AAX_SPlugInChunk* chunk) { parser.LoadChunk(chunk); };
    std::function<StoredChunk(std::span<const std::byte>)> read = StoredChunk::fromBytes;
};

class ChunkTarget : public FuzzTarget {
public:
    explicit ChunkTarget(ChunkCalls calls = {})
        : mCalls(std::move(calls)),
          mSaved(mEffect.get().save()) {}

    void run(std::string_view input) override {
        FuzzInput parts(input);
        switch (static_cast<ChunkUse>(parts.choose(static_cast<std::size_t>(ChunkUse::kCount)))) {
        case ChunkUse::kRecord:
            readRecord(parts.rest());
            break;
        case ChunkUse::kRestored:
            restore(StoredChunk::fromBytes(bytesOf(recordWith(parts.rest()))));
            break;
        case ChunkUse::kSet:
            set(parts.rest());
            break;
        default:
            parse(parts.rest());
            break;
        }
    }

private:
    // The bytes of a record of the effect with another data area, which gets the marker.
    std::string recordWith(std::string_view data) const {
        std::string bytes = textOf(mSaved.toBytes()).substr(0, kAAX_PlugInChunkHeaderSize);
        const auto size = static_cast<std::int32_t>(kMarker.size() + data.size());
        return bytes.replace(0, sizeof size, textOfNumber(size)).append(kMarker).append(data);
    }

    void readRecord(std::string_view bytes) {
        std::optional<StoredChunk> chunk;
        try {
            chunk = mCalls.read(bytesOf(bytes));
        } catch (const HostError&) {
            return;
        }
        require(textOf(chunk->toBytes()) == bytes, "a record has other bytes than it was read from");
        restore(*chunk);
    }

    void restore(const StoredChunk& chunk) {
        bool isAccepted = true;
        try {
            mCalls.restore(mEffect.get(), chunk);
        } catch (const HostError&) {
            isAccepted = false;
        }
        const auto values = mEffect.soundValues();
        require(isAccepted ? mEffect.get().equals(chunk) : values == mEffect.start(),
                isAccepted ? "an accepted state is not that of the instance"
                           : "a refused state has changed a value");
        if (isAccepted) {
            const StoredChunk again = mEffect.get().save();
            mEffect.restart(values);
            mEffect.get().restore(again);
            require(values == mEffect.values(), "a state does not come back exactly");
        }
        mEffect.restart(values);
    }

    void set(std::string_view data) {
        ExactRecord record(mSaved, data);
        mEffect.get().dataModel().SetChunk(mSaved.identity().chunkID, record.get());
        mEffect.get().idle();
        const auto values = mEffect.soundValues();
        std::uint8_t isEqual = 0;
        mEffect.get().dataModel().CompareActiveChunk(record.get(), &isEqual);
        require(isEqual <= 1, "a comparison is neither 0 nor 1");
        mEffect.restart(values);
    }

    // What was read is written, and read again, as the same.
    void parse(std::string_view data) {
        ExactRecord record(mSaved, data);
        OpenParser first;
        mCalls.load(first, record.get());
        const auto size = first.GetChunkDataSize();
        require(size >= static_cast<std::int32_t>(kMarker.size()), "the values that were read have no size");
        ExactRecord written(mSaved, std::string(static_cast<std::size_t>(size), '?'));
        require(first.GetChunkData(written.get()) == AAX_SUCCESS, "what was read cannot be written");
        OpenParser second;
        mCalls.load(second, written.get());
        const auto left = first.kept();
        const auto right = second.kept();
        require(std::ranges::equal(left, right, isSameValue), "values change when they are written and read");
        for (const auto& value : left) {
            require(first.FindName(value.mDataName) >= 0, "a value that was read is not found");
        }
    }

    static constexpr std::string_view kMarker = "\1\1\1\1";

    ChunkCalls mCalls;
    FuzzedInstance mEffect;
    StoredChunk mSaved;
};

// The data area of an instance's state, without the marker.
std::string dataOfState(double value) {
    FuzzedInstance effect;
    for (const ParameterInfo& parameter : effect.get().parameters()) {
        effect.get().setNormalized(parameter.id, value);
    }
    return textOf(effect.get().save().data()).substr(4);
}

std::vector<std::string> chunkSeeds() {
    using namespace std::string_literals;
    const auto use = [](ChunkUse kind) { return std::string(1, static_cast<char>(kind)); };
    const std::string marker = "\1\1\1\1";
    const std::string ofAllTypes = "f_a\0\x3F\x80\0\0l_b\0\0\0\0\1s_c\0\0\1\0\0d_d\0\x3F\xF0\0\0\0\0\0\0"
                                   "r_e\0text\0\0\0\0x_f\0"s;
    FuzzedInstance effect;
    return {use(ChunkUse::kRecord) + textOf(effect.get().save().toBytes()),
            use(ChunkUse::kRestored) + dataOfState(0.0),
            use(ChunkUse::kRestored) + dataOfState(1.0),
            use(ChunkUse::kRestored) + dataOfState(0.5).substr(0, 100),
            use(ChunkUse::kSet) + marker + dataOfState(0.75),
            use(ChunkUse::kSet) + marker + dataOfState(0.75).substr(0, 60),
            use(ChunkUse::kParsed) + marker + ofAllTypes,
            use(ChunkUse::kParsed) + marker + dataOfState(0.5)};
}

// The planted faults.

// Leaves what has arrived of a state that is refused.
void restoreWithoutReturn(Instance& instance, const StoredChunk& chunk) {
    instance.dataModel().SetChunk(chunk.identity().chunkID, chunk.record());
    instance.idle();
    if (!instance.equals(chunk)) {
        throw HostError("refused");
    }
}

// Takes a state for restored of which a value is missing.
void restoreWithoutComparison(Instance& instance, const StoredChunk& chunk) {
    instance.dataModel().SetChunk(chunk.identity().chunkID, chunk.record());
    instance.idle();
}

// Loses the last value.
void loadAllButTheLast(AAX_CChunkDataParser& parser, const AAX_SPlugInChunk* chunk) {
    const std::string_view data(reinterpret_cast<const char*>(chunk) + kAAX_PlugInChunkHeaderSize,
                                static_cast<std::size_t>(chunk->fSize));
    constexpr std::size_t kLostBytes = 4;
    std::string shorter(reinterpret_cast<const char*>(chunk), kAAX_PlugInChunkHeaderSize);
    shorter += data.substr(0, std::max(data.size(), kLostBytes) - kLostBytes);
    auto* const changed = reinterpret_cast<AAX_SPlugInChunk*>(shorter.data());
    changed->fSize = static_cast<std::int32_t>(shorter.size() - kAAX_PlugInChunkHeaderSize);
    parser.LoadChunk(changed);
}

// Takes a record for whole that has more bytes behind its data.
StoredChunk readTheBeginning(std::span<const std::byte> bytes) {
    std::int32_t size = 0;
    std::memcpy(&size, bytes.data(), std::min(bytes.size(), sizeof size));
    const auto whole = static_cast<std::size_t>(std::max(size, 0)) + kAAX_PlugInChunkHeaderSize;
    return StoredChunk::fromBytes(bytes.first(std::min(bytes.size(), whole)));
}

} // namespace

FuzzSubject chunkSubject() {
    return {
        "chunk",
        makerOf<ChunkTarget>(),
        chunkSeeds(),
        {{"a refused state leaves values behind", makerOf<ChunkTarget>(ChunkCalls{restoreWithoutReturn})},
         {"a state is accepted without a comparison",
          makerOf<ChunkTarget>(ChunkCalls{restoreWithoutComparison})},
         {"the last value is lost", makerOf<ChunkTarget>(ChunkCalls{.load = loadAllButTheLast})},
         {"bytes behind a record are ignored", makerOf<ChunkTarget>(ChunkCalls{.read = readTheBeginning})}},
        {"Host/StoredChunk.cpp", "Libs/AAXLibrary/source/AAX_CChunkDataParser.cpp",
         "Libs/AAXLibrary/source/AAX_CEffectParameters_Chunks.cpp"}};
}

} // namespace varno::fuzz
