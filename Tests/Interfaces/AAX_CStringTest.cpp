#include "AAX_CString.h"
#include "Tests/Support/CommaLocale.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/LocaleScope.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace varno {
namespace {

// A host's own string, read and written only through the interface.
class ForeignString : public AAX_IString {
public:
    explicit ForeignString(std::string text = {})
        : mText(std::move(text)) {}
    std::uint32_t Length() const override { return static_cast<std::uint32_t>(mText.size()); }
    std::uint32_t MaxLength() const override { return 255; }
    const char* Get() const override { return mText.c_str(); }
    void Set(const char* text) override { mText = text; }
    AAX_IString& operator=(const AAX_IString& other) override {
        mText = other.Get();
        return *this;
    }
    AAX_IString& operator=(const char* text) override {
        mText = text;
        return *this;
    }

private:
    std::string mText;
};

TEST(AAX_CStringTest, EmptyByDefaultAndFromNull) {
    const AAX_CString empty;
    EXPECT_EQ(empty.Length(), 0U);
    EXPECT_STREQ(empty.Get(), "");
    const AAX_CString fromNull(static_cast<const char*>(nullptr));
    EXPECT_EQ(fromNull.Length(), 0U);
    EXPECT_STREQ(fromNull.Get(), "");
}

TEST(AAX_CStringTest, ConstructorsCopyTheText) {
    AAX_CString text("abc");
    const AAX_CString copy(text);
    const ForeignString foreign("host");
    const AAX_CString fromForeign(foreign);
    text.Set("changed");
    EXPECT_STREQ(copy.Get(), "abc");
    EXPECT_EQ(copy.Length(), 3U);
    EXPECT_STREQ(fromForeign.Get(), "host");
}

TEST(AAX_CStringTest, MaxLengthIsFixed) {
    EXPECT_EQ(AAX_CString().MaxLength(), 4294967294U);
    EXPECT_EQ(AAX_CString(std::string(10000, 'x').c_str()).MaxLength(), 4294967294U);
}

TEST(AAX_CStringTest, AssignmentsReplaceTheText) {
    AAX_CString text("before");
    text.Set("set");
    EXPECT_STREQ(text.Get(), "set");
    text = "characters";
    EXPECT_STREQ(text.Get(), "characters");
    text = static_cast<const AAX_IString&>(ForeignString("foreign"));
    EXPECT_STREQ(text.Get(), "foreign");
    const AAX_CString other("own");
    text = other;
    EXPECT_STREQ(text.Get(), "own");
    EXPECT_STREQ(other.Get(), "own");
}

TEST(AAX_CStringTest, CopiesOfItsOwnKindKeepWhatFollowsAZero) {
    AAX_CString text("abc");
    text[1] = '\0';
    const AAX_CString copied(text);
    AAX_CString assigned("before");
    assigned = text;
    for (AAX_CString copy : {copied, assigned}) {
        ASSERT_EQ(copy.Length(), 3U);
        EXPECT_EQ(copy[2], 'c');
    }
}

TEST(AAX_CStringTest, CopiesThroughTheInterfaceEndAtAZero) {
    AAX_CString text("abc");
    text[1] = '\0';
    const AAX_IString& foreign = text;
    AAX_CString assigned("before");
    assigned = foreign;
    EXPECT_EQ(assigned.Length(), 1U);
    EXPECT_EQ(AAX_CString(foreign).Length(), 1U);
}

TEST(AAX_CStringTest, AssignmentsWorkThroughTheInterface) {
    AAX_CString text("before");
    AAX_IString& interface = text;
    interface = "characters";
    EXPECT_STREQ(text.Get(), "characters");
    interface = static_cast<const AAX_IString&>(ForeignString("foreign"));
    EXPECT_STREQ(text.Get(), "foreign");
    EXPECT_EQ(interface.Length(), 7U);
}

TEST(AAX_CStringTest, AssigningItsOwnTextKeepsIt) {
    AAX_CString text("a text that is too long for any small-string storage");
    text = text.Get();
    EXPECT_STREQ(text.Get(), "a text that is too long for any small-string storage");
    text = text.Get() + 7;
    EXPECT_STREQ(text.Get(), "that is too long for any small-string storage");
}

TEST(AAX_CStringTest, MoveAssignmentExchangesTheTexts) {
    AAX_CString a("x");
    AAX_CString b("y");
    a = std::move(b);
    EXPECT_STREQ(a.Get(), "y");
    EXPECT_STREQ(b.Get(), "x"); // NOLINT(bugprone-use-after-move): the exchange is specified
}

TEST(AAX_CStringTest, CStringIsGet) {
    const AAX_CString text("abc");
    EXPECT_EQ(text.CString(), text.Get());
}

TEST(AAX_CStringTest, ClearEmpties) {
    AAX_CString text("a text that is too long for any small-string storage");
    const char* storage = text.Get();
    text.Clear();
    EXPECT_EQ(text.Length(), 0U);
    EXPECT_STREQ(text.Get(), "");
    EXPECT_EQ(text.Get(), storage);
}

TEST(AAX_CStringTest, EraseHasItsOwnCount) {
    struct Case {
        std::uint32_t pos;
        std::uint32_t n;
        const char* left;
    };
    // 6 characters: where fewer than n are left, n minus that number are erased.
    for (const Case& c : {Case{2, 2, "abef"}, Case{2, 5, "abdef"}, Case{2, 10, "ab"}, Case{2, 4, "ab"},
                          Case{0, 6, ""}, Case{0, 7, "bcdef"}, Case{6, 0, "abcdef"}, Case{6, 3, "abcdef"},
                          Case{5, 1, "abcde"}, Case{3, 0, "abcdef"}}) {
        AAX_CString text("abcdef");
        text.Erase(c.pos, c.n);
        EXPECT_STREQ(text.Get(), c.left) << c.pos << ", " << c.n;
    }
}

TEST(AAX_CStringTest, EraseBeyondTheEndRaisesAndKeepsTheText) {
    AAX_CString text("abcdef");
    EXPECT_THROW(text.Erase(7, 1), std::out_of_range);
    EXPECT_THROW(text.Erase(0xFFFFFFFF, 0xFFFFFFFF), std::out_of_range);
    EXPECT_STREQ(text.Get(), "abcdef");
}

TEST(AAX_CStringTest, AppendNumberIsFixedWithItsDigits) {
    struct Case {
        double number;
        std::int32_t precision;
        const char* text;
    };
    for (const Case& c :
         {Case{3.0, 0, "v3"}, Case{1.5, 2, "v1.50"}, Case{-0.125, 3, "v-0.125"}, Case{1e6, 1, "v1000000.0"},
          Case{1e-7, 2, "v0.00"}, Case{2.5, 0, "v2"}, Case{0.1, 20, "v0.10000000000000000555"},
          Case{-0.0, 1, "v-0.0"}, Case{std::numeric_limits<double>::infinity(), 2, "vinf"},
          Case{-std::numeric_limits<double>::infinity(), 2000, "v-inf"}}) {
        AAX_CString text("v");
        text.AppendNumber(c.number, c.precision);
        EXPECT_STREQ(text.Get(), c.text);
    }
}

TEST(AAX_CStringTest, AppendNumberHoldsTheLargestDouble) {
    AAX_CString text;
    text.AppendNumber(std::numeric_limits<double>::max(), 0);
    EXPECT_EQ(text.Length(), 309U);
}

TEST(AAX_CStringTest, AppendNumberHasAllDigitsAskedForAndZerosBehindThoseOfTheNumber) {
    constexpr std::uint32_t kDecimalsOfTheSmallest = 1074;
    AAX_CString text;
    text.AppendNumber(std::numeric_limits<double>::denorm_min(), 1100);
    const std::string_view decimals = text.Get() + std::strlen("0.");
    EXPECT_EQ(decimals.size(), 1100U);
    EXPECT_EQ(decimals.substr(kDecimalsOfTheSmallest - 3, 6), "625000");
    text.Clear();
    text.AppendNumber(-std::numeric_limits<double>::max(), 1100);
    EXPECT_EQ(text.Length(), std::strlen("-.") + 309 + 1100);
}

TEST(AAX_CStringTest, ToDoubleReadsTheNumberAtTheStart) {
    struct Case {
        const char* text;
        double number;
    };
    for (const Case& c : {Case{"  2.5abc", 2.5}, Case{"\t\n-3", -3.0}, Case{"1e3", 1000.0}, Case{"+.5", 0.5},
                          Case{"7,5", 7.0}, Case{"1 2", 1.0}, Case{"0", 0.0}, Case{"1e-400", 0.0}}) {
        double number = 99.0;
        EXPECT_TRUE(AAX_CString(c.text).ToDouble(&number)) << c.text;
        EXPECT_EQ(number, c.number) << c.text;
    }
}

TEST(AAX_CStringTest, ToDoubleRefusesWhatIsNoNumber) {
    for (const char* text : {"", "abc", "   ", "-", ".", "e5", "nan", "inf", "1e", "1e999", "-1e999"}) {
        double number = 99.0;
        EXPECT_FALSE(AAX_CString(text).ToDouble(&number)) << text;
        EXPECT_EQ(number, 0.0) << text;
    }
}

TEST(AAX_CStringTest, NumbersDoNotDependOnTheLocale) {
    const test::CommaLocale comma;
    AAX_CString text;
    text.AppendNumber(12345.5, 2);
    EXPECT_STREQ(text.Get(), "12345.50");
    double number = 0.0;
    EXPECT_TRUE(text.ToDouble(&number));
    EXPECT_EQ(number, 12345.5);
}

TEST(AAX_CStringTest, NumbersDoNotDependOnTheLocaleOfTheCLibrary) {
    const test::LocaleScope german("de_DE");
    ASSERT_EQ(german.decimalPoint(), ",");
    AAX_CString text;
    text.AppendNumber(0.25, 2);
    EXPECT_STREQ(text.Get(), "0.25");
    double number = 0.0;
    EXPECT_TRUE(text.ToDouble(&number));
    EXPECT_EQ(number, 0.25);
}

TEST(AAX_CStringTest, SubStringTakesWhatThereIs) {
    const AAX_CString text("abcdef");
    ForeignString out("before");
    text.SubString(2, 3, &out);
    EXPECT_STREQ(out.Get(), "cde");
    text.SubString(4, 10, &out);
    EXPECT_STREQ(out.Get(), "ef");
    text.SubString(6, 1, &out);
    EXPECT_STREQ(out.Get(), "");
    text.SubString(0, 0xFFFFFFFF, &out);
    EXPECT_STREQ(out.Get(), "abcdef");
}

TEST(AAX_CStringTest, SubStringBeyondTheEndRaises) {
    const AAX_CString text("abcdef");
    ForeignString out("before");
    EXPECT_THROW(text.SubString(7, 1, &out), std::out_of_range);
    EXPECT_STREQ(out.Get(), "before");
}

TEST(AAX_CStringTest, SubStringMayReplaceItsSource) {
    AAX_CString text("abcdef");
    text.SubString(1, 2, &text);
    EXPECT_STREQ(text.Get(), "bc");
}

TEST(AAX_CStringTest, ComparesBytesUpToTheFirstZero) {
    EXPECT_TRUE(AAX_CString("abc") == AAX_CString("abc"));
    EXPECT_TRUE(AAX_CString("abc") != AAX_CString("abd"));
    EXPECT_FALSE(AAX_CString("abc") != AAX_CString("abc"));
    EXPECT_FALSE(AAX_CString("abc") == AAX_CString("ABC"));
    AAX_CString cut("abc");
    cut[1] = '\0';
    EXPECT_TRUE(cut == AAX_CString("a"));
    EXPECT_EQ(cut.Length(), 3U);
}

TEST(AAX_CStringTest, CharactersCanBeWritten) {
    AAX_CString text("abc");
    text[0] = 'X';
    EXPECT_EQ(text[2], 'c');
    EXPECT_STREQ(text.Get(), "Xbc");
}

TEST(AAX_CStringTest, VirtualSlotsHaveTheirOrder) {
    EXPECT_EQ(slotOf(&AAX_IString::Length), kDestructorSlots);
    EXPECT_EQ(slotOf(&AAX_IString::MaxLength), kDestructorSlots + 1);
    EXPECT_EQ(slotOf(&AAX_IString::Get), kDestructorSlots + 2);
    EXPECT_EQ(slotOf(&AAX_IString::Set), kDestructorSlots + 3);
    EXPECT_EQ(slotOf<AAX_IString& (AAX_IString::*)(const AAX_IString&)>(&AAX_IString::operator=),
              kDestructorSlots + 4);
    EXPECT_EQ(slotOf<AAX_IString& (AAX_IString::*)(const char*)>(&AAX_IString::operator=),
              kDestructorSlots + 5);
}

} // namespace
} // namespace varno
