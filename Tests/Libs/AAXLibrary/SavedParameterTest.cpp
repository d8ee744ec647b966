#include "SavedParameter.h"
#include "AAX_CChunkDataParser.h"
#include "Tests/Support/FakeHostServices.h"
#include "Tests/Support/TestEffect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>
#include <vector>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A parameter with a value of every type.
class OfAllTypes : public FakeParameter {
public:
    OfAllTypes()
        : FakeParameter("P") {
        asFloat = 0.5F;
        asInt32 = 3;
        asBool = true;
        asDouble = 0.25;
        asString = "text";
    }
};

// What is saved for a parameter.
struct Saved {
    explicit Saved(const AAX_IParameter& parameter) {
        AAX_CChunkDataParser chunk;
        SaveParameter(parameter, chunk);
        isDouble = chunk.FindDouble("P", &number);
        isInt32 = chunk.FindInt32("P", &integer);
        isString = chunk.FindString("P", &text);
    }
    bool isDouble;
    bool isInt32;
    bool isString;
    double number = 0.0;
    std::int32_t integer = 0;
    AAX_CString text;
};

TEST(SavedParameter, IsOfTheFirstTypeThatAnswers) {
    OfAllTypes parameter;
    const Saved asFloat(parameter);
    EXPECT_TRUE(asFloat.isDouble);
    EXPECT_EQ(asFloat.number, 0.5);
    parameter.asFloat.reset();
    const Saved asInt32(parameter);
    EXPECT_TRUE(asInt32.isInt32);
    EXPECT_EQ(asInt32.integer, 3);
    parameter.asInt32.reset();
    const Saved asBool(parameter);
    EXPECT_TRUE(asBool.isInt32);
    EXPECT_EQ(asBool.integer, 1);
    parameter.asBool.reset();
    const Saved asDouble(parameter);
    EXPECT_TRUE(asDouble.isDouble);
    EXPECT_EQ(asDouble.number, 0.25);
    parameter.asDouble.reset();
    const Saved asString(parameter);
    EXPECT_TRUE(asString.isString);
    EXPECT_STREQ(asString.text.Get(), "text");
}

TEST(SavedParameter, WidensAFloatExactly) {
    FakeParameter parameter("P");
    parameter.asFloat = 0.07F;
    EXPECT_EQ(Saved(parameter).number, static_cast<double>(0.07F));
}

TEST(SavedParameter, IsNothingWithoutAValue) {
    AAX_CChunkDataParser chunk;
    FakeParameter parameter("P");
    SaveParameter(parameter, chunk);
    EXPECT_EQ(chunk.FindName("P"), -1);
    chunk.AddDouble("P", 1.0);
    RestoreParameter(parameter, chunk);
    EXPECT_THAT(parameter.sets, IsEmpty());
    EXPECT_TRUE(IsParameterAsSaved(parameter, chunk)) << "it never differs";
}

// The setters that restoring calls on a parameter.
template<class Prepare>
std::vector<std::string> restored(AAX_CChunkDataParser& chunk, Prepare&& prepare) {
    FakeParameter parameter("P");
    prepare(parameter);
    RestoreParameter(parameter, chunk);
    return parameter.sets;
}

void isFloat(FakeParameter& parameter) {
    parameter.asFloat = 0.5F;
}
void isInt32(FakeParameter& parameter) {
    parameter.asInt32 = 3;
}
void isBool(FakeParameter& parameter) {
    parameter.asBool = true;
}
void isDouble(FakeParameter& parameter) {
    parameter.asDouble = 0.5;
}
void isString(FakeParameter& parameter) {
    parameter.asString = "text";
}

TEST(SavedParameter, SetsAValueOfItsType) {
    AAX_CChunkDataParser number;
    number.AddDouble("P", 0.125);
    AAX_CChunkDataParser integer;
    integer.AddInt32("P", 2);
    AAX_CChunkDataParser text;
    text.AddString("P", AAX_CString("new"));

    EXPECT_THAT(restored(number, isFloat), ElementsAre("float 0.125"));
    EXPECT_THAT(restored(number, isDouble), ElementsAre("double 0.125"));
    EXPECT_THAT(restored(integer, isInt32), ElementsAre("int32 2"));
    EXPECT_THAT(restored(integer, isBool), ElementsAre("bool 1")) << "whatever is not 0";
    EXPECT_THAT(restored(text, isString), ElementsAre("string new"));

    EXPECT_THAT(restored(integer, isFloat), IsEmpty());
    EXPECT_THAT(restored(integer, isDouble), IsEmpty());
    EXPECT_THAT(restored(integer, isString), IsEmpty());
    EXPECT_THAT(restored(number, isInt32), IsEmpty());
    EXPECT_THAT(restored(number, isBool), IsEmpty());
    EXPECT_THAT(restored(text, isFloat), IsEmpty());
}

TEST(SavedParameter, SetsNothingThatIsNotThere) {
    AAX_CChunkDataParser chunk;
    chunk.AddDouble("Q", 0.125);
    EXPECT_THAT(restored(chunk, isFloat), IsEmpty());
    EXPECT_THAT(restored(chunk, isBool), IsEmpty());
}

TEST(SavedParameter, SetsTheFirstTypeThatAnswers) {
    AAX_CChunkDataParser chunk;
    chunk.AddDouble("P", 0.125);
    const auto isSeveral = [](FakeParameter& parameter) {
        isFloat(parameter);
        isDouble(parameter);
    };
    EXPECT_THAT(restored(chunk, isSeveral), ElementsAre("float 0.125"));
}

// Whether a parameter equals one saved number.
template<class Prepare>
bool isAsSaved(double saved, Prepare&& prepare) {
    FakeParameter parameter("P");
    prepare(parameter);
    AAX_CChunkDataParser chunk;
    chunk.AddDouble("P", saved);
    return IsParameterAsSaved(parameter, chunk);
}

TEST(SavedParameterComparison, OfAFloatIsExactInSinglePrecision) {
    EXPECT_TRUE(isAsSaved(0.5, isFloat));
    EXPECT_TRUE(isAsSaved(0.5 + 1e-12, isFloat)) << "the same when narrowed";
    EXPECT_FALSE(isAsSaved(std::nextafter(0.5F, 1.0F), isFloat));
    EXPECT_FALSE(isAsSaved(kNaN, isFloat));
    const auto isNaN = [](FakeParameter& parameter) { parameter.asFloat = kNaN; };
    EXPECT_FALSE(isAsSaved(kNaN, isNaN)) << "not even to itself";
    EXPECT_FALSE(isAsSaved(0.5, isNaN));
}

TEST(SavedParameterComparison, OfADoubleIsInSinglePrecisionToo) {
    EXPECT_TRUE(isAsSaved(0.5, isDouble));
    EXPECT_TRUE(isAsSaved(0.5 + 1e-12, isDouble));
    EXPECT_FALSE(isAsSaved(std::nextafter(0.5F, 1.0F), isDouble));
    EXPECT_FALSE(isAsSaved(kNaN, isDouble));
}

TEST(SavedParameterComparison, OfTheOthersIsExact) {
    AAX_CChunkDataParser chunk;
    FakeParameter parameter("P");
    isInt32(parameter);
    EXPECT_FALSE(IsParameterAsSaved(parameter, chunk)) << "nothing is saved";
    chunk.AddInt32("P", 3);
    EXPECT_TRUE(IsParameterAsSaved(parameter, chunk));
    parameter.asInt32 = 4;
    EXPECT_FALSE(IsParameterAsSaved(parameter, chunk));
    parameter.asInt32.reset();
    isBool(parameter);
    EXPECT_TRUE(IsParameterAsSaved(parameter, chunk)) << "3 is true";
    parameter.asBool = false;
    EXPECT_FALSE(IsParameterAsSaved(parameter, chunk));
    parameter.asBool.reset();
    isString(parameter);
    EXPECT_FALSE(IsParameterAsSaved(parameter, chunk)) << "an integer is no text";
    chunk.Clear();
    chunk.AddString("P", AAX_CString("text"));
    EXPECT_TRUE(IsParameterAsSaved(parameter, chunk));
    parameter.asString = "Text";
    EXPECT_FALSE(IsParameterAsSaved(parameter, chunk));
}

// Parameters of which one is missing.
struct Parameters {
    std::int32_t NumParameters() const { return 4; }
    AAX_IParameter* GetParameter(std::int32_t index) {
        AAX_IParameter* const parameters[] = {&a, nullptr, &b, &c};
        return parameters[index];
    }
    FakeParameter a{"A"};
    FakeParameter b{"B"};
    FakeParameter c{"C"};
};

TEST(VisitSavedParameters, SkipsWhatIsFilteredAndReportsWhatIsMissing) {
    const ListeningHost host;
    Parameters parameters;
    const std::set<std::string, std::less<>> filtered = {"B", "unknown"};
    std::vector<std::string> visited;
    EXPECT_TRUE(VisitSavedParameters(parameters, filtered, [&](const AAX_IParameter& parameter) {
        visited.emplace_back(parameter.Identifier());
        return true;
    }));
    EXPECT_THAT(visited, ElementsAre("A", "C"));
    ASSERT_EQ(host.assertions().size(), 1U);
    EXPECT_EQ(host.assertions()[0].note, "NULL != parameter");
}

TEST(VisitSavedParameters, StopsAtTheFirstFalse) {
    Parameters parameters;
    int visits = 0;
    EXPECT_FALSE(VisitSavedParameters(parameters, std::set<std::string, std::less<>>(),
                                      [&](const AAX_IParameter&) { return ++visits < 1; }));
    EXPECT_EQ(visits, 1);
}

} // namespace
} // namespace varno::test
