#include "AAX_CChunkDataParser.h"
#include "Tests/Support/FakeHostServices.h"
#include "Tests/Support/Properties.h"
#include "Tests/Support/TestEffect.h"
#include "Tests/Support/TestRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace varno::test {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;

// A parser whose values and cursor the test can see.
class Parser : public AAX_CChunkDataParser {
public:
    using AAX_CChunkDataParser::mDataValues;
    using AAX_CChunkDataParser::mLastFoundIndex;
};

// The data area that a parser writes.
std::string written(const AAX_CChunkDataParser& parser) {
    const std::int32_t size = parser.GetChunkDataSize();
    ChunkRecord record(static_cast<std::size_t>(size));
    record->fSize = -5;
    EXPECT_EQ(parser.GetChunkData(record.get()), AAX_SUCCESS);
    EXPECT_EQ(record->fSize, size);
    return record.data();
}

// What a parser reads from a data area, as text.
std::string read(const std::string& data) {
    Parser parser;
    ChunkRecord record(data);
    parser.LoadChunk(record.get());
    std::string text;
    for (const Parser::DataValue& value : parser.mDataValues) {
        text += std::to_string(value.mDataType) + " " + value.mDataName.Get() + "=";
        text += value.mDataType == Parser::eString ? value.mStringValue.Get() : std::to_string(value.mNumber);
        text += ";";
    }
    return text;
}

TEST(ChunkDataParser, WritesTheMarkerAloneWithoutValues) {
    EXPECT_EQ(AAX_CChunkDataParser().GetChunkDataSize(), 4);
    EXPECT_EQ(written(AAX_CChunkDataParser()), kChunkMarker);
}

TEST(ChunkDataParser, WritesADouble) {
    AAX_CChunkDataParser parser;
    parser.AddDouble("Gain", 0.5);
    EXPECT_EQ(written(parser), kChunkMarker + "d_Gain\0\0\x3F\xE0\0\0\0\0\0\0"s);
}

TEST(ChunkDataParser, WritesAnInt32) {
    AAX_CChunkDataParser parser;
    parser.AddInt32("N", -2);
    parser.AddInt32("Max", std::numeric_limits<std::int32_t>::max());
    EXPECT_EQ(written(parser), kChunkMarker + "l_N\0\xFF\xFF\xFF\xFEl_Max\0\0\0\x7F\xFF\xFF\xFF"s);
}

TEST(ChunkDataParser, WritesAStringAndPadsIt) {
    AAX_CChunkDataParser parser;
    parser.AddString("A", AAX_CString("abc"));
    parser.AddString("B", AAX_CString("abcd"));
    parser.AddString("C", AAX_CString(""));
    EXPECT_EQ(written(parser), kChunkMarker + "r_A\0abc\0r_B\0abcd\0\0\0\0r_C\0\0\0\0\0"s);
}

TEST(ChunkDataParser, PadsNamesOfEveryLength) {
    for (std::size_t length = 0; length <= 12; ++length) {
        AAX_CChunkDataParser parser;
        const std::string name(length, 'n');
        parser.AddInt32(name.c_str(), 1);
        std::string expected = kChunkMarker + "l_";
        expected += name;
        expected.resize((expected.size() + 1 + 3) / 4 * 4);
        EXPECT_EQ(written(parser), expected + "\0\0\0\1"s) << length;
    }
}

TEST(ChunkDataParser, ReadsEveryType) {
    EXPECT_EQ(read(kChunkMarker + "d_D\0\x3F\xE0\0\0\0\0\0\0"s), "3 D=0.500000;");
    EXPECT_EQ(read(kChunkMarker + "f_F\0\xBF\x80\0\0"s), "1 F=-1.000000;");
    EXPECT_EQ(read(kChunkMarker + "l_L\0\xFF\xFF\xFF\xFE"s), "2 L=-2.000000;");
    EXPECT_EQ(read(kChunkMarker + "s_S\0\xFF\xFE\x12\x34"s), "4 S=-2.000000;");
    EXPECT_EQ(read(kChunkMarker + "r_R\0abc\0"s), "5 R=abc;");
}

TEST(ChunkDataParser, WritesBackTheTypesThatOnlyReadingGives) {
    const std::string data = kChunkMarker + "f_F\0\xBF\x80\0\0s_Sh\0\0\0\0\x80\x01\0\0"s;
    AAX_CChunkDataParser parser;
    ChunkRecord record(data);
    parser.LoadChunk(record.get());
    EXPECT_EQ(written(parser), data);
}

TEST(ChunkDataParser, ReadsAnUnknownTagAsAnEntryWithoutValue) {
    EXPECT_EQ(read(kChunkMarker + "x_X\0l_L\0\0\0\0\7"s), "0 X=0.000000;2 L=7.000000;");
    EXPECT_EQ(read(kChunkMarker + "\0\0\0\0x\0\0\0xy\0\0"s), "0 =0.000000;0 =0.000000;0 =0.000000;");
}

TEST(ChunkDataParser, LeavesEntriesWithoutValueOutWhenWriting) {
    AAX_CChunkDataParser parser;
    ChunkRecord record(kChunkMarker + "x_X\0l_L\0\0\0\0\7"s);
    parser.LoadChunk(record.get());
    EXPECT_EQ(written(parser), kChunkMarker + "l_L\0\0\0\0\7"s);
}

TEST(ChunkDataParser, ReadsAnEmptyEntryOutOfThePaddingBehindAString) {
    // Deliberately, the reader does not round up after a string.
    EXPECT_EQ(read(kChunkMarker + "r_A\0abcd\0\0\0\0l_L\0\0\0\0\7"s), "5 A=abcd;0 =0.000000;2 L=7.000000;");
    EXPECT_EQ(read(kChunkMarker + "r_A\0abc\0l_L\0\0\0\0\7"s), "5 A=abc;2 L=7.000000;")
        << "no padding, no entry";
}

TEST(ChunkDataParser, ReadsTheNameOnlyUpTo255Characters) {
    const std::string text = "x_" + std::string(400, 'n');
    Parser parser;
    ChunkRecord record(kChunkMarker + text + "\0"s);
    parser.LoadChunk(record.get());
    ASSERT_GE(parser.mDataValues.size(), 1U);
    EXPECT_EQ(parser.mDataValues[0].mDataName.Get(), std::string(253, 'n'));
}

TEST(ChunkDataParser, ReadsTheNameOnlyUpToTheEndOfTheData) {
    for (const std::string& before : {""s, "l_L\0\0\0\0\7"s}) {
        Parser parser;
        ChunkRecord record(kChunkMarker + before + "x_Abcd\0\0"s);
        record->fSize = static_cast<std::int32_t>(kChunkMarker.size() + before.size() + 4);
        parser.LoadChunk(record.get());
        ASSERT_FALSE(parser.mDataValues.empty());
        EXPECT_STREQ(parser.mDataValues.back().mDataName.Get(), "Ab");
    }
}

TEST(ChunkDataParser, TakesTheVersionFromTheHeader) {
    AAX_CChunkDataParser parser;
    EXPECT_EQ(parser.GetChunkVersion(), -1);
    ChunkRecord record(std::string_view("no chunk"));
    record->fVersion = 42;
    parser.LoadChunk(record.get());
    EXPECT_EQ(parser.GetChunkVersion(), 42);
    parser.Clear();
    EXPECT_EQ(parser.GetChunkVersion(), -1);
}

TEST(ChunkDataParser, ReadsNothingWithoutMarkerOrRoom) {
    EXPECT_EQ(read("\1\1\1\2l_L\0\0\0\0\7"s), "");
    EXPECT_EQ(read("\1\1\1"s), "");
    EXPECT_EQ(read(kChunkMarker), "");
    EXPECT_EQ(read(""), "");
}

TEST(ChunkDataParser, ReadsNothingForASizeThatIsNone) {
    for (const std::int32_t size : {-1, std::numeric_limits<std::int32_t>::min(), 0, 4}) {
        Parser parser;
        parser.AddInt32("old", 1);
        ChunkRecord record(kChunkMarker + "l_L\0\0\0\0\7"s);
        record->fSize = size;
        parser.LoadChunk(record.get());
        EXPECT_TRUE(parser.mDataValues.empty()) << size;
    }
}

TEST(ChunkDataParser, SearchesFromTheFrontAfterLoading) {
    AAX_CChunkDataParser parser;
    ChunkRecord record(kChunkMarker + "l_L\0\0\0\0\1l_L\0\0\0\0\2l_L\0\0\0\0\3"s);
    for (int time = 0; time < 2; ++time) {
        parser.LoadChunk(record.get());
        for (const std::int32_t expected : {1, 2}) {
            std::int32_t value = 0;
            EXPECT_TRUE(parser.FindInt32("L", &value));
            EXPECT_EQ(value, expected);
        }
    }
}

TEST(ChunkDataParser, ReplacesItsValuesWhenLoading) {
    AAX_CChunkDataParser parser;
    parser.AddInt32("old", 1);
    ChunkRecord record(kChunkMarker + "l_L\0\0\0\0\7"s);
    parser.LoadChunk(record.get());
    std::int32_t value = 0;
    EXPECT_FALSE(parser.FindInt32("old", &value));
    EXPECT_TRUE(parser.FindInt32("L", &value));
    EXPECT_EQ(value, 7);
}

TEST(ChunkDataParserFind, SucceedsForTheVeryTypeOnly) {
    AAX_CChunkDataParser parser;
    ChunkRecord record(kChunkMarker +
                       "f_F\0\xBF\x80\0\0l_L\0\0\0\0\7d_D\0\x3F\xE0\0\0\0\0\0\0s_S\0\0\5\0\0r_R\0abc\0"s);
    parser.LoadChunk(record.get());
    for (const char* name : {"F", "L", "D", "S", "R", "none"}) {
        double number = 99.0;
        std::int32_t integer = 99;
        AAX_CString text("99");
        EXPECT_EQ(parser.FindDouble(name, &number), name == "D"s) << name;
        EXPECT_EQ(number, name == "D"s ? 0.5 : 99.0) << name;
        EXPECT_EQ(parser.FindInt32(name, &integer), name == "L"s) << name;
        EXPECT_EQ(integer, name == "L"s ? 7 : 99) << name;
        EXPECT_EQ(parser.FindString(name, &text), name == "R"s) << name;
        EXPECT_STREQ(text.Get(), name == "R"s ? "abc" : "99") << name;
    }
}

TEST(ChunkDataParserFind, GoesOnFromWhatWasFoundLast) {
    Parser parser;
    for (const char* name : {"A", "B", "A", "C"}) {
        parser.AddInt32(name, 0);
    }
    EXPECT_EQ(parser.FindName("A"), 0);
    EXPECT_EQ(parser.FindName("A"), 2) << "behind the one found last";
    EXPECT_EQ(parser.FindName("B"), 1) << "round the end";
    EXPECT_EQ(parser.FindName("none"), -1);
    EXPECT_EQ(parser.mLastFoundIndex, 1) << "a search without success leaves the cursor";
    EXPECT_EQ(parser.FindName("B"), 1) << "back to itself";
    EXPECT_EQ(parser.FindName("C"), 3);
    EXPECT_EQ(parser.FindName("A"), 0) << "from the start behind the last value";
}

TEST(ChunkDataParserFind, GoesOnFromTheLastValueAlsoWhereNoneWasFoundMeanwhile) {
    Parser parser;
    parser.AddInt32("A", 0);
    EXPECT_EQ(parser.FindName("A"), 0);
    EXPECT_EQ(parser.FindName("none"), -1);
    parser.AddInt32("A", 1);
    EXPECT_EQ(parser.FindName("A"), 1);
}

TEST(ChunkDataParserFind, StartsAgainForACursorPastTheEnd) {
    Parser parser;
    parser.AddInt32("A", 0);
    parser.AddInt32("A", 1);
    parser.mLastFoundIndex = 50;
    EXPECT_EQ(parser.FindName("A"), 0);
}

TEST(ChunkDataParserFind, FindsNothingForACursorBelowTheStart) {
    Parser parser;
    parser.AddInt32("A", 0);
    parser.mLastFoundIndex = -2;
    EXPECT_EQ(parser.FindName("A"), -1);
    parser.Clear();
    parser.AddInt32("A", 0);
    EXPECT_EQ(parser.FindName("A"), 0);
}

TEST(ChunkDataParserFind, FindsNothingInNothing) {
    AAX_CChunkDataParser parser;
    EXPECT_EQ(parser.FindName("A"), -1);
}

// Reports another number of bytes than it needs.
class MistakenParser : public AAX_CChunkDataParser {
public:
    explicit MistakenParser(std::int32_t size)
        : mSize(size) {}
    std::int32_t GetChunkDataSize() const override { return mSize; }

private:
    std::int32_t mSize;
};

TEST(ChunkDataParserFailure, OfASizeBelowTheMarkerTouchesNothing) {
    const ListeningHost host;
    for (const std::int32_t size : {-1, 0, 3}) {
        const MistakenParser parser(size);
        ChunkRecord record(std::size_t{8});
        const std::string before = record.data();
        EXPECT_EQ(parser.GetChunkData(record.get()), -333) << size;
        EXPECT_EQ(record.data(), before);
        EXPECT_EQ(record->fSize, 8);
    }
    EXPECT_TRUE(host.lines().empty());
}

TEST(ChunkDataParserFailure, OfASizeTooSmallIsTraced) {
    const ListeningHost host;
    MistakenParser parser(16);
    parser.AddInt32("A", 1);
    parser.AddDouble("B", 1.0);
    ChunkRecord record(std::size_t{16});
    record->fSize = 99;
    EXPECT_EQ(parser.GetChunkData(record.get()), kAAX_ChunkDataError);
    EXPECT_EQ(record->fSize, 99);
    EXPECT_THAT(host.lines(),
                ElementsAre(FakeHostServices::Line{
                    0x8000000, "AAX_CChunkDataParser::GetChunkData ERROR: aborting: chunk data will "
                               "overflow buffer"}));
}

TEST(ChunkDataParserFailure, DoesNotComeOfASizeThatIsLarger) {
    MistakenParser parser(24);
    parser.AddInt32("A", 1);
    EXPECT_EQ(written(parser), kChunkMarker + "l_A\0\0\0\0\1"s + std::string(12, '\0'));
}

#if VARNO_HAS_PROPERTIES
// One random value under a name.
struct NamedValue {
    std::string name;
    int kind;
    double number;
    std::int32_t integer;
    std::string text;
};

std::vector<NamedValue> arbitraryValues() {
    const auto character = rc::gen::inRange('!', '~');
    const auto names = *rc::gen::unique<std::vector<std::string>>(rc::gen::nonEmpty(
        rc::gen::resize(40, rc::gen::container<std::string>(rc::gen::cast<char>(character)))));
    std::vector<NamedValue> values;
    for (const std::string& name : names) {
        values.push_back({name, *rc::gen::inRange(0, 3),
                          std::bit_cast<double>(*rc::gen::arbitrary<std::uint64_t>()),
                          *rc::gen::arbitrary<std::int32_t>(),
                          *rc::gen::container<std::string>(rc::gen::cast<char>(rc::gen::inRange('!', '~')))});
    }
    return values;
}

void fill(AAX_CChunkDataParser& parser, const std::vector<NamedValue>& values) {
    for (const NamedValue& value : values) {
        switch (value.kind) {
        case 0:
            parser.AddDouble(value.name.c_str(), value.number);
            break;
        case 1:
            parser.AddInt32(value.name.c_str(), value.integer);
            break;
        default:
            parser.AddString(value.name.c_str(), AAX_CString(value.text.c_str()));
            break;
        }
    }
}

RC_GTEST_PROP(ChunkDataParserProperty, ReadsWhatItWrites, ()) {
    const std::vector<NamedValue> values = arbitraryValues();
    AAX_CChunkDataParser writer;
    fill(writer, values);
    AAX_CChunkDataParser reader;
    ChunkRecord record(written(writer));
    RC_ASSERT(record->fSize % 4 == 0);
    reader.LoadChunk(record.get());
    for (const NamedValue& value : values) {
        double number = 0.0;
        std::int32_t integer = 0;
        AAX_CString text;
        RC_ASSERT(reader.FindDouble(value.name.c_str(), &number) == (value.kind == 0));
        RC_ASSERT(reader.FindInt32(value.name.c_str(), &integer) == (value.kind == 1));
        RC_ASSERT(reader.FindString(value.name.c_str(), &text) == (value.kind == 2));
        if (value.kind == 0) {
            RC_ASSERT(std::bit_cast<std::uint64_t>(number) == std::bit_cast<std::uint64_t>(value.number));
        }
        RC_ASSERT(value.kind != 1 || integer == value.integer);
        RC_ASSERT(value.kind != 2 || text.Get() == value.text);
    }
    // Empty entries read from the padding are not written again, so the data does not grow.
    RC_ASSERT(written(reader) == written(writer));
}

RC_GTEST_PROP(ChunkDataParserProperty, ReadsAnyBytesWithinTheirBounds, (std::vector<char> bytes)) {
    std::string data = kChunkMarker + std::string(bytes.begin(), bytes.end());
    for (std::size_t i = kChunkMarker.size(); i < data.size(); ++i) { // sometimes a tag
        data[i] = *rc::gen::arbitrary<bool>() ? data[i] : *rc::gen::elementOf("dflsr_"s);
    }
    Parser parser;
    ChunkRecord record(data);
    parser.LoadChunk(record.get());
    RC_ASSERT(parser.mDataValues.size() <= data.size() / 2);
    ChunkRecord again(written(parser));
    parser.LoadChunk(again.get());
}
#endif

// A chunk with every type.
std::string sampleData() {
    return kChunkMarker +
           "d_Gain\0\0\x3F\xE0\0\0\0\0\0\0f_F\0\xBF\x80\0\0l_L\0\0\0\0\7s_S\0\0\5\0\0r_Text\0\0abcd\0\0\0\0"
           "d_Hot\0\0\0\x3F\xD0\0\0\0\0\0\0"s;
}

TEST(ChunkDataParserDamage, LosesOnlyWhatLiesBehindATruncation) {
    // The ends of the entries in sampleData.
    const std::vector<std::pair<std::size_t, const char*>> entries = {
        {20, "3 Gain=0.500000;"}, {28, "1 F=-1.000000;"}, {36, "2 L=7.000000;"},  {42, "4 S=5.000000;"},
        {57, "5 Text=abcd;"},     {58, "0 =0.000000;"},   {76, "3 Hot=0.250000;"}};
    const std::string data = sampleData();
    ASSERT_EQ(data.size(), 76U);
    for (std::size_t size = 0; size <= data.size(); ++size) {
        std::string expected;
        for (const auto& [end, text] : entries) {
            expected += size >= end ? text : "";
        }
        EXPECT_EQ(read(data.substr(0, size)), expected) << "cut to " << size << " bytes";
    }
}

TEST(ChunkDataParserDamage, OfOneBitStaysWithinBounds) {
    const std::string data = sampleData();
    for (std::size_t bit = 0; bit < data.size() * 8; ++bit) {
        std::string damaged = data;
        damaged[bit / 8] = static_cast<char>(damaged[bit / 8] ^ (1 << (bit % 8)));
        Parser parser;
        ChunkRecord record(damaged);
        parser.LoadChunk(record.get());
        EXPECT_LE(parser.mDataValues.size(), data.size() / 2);
        written(parser);
    }
}

TEST(ChunkDataParserDamage, CannotMakeATextRunOn) {
    EXPECT_EQ(read(kChunkMarker + "r_A\0abc"s), "") << "a text without its end";
    EXPECT_EQ(read(kChunkMarker + "r_A\0"s), "") << "no text at all";
    EXPECT_EQ(read(kChunkMarker + "l_A"s), "") << "a name without its end";
}

} // namespace
} // namespace varno::test
