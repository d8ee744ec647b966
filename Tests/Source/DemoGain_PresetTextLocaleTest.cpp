// The preset text under another country's locale of the C library, which a host may set. Not among the tests
// of the signal path, which run where no locale can be made.
#include "DemoGain_PresetText.h"

#include "Tests/Source/DataModelFixture.h"
#include "Tests/Support/LocaleScope.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

TEST(PresetTextLocale, changesNeitherWritingNorReading) {
    DataModelFixture fixture;
    ASSERT_EQ(fixture.initialize(), AAX_SUCCESS);
    const std::string plain = DemoGain_PresetText::Write(*fixture.model);
    const auto values = DemoGain_PresetText::Parse(plain);
    ASSERT_TRUE(values);
    EXPECT_EQ(values->front(), 0.5F);

    const LocaleScope german("de_DE");
    ASSERT_EQ(german.decimalPoint(), ",");
    EXPECT_EQ(DemoGain_PresetText::Write(*fixture.model), plain);
    EXPECT_EQ(DemoGain_PresetText::Parse(plain), values);
}

} // namespace
} // namespace varno::test
