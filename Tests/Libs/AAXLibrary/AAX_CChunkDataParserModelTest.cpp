// Two chunk parsers in any sequence of operations, against a list of values.
#include "AAX_CChunkDataParser.h"
#include "Tests/Support/ModelCheck.h"
#include "Tests/Support/TestEffect.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cstdint>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {
namespace {

#if VARNO_HAS_PROPERTIES
constexpr std::array kNames = {"Gain", "Gai", "Mix", "a name of more than thirty-one characters", "x"};
constexpr const char* kAbsent = "absent";

// A value with its bits, as text: "d3FF0000000000000", "l-5", "rtext".
std::string valueOf(double number) {
    std::ostringstream text;
    text << 'd' << std::hex << std::bit_cast<std::uint64_t>(number);
    return text.str();
}
std::string valueOf(std::int32_t number) {
    return 'l' + std::to_string(number);
}
std::string valueOf(const std::string& text) {
    return 'r' + text;
}

// Names and values. One is looked for behind the place of the one that was found last, then from the start.
class ListModel {
public:
    template<class Value>
    std::string add(const std::string& name, const Value& value) {
        mEntries.push_back({name, valueOf(value)});
        return size();
    }
    std::string find(const std::string& name, char type) {
        const std::size_t index = look(name);
        return index < mEntries.size() && mEntries[index].value.front() == type ? mEntries[index].value
                                                                                : kAbsent;
    }
    std::string findName(const std::string& name) {
        const std::size_t index = look(name);
        return index < mEntries.size() ? mEntries[index].value : kAbsent;
    }
    std::string clear() {
        *this = ListModel();
        return size();
    }
    std::string reload(std::int32_t version) {
        mNext = 0;
        mVersion = version;
        return size();
    }

private:
    struct Entry {
        std::string name;
        std::string value;
    };

    std::size_t look(const std::string& name) {
        const std::size_t first = mNext < mEntries.size() ? mNext : 0;
        for (std::size_t i = 0; i < mEntries.size(); ++i) {
            const std::size_t index = (first + i) % mEntries.size();
            if (mEntries[index].name == name) {
                mNext = index + 1;
                return index;
            }
        }
        return mEntries.size();
    }
    // Bytes: the marker, then tag, name, zero and value, each rounded up to 4; and the version.
    std::string size() const {
        std::size_t bytes = 4;
        for (const Entry& entry : mEntries) {
            const char type = entry.value.front();
            const std::size_t value = type == 'd' ? 8 : type == 'l' ? 4 : entry.value.size();
            bytes += (2 + entry.name.size() + 1 + 3) / 4 * 4 + (value + 3) / 4 * 4;
        }
        return std::to_string(bytes) + " version " + std::to_string(mVersion);
    }

    std::vector<Entry> mEntries;
    std::size_t mNext = 0; // to look at, if there is one
    std::int32_t mVersion = -1;
};

// A parser; of a saved chunk another one takes the values over.
class ParserPair {
public:
    std::string add(const std::string& name, double value) {
        mParser.AddDouble(name.c_str(), value);
        return size();
    }
    std::string add(const std::string& name, std::int32_t value) {
        mParser.AddInt32(name.c_str(), value);
        return size();
    }
    std::string add(const std::string& name, const std::string& value) {
        mParser.AddString(name.c_str(), value.c_str());
        return size();
    }
    std::string find(const std::string& name, char type) {
        double number = 0.0;
        std::int32_t integer = 0;
        AAX_CString text;
        switch (type) {
        case 'd':
            return mParser.FindDouble(name.c_str(), &number) ? valueOf(number) : kAbsent;
        case 'l':
            return mParser.FindInt32(name.c_str(), &integer) ? valueOf(integer) : kAbsent;
        default:
            return mParser.FindString(name.c_str(), &text) ? valueOf(std::string(text.Get())) : kAbsent;
        }
    }
    std::string findName(const std::string& name) {
        const std::int32_t index = mParser.FindName(name.c_str());
        return index < 0 ? kAbsent : mParser.valueAt(static_cast<std::size_t>(index));
    }
    std::string clear() {
        mParser.Clear();
        return size();
    }
    std::string reload(std::int32_t version) {
        ChunkRecord record(static_cast<std::size_t>(mParser.GetChunkDataSize()));
        if (mParser.GetChunkData(record.get()) != AAX_SUCCESS) {
            return "not saved";
        }
        record->fVersion = version;
        mOther.LoadChunk(record.get());
        std::swap(mParser, mOther);
        return size();
    }

protected:
    class OpenParser : public AAX_CChunkDataParser {
    public:
        std::string valueAt(std::size_t index) const {
            const DataValue& value = mDataValues[index];
            switch (value.mDataType) {
            case eDouble:
                return valueOf(value.mNumber);
            case eInt32:
                return valueOf(static_cast<std::int32_t>(value.mNumber));
            default:
                return valueOf(std::string(value.mStringValue.Get()));
            }
        }
    };

    std::string size() const {
        return std::to_string(mParser.GetChunkDataSize()) + " version " +
               std::to_string(mParser.GetChunkVersion());
    }

    OpenParser mParser;
    OpenParser mOther;
};

// A name that is there already is not added once more.
class UniquePair : public ParserPair {
public:
    template<class Value>
    std::string add(const std::string& name, const Value& value) {
        return mParser.FindName(name.c_str()) < 0 ? ParserPair::add(name, value) : size();
    }
};

// Numbers lose what a float does not hold.
class SinglePair : public ParserPair {
public:
    using ParserPair::add;
    std::string add(const std::string& name, double value) {
        return ParserPair::add(name, static_cast<double>(static_cast<float>(value)));
    }
};

// What is looked for in a chunk that was loaded is not looked for from its start.
class RestlessPair : public ParserPair {
public:
    std::string reload(std::int32_t version) {
        const std::string text = ParserPair::reload(version);
        mParser.FindName("Gain");
        return text;
    }
};

template<class Pair>
typename ModelCheck<ListModel, Pair>::Operation anyChunkOperation() {
    using Check = ModelCheck<ListModel, Pair>;
    const std::string name = *rc::gen::elementOf(kNames);
    switch (*rc::gen::inRange(0, 14)) {
    case 0: {
        const auto value = *rc::gen::element(0.0, -0.0, 0.1, 1e308, -1.0 / 3.0);
        return Check::operation("add " + name + " double", [=](auto& it) { return it.add(name, value); });
    }
    case 1: {
        const auto value = *rc::gen::arbitrary<std::int32_t>();
        return Check::operation("add " + name + " int32", [=](auto& it) { return it.add(name, value); });
    }
    case 2: {
        const auto value = *rc::gen::element<std::string>("", "a", "abc", "abcd", "d_x", "a longer text");
        return Check::operation("add " + name + " \"" + value + '"',
                                [=](auto& it) { return it.add(name, value); });
    }
    case 3:
        return *rc::gen::inRange(0, 10) == 0
                   ? Check::operation("clear", [](auto& it) { return it.clear(); })
                   : Check::operation("name " + name, [=](auto& it) { return it.findName(name); });
    case 4: {
        const auto version = *rc::gen::inRange<std::int32_t>(0, 5);
        return Check::operation("reload", [=](auto& it) { return it.reload(version); });
    }
    default: {
        const char type = *rc::gen::element('d', 'l', 'r');
        return Check::operation("find " + name + ' ' + type, [=](auto& it) { return it.find(name, type); });
    }
    }
}

template<class Pair>
ModelCheck<ListModel, Pair> chunkCheck(int cases) {
    return {.draw = anyChunkOperation<Pair>, .cases = cases};
}

TEST(ChunkDataParserModelTest, valuesAreFoundSavedAndLoadedAsInAList) {
    expectHolds(chunkCheck<ParserPair>(40 * testScale()), std::int64_t{6000} * testScale());
}

TEST(ChunkDataParserModelTest, rejectsParsersThatMergeRoundOrStartElsewhere) {
    expectRejects(chunkCheck<UniquePair>(40), "names are unique");
    expectRejects(chunkCheck<SinglePair>(40), "doubles are rounded to singles");
    expectRejects(chunkCheck<RestlessPair>(40), "a loaded chunk is not looked through from its start");
}
#endif

} // namespace
} // namespace varno::test
