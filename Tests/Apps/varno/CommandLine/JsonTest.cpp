#include "CommandLine/Json.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

TEST(Json, PrintsEveryKindOfValue) {
    const Json::Object object = {{"null", Json()},       {"yes", true},
                                 {"count", 3U},          {"level", -0.5},
                                 {"name", "quote\""},    {"list", jsonArray(std::vector<int>{1, 2})},
                                 {"none", Json::Array{}}};
    EXPECT_EQ(jsonLine(object),
              R"({"null":null,"yes":true,"count":3,"level":-0.5,"name":"quote\"","list":[1,2],"none":[]})"
              "\n");
}

TEST(Json, KeepsTheOrderOfKeys) {
    EXPECT_EQ(jsonText(Json::Object{{"b", 1}, {"a", Json::Object{}}}), "{\n  \"b\": 1,\n  \"a\": {}\n}\n");
}

TEST(Json, ConvertsTheItemsOfARange) {
    const auto twice = [](int value) { return 2 * value; };
    EXPECT_EQ(jsonLine(jsonArray(std::vector<int>{1, 2, 3}, twice)), "[2,4,6]\n");
}

TEST(Json, ReplacesWhatIsNotUtf8) {
    EXPECT_EQ(jsonLine(Json("a\xff")), "\"a\xEF\xBF\xBD\"\n");
    EXPECT_EQ(jsonText(Json("a\xff")), "\"a\xEF\xBF\xBD\"\n");
}

TEST(Json, IsReadAsItWasWritten) {
    const Json::Object object = {
        {"b", true}, {"a", Json::Array{1, 2.5, "x", Json()}}, {"c", Json::Object{{"d", -3}}}};
    const auto read = jsonObject(jsonLine(object));
    ASSERT_TRUE(read);
    EXPECT_EQ(jsonLine(*read), jsonLine(object));
    for (const char* text : {"", "[]", "1", "{", "{\"a\":}", "{} {}"}) {
        EXPECT_FALSE(jsonObject(text)) << text;
    }
}

} // namespace
} // namespace varno
