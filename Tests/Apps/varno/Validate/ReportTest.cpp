#include "Validate/Report.h"
#include "CommandLine/Json.h"
#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <set>

namespace varno::validate {
namespace {

using test::ProgramTest;
using testing::HasSubstr;

TEST(Checks, AreCompleteAndUnique) {
    std::set<std::string_view> ids;
    for (const Check& check : allChecks()) {
        EXPECT_TRUE(ids.insert(check.id).second) << check.id;
        EXPECT_GT(check.id.size(), check.group().size()) << check.id;
        EXPECT_FALSE(check.title.empty() || check.title.ends_with('.')) << check.id;
        EXPECT_NE(check.run, nullptr) << check.id;
        EXPECT_NE(check.formats, 0U) << check.id;
        EXPECT_GT(check.timeLimitS, 0) << check.id;
    }
    EXPECT_FALSE(ids.empty());
}

TEST(Checks, ApplyByFormatAndLevel) {
    const Check check{
        .id = "a-b", .title = "A", .formats = Format::kModule | Format::kClap, .level = Level::kFull};
    EXPECT_TRUE(applies(check, Format::kModule, Level::kFull));
    EXPECT_FALSE(applies(check, Format::kModule, Level::kQuick));
    EXPECT_FALSE(applies(check, Format::kLv2, Level::kFull));
}

TEST(Formats, AreThoseOfTheName) {
    EXPECT_EQ(formatOf("a/b.aaxplugin/"), Format::kModule);
    EXPECT_EQ(formatOf("b.lv2"), Format::kLv2);
    EXPECT_EQ(formatOf("b.clap"), Format::kClap);
    EXPECT_EQ(formatOf("b.so"), std::nullopt);
    EXPECT_EQ(formatOf(""), std::nullopt);
}

TEST(Judgement, NeedsMostChecksToBeMade) {
    EXPECT_EQ(judge({.passed = 6, .failed = 0, .skipped = 4}), Judgement::kPassed);
    EXPECT_EQ(judge({.passed = 59, .failed = 0, .skipped = 41}), Judgement::kNotJudged);
    EXPECT_EQ(judge({.passed = 1, .failed = 1, .skipped = 98}), Judgement::kFailed);
    EXPECT_EQ(judge({}), Judgement::kNotJudged);
}

TEST(Report, HasALineForEachCheck) {
    const Check check{.id = "group-what", .title = "It holds"};
    CheckedCheck checked{&check, {}};
    EXPECT_EQ(checkLines(checked), "PASS  group-what                  It holds\n");
    checked.result = {Verdict::kFail,
                      {{Finding::Kind::kNote, "a note", {}},
                       {Finding::Kind::kFail, "1", "2"},
                       {Finding::Kind::kFail, "3", "4"}},
                      1.0};
    EXPECT_EQ(checkLines(checked), "FAIL  group-what                  seen 1, expected 2\n"
                                   "      note: a note\n"
                                   "      fail: seen 3, expected 4\n");
    checked.result = {Verdict::kSkip, {{Finding::Kind::kSkip, "no display", {}}}, 1.0};
    EXPECT_EQ(checkLines(checked), "SKIP  group-what                  no display\n");
}

TEST(Report, CountsAtTheEnd) {
    EXPECT_EQ(countLine({.passed = 9, .failed = 0, .skipped = 0}), "9 checks: 9 passed: passed\n");
    EXPECT_EQ(countLine({.passed = 7, .failed = 1, .skipped = 1}),
              "9 checks: 7 passed, 1 failed, 1 skipped: failed\n");
    EXPECT_EQ(countLine({.passed = 1, .failed = 0, .skipped = 2}),
              "3 checks: 1 passed, 2 skipped: not judged\n");
}

class ValidateCommand : public ProgramTest {
protected:
    static std::string faulty(const std::string& name) {
        return std::string(VARNO_FAULTY_PLUGINS) + '/' + name;
    }
};

TEST_F(ValidateCommand, ReportsAFaultAndExitsWith1) {
    const auto outcome = varno({"validate", faulty("exported.aaxplugin")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("\nPASS  binary-opens"));
    EXPECT_THAT(outcome.out,
                HasSubstr("FAIL  binary-symbols              seen exported.so exporting 1 other symbols, "
                          "for instance varnoLeakedFunction, expected "));
    EXPECT_THAT(outcome.out, testing::ContainsRegex(", 1 failed, [0-9]+ skipped: failed\n$"));
    EXPECT_EQ(outcome.err, "");
}

TEST_F(ValidateCommand, ReportsTheSameAsJson) {
    const auto outcome = varno({"validate", "--json", "--seed", "7", faulty("exported.aaxplugin")});
    EXPECT_EQ(outcome.status, 1);
    const auto report = jsonObject(outcome.out);
    ASSERT_TRUE(report);
    EXPECT_THAT(outcome.out, HasSubstr(R"("judgement": "failed")"));
    EXPECT_THAT(outcome.out, HasSubstr(R"("seed": 7)"));
    EXPECT_THAT(outcome.out, HasSubstr(R"("id": "binary-symbols")"));
    EXPECT_THAT(outcome.out, HasSubstr(R"("failed": 1)"));
}

TEST_F(ValidateCommand, ChecksTheChosenPlugin) {
    const std::string bundle = faulty("exported.aaxplugin");
    const auto outcome = varno({"validate", "--json", "--plugin", "org.example.fixture", bundle});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr(R"("id": "binary-symbols")"));
    EXPECT_THAT(outcome.out, HasSubstr(R"("org.example.fixture")"));
    EXPECT_EQ(refusal(2, {"validate", "--plugin", "org.example.other", bundle}),
              bundle + ": no plug-in \"org.example.other\", expected one of org.example.fixture");
}

TEST_F(ValidateCommand, ListsEveryCheck) {
    const std::string list = varnoOut({"validate", "--list"});
    const std::string json = varnoOut({"validate", "--list", "--json"});
    for (const Check& check : allChecks()) {
        EXPECT_THAT(list, HasSubstr('\n' + std::string(check.id) + ' '));
        EXPECT_THAT(json, HasSubstr('"' + std::string(check.id) + '"'));
    }
}

// The table of docs/validate.md is that of --list.
TEST_F(ValidateCommand, EveryCheckIsDocumented) {
    const std::string document = test::readFile(std::string(VARNO_DOCUMENTS) + "/validate.md");
    const auto cell = [](const Check& check, Format format) {
        return contains(check.formats, format) ? " yes |" : " - |";
    };
    std::size_t rows = 0;
    for (const Check& check : allChecks()) {
        const std::string level = check.level == Level::kFull ? " full | " : " quick | ";
        EXPECT_THAT(document,
                    HasSubstr("\n| `" + std::string(check.id) + "` |" + cell(check, Format::kModule) +
                              cell(check, Format::kLv2) + cell(check, Format::kClap) + level +
                              std::string(check.title) + " |\n"));
    }
    for (auto at = document.find("\n| `"); at != std::string::npos; at = document.find("\n| `", at + 1)) {
        ++rows;
    }
    // And the four verdicts.
    EXPECT_EQ(rows, allChecks().size() + 4);
}

TEST_F(ValidateCommand, RefusesWhatIsNoPlugin) {
    EXPECT_EQ(refusal(2, {"validate", "nothing.so"}),
              "nothing.so: expected a plug-in named NAME.aaxplugin, NAME.lv2 or NAME.clap");
    EXPECT_EQ(refusal(1, {"validate", "nothing.lv2"}), "nothing.lv2: does not exist");
}

} // namespace
} // namespace varno::validate
