#include "Measure/Figure.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

const Figure kFigure{.name = "levels",
                     .explanation = "what came out.",
                     .columns = {{"key", "KEY"}, {"level_db", "LEVEL dB", 1}},
                     .rows = {{std::string("a"), -3.14159}, {std::string("bc"), std::monostate()}}};

TEST(FigureTest, IsATableWithRoundedNumbersToBeRead) {
    EXPECT_EQ(figureText(kFigure), "levels: what came out.\n"
                                   "\n"
                                   "KEY  LEVEL dB\n"
                                   "a        -3.1\n"
                                   "bc          -\n");
}

TEST(FigureTest, IsAnObjectForEachRowWithWholeNumbersForScripts) {
    EXPECT_EQ(jsonLine(figureJson(kFigure)),
              R"({"name":"levels","explanation":"what came out.",)"
              R"("rows":[{"key":"a","level_db":-3.14159},{"key":"bc","level_db":null}]})"
              "\n");
}

} // namespace
} // namespace varno::test
