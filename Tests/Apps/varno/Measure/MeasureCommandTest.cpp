#include "Tests/Apps/varno/Support/ProgramTest.h"

// What varno measure prints and refuses; MeasuredFiguresTest.cpp looks at its numbers.

namespace varno::test {
namespace {

using testing::HasSubstr;

class MeasureCommand : public ProgramTest {};

TEST_F(MeasureCommand, PrintsTablesOfThoseAskedForInTheirOwnOrder) {
    const std::string text = varnoOut({"measure", "detector", "drive"});
    EXPECT_THAT(text, testing::StartsWith("detector: how much louder or softer"));
    EXPECT_THAT(text, HasSubstr("\n\ndrive: "));
    EXPECT_THAT(text, testing::Not(HasSubstr("aliasing")));
}

TEST_F(MeasureCommand, RefusesWhatItCannotMeasure) {
    EXPECT_THAT(refusal(2, {"measure", "loudness"}), HasSubstr("loudness"));
    EXPECT_THAT(refusal(2, {"measure", "--rate", "8000"}), HasSubstr("16000"));
    EXPECT_THAT(refusal(2, {"measure", "--set", "Hot=2"}), HasSubstr("Hot"));
    EXPECT_THAT(refusal(2, {"measure", "--rate", "96000", "--quality", "8x"}), HasSubstr("768000 Hz"));
}

} // namespace
} // namespace varno::test
