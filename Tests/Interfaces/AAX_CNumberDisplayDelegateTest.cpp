#include "AAX_CNumberDisplayDelegate.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/Properties.h"
#include "Tests/Support/TestRun.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

namespace varno {
namespace {

using NumberDisplay = AAX_CNumberDisplayDelegate<float, 2, 0>;

std::string textOf(float value) {
    AAX_CString text("earlier text");
    EXPECT_TRUE(NumberDisplay().ValueToString(value, &text));
    return text.Get();
}

std::string textOf(float value, std::int32_t maxChars) {
    AAX_CString text("earlier text");
    EXPECT_TRUE(NumberDisplay().ValueToString(value, maxChars, &text));
    return text.Get();
}

TEST(NumberDisplay, ShowsTwoDecimals) {
    EXPECT_EQ(textOf(0.5F), "0.50");
    EXPECT_EQ(textOf(0.0F), "0.00");
    EXPECT_EQ(textOf(-12.345F), "-12.35");
    EXPECT_EQ(textOf(0.07F), "0.07");
}

TEST(NumberDisplay, CutsWhatDoesNotFitAndAPointThatWouldStandLast) {
    EXPECT_EQ(textOf(0.5F, 5), "0.50");
    EXPECT_EQ(textOf(0.5F, 4), "0.50");
    EXPECT_EQ(textOf(0.5F, 3), "0.5");
    EXPECT_EQ(textOf(0.5F, 2), "0");
    EXPECT_EQ(textOf(0.5F, 1), "0");
    EXPECT_EQ(textOf(0.5F, 0), "");
    EXPECT_EQ(textOf(0.5F, -7), "");
    EXPECT_EQ(textOf(12.5F, 3), "12");
}

TEST(NumberDisplay, KeepsAPointThatTheLimitDidNotCutTo) {
    const AAX_CNumberDisplayDelegate<float, 0> whole;
    AAX_CString text;
    EXPECT_TRUE(whole.ValueToString(3.0F, 8, &text));
    EXPECT_STREQ(text.Get(), "3");
}

TEST(NumberDisplay, ReadsALeadingNumber) {
    float value = -1.0F;
    EXPECT_TRUE(NumberDisplay().StringToValue("0.25", &value));
    EXPECT_EQ(value, 0.25F);
    EXPECT_TRUE(NumberDisplay().StringToValue("  0.1 dB", &value));
    EXPECT_EQ(value, 0.1F);
}

TEST(NumberDisplay, AnswersZeroForWhatIsNoNumber) {
    for (const char* text : {"", "abc", "nan", "NaN", "-nan", ".", "1e999"}) {
        float value = -1.0F;
        EXPECT_FALSE(NumberDisplay().StringToValue(text, &value)) << text;
        EXPECT_EQ(value, 0.0F) << text;
    }
}

TEST(NumberDisplay, IsCloned) {
    const std::unique_ptr<AAX_IDisplayDelegate<float>> clone = NumberDisplay().Clone();
    AAX_CString text;
    EXPECT_TRUE(clone->ValueToString(0.125F, &text));
    EXPECT_STREQ(text.Get(), "0.12");
}

TEST(DisplayDelegate, DeclaresItsOperationsInOrder) {
    using Interface = AAX_IDisplayDelegate<float>;
    EXPECT_EQ(slotOf(&Interface::Clone), kDestructorSlots);
    EXPECT_EQ(slotOf(static_cast<bool (Interface::*)(float, AAX_CString*) const>(&Interface::ValueToString)),
              kDestructorSlots + 1);
    EXPECT_EQ(slotOf(static_cast<bool (Interface::*)(float, std::int32_t, AAX_CString*) const>(
                  &Interface::ValueToString)),
              kDestructorSlots + 2);
    EXPECT_EQ(slotOf(&Interface::StringToValue), kDestructorSlots + 3);
}

#if VARNO_HAS_PROPERTIES
RC_GTEST_PROP(NumberDisplayProperty, ReadsBackWhatItShows, ()) {
    const float hundredths = static_cast<float>(*rc::gen::inRange(-100000, 100000));
    const float shown = hundredths / 100.0F;
    float value = 0.0F;
    RC_ASSERT(NumberDisplay().StringToValue(textOf(shown).c_str(), &value));
    RC_ASSERT(value == shown);
}

RC_GTEST_PROP(NumberDisplayProperty, NeverExceedsTheLimit, (float value)) {
    const std::int32_t limit = *rc::gen::inRange(-2, 60);
    const std::string text = textOf(value, limit);
    RC_ASSERT(text.size() <= static_cast<std::size_t>(std::max(limit, 0)));
    RC_ASSERT(textOf(value).starts_with(text));
}
#endif

} // namespace
} // namespace varno
