// The number at the start of a text, against the standard library's own.
#include "AAX_CString.h"
#include "Tests/Support/NumberTexts.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <locale>
#include <optional>
#include <sstream>

namespace varno::test {
namespace {

// The bits of the number that ToDouble reads; nothing where it fails, which must leave 0.0.
std::optional<std::uint64_t> readBits(const std::string& text) {
    double number = 99.0;
    if (AAX_CString(text.c_str()).ToDouble(&number)) {
        return std::bit_cast<std::uint64_t>(number);
    }
    EXPECT_EQ(std::bit_cast<std::uint64_t>(number), 0U) << text;
    return std::nullopt;
}

#ifdef __GLIBCXX__
// As the stream of GNU's standard library reads it. Other libraries' streams refuse "2.5abc" or take "nan".
std::optional<std::uint64_t> streamedBits(const std::string& text) {
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    double number = 0.0;
    return stream >> number ? std::optional(std::bit_cast<std::uint64_t>(number)) : std::nullopt;
}

TEST(StringNumbers, AreThoseOfTheStream) {
    NumberTexts texts;
    for (int i = 0; i < NumberTexts::kCount; ++i) {
        const std::string text = texts.next();
        ASSERT_EQ(readBits(text), streamedBits(text)) << "text " << i << ": \"" << text << "\"";
    }
}
#endif

TEST(StringNumbers, AreTheSameWithEveryStandardLibrary) {
    NumberTexts texts;
    Fingerprint fingerprint;
    int numbers = 0;
    for (int i = 0; i < NumberTexts::kCount; ++i) {
        const std::optional<std::uint64_t> bits = readBits(texts.next());
        fingerprint.add(bits.value_or(1));
        numbers += bits ? 1 : 0;
    }
    EXPECT_EQ(fingerprint.value(), 12186725048522824343U);
    EXPECT_GT(numbers, NumberTexts::kCount / 4);
    EXPECT_LT(numbers, NumberTexts::kCount * 3 / 4);
}

} // namespace
} // namespace varno::test
