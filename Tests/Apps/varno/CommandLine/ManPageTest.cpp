#include "CommandLine/Help.h"
#include "Program.h"
#include "Tests/Support/Subprocess.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

using testing::HasSubstr;

TEST(ManPage, IsCleanRoff) {
    const auto outcome =
        test::run({"mandoc", "-Tlint", "-W", "style"}, {.input = manPage(program(), "1.2.3")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out + outcome.err, "");
}

TEST(ManPage, ShowsTheWholeTable) {
    const auto outcome =
        test::run({"mandoc", "-Tutf8", "-O", "width=400"}, {.input = manPage(program(), "1.2.3")});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    // A terminal's bold is a letter, a backspace and the letter again; italic is an underscore, a backspace
    // and the letter.
    std::string text;
    for (std::size_t i = 0; i < outcome.out.size(); ++i) {
        if (outcome.out[i] == '\b') {
            text.pop_back();
        } else {
            text += outcome.out[i];
        }
    }
    EXPECT_THAT(text, HasSubstr("varno 1.2.3"));
    for (const auto& command : program().commands) {
        for (const auto& usage : usageLines(command)) {
            EXPECT_THAT(text, HasSubstr(usage));
        }
        for (const auto& option : command.options) {
            EXPECT_THAT(text, HasSubstr(optionTerm(option)));
        }
        for (const auto& example : command.examples) {
            EXPECT_THAT(text, HasSubstr(std::string(example.line)));
        }
    }
    for (const auto& note : program().exitStatuses) {
        EXPECT_THAT(text, HasSubstr(std::string(note.help)));
    }
}

} // namespace
} // namespace varno
