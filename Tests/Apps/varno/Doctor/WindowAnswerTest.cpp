#include "Doctor/WindowAnswer.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <filesystem>

// How varno asks varno-window: programs in its place that answer, fail and do not end.

namespace varno::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing::StartsWith;

// Far longer than a shell takes to start, and than the one test that waits for its end wants to.
constexpr std::chrono::seconds kLong(60);
constexpr std::chrono::milliseconds kShort(300);

class WindowAnswer : public testing::Test {
protected:
    std::vector<Finding> ask(const std::string& script, std::chrono::milliseconds patience = kLong) const {
        const auto program = mFolder.write("varno-window", "#!/bin/sh\n" + script);
        fs::permissions(program, fs::perms::owner_all);
        return askWindowProgram(program, patience);
    }

    TemporaryFolder mFolder;
};

TEST_F(WindowAnswer, IsPassedOnInItsOrder) {
    const auto findings =
        ask("printf 'a\\tok\\t%s\\t\\nno finding\\nb\\tfails\\twhy\\tp\\n' \"$*\"; echo noise >&2");
    ASSERT_EQ(findings.size(), 3U);
    EXPECT_EQ(findings[0].part, "window program");
    EXPECT_EQ(findings[0].state, PartState::kGood);
    EXPECT_EQ(findings[0].detail, mFolder / "varno-window");
    EXPECT_EQ(findings[1].part, "a");
    EXPECT_EQ(findings[1].detail, "doctor");
    EXPECT_EQ(findings[2].state, PartState::kFailing);
    EXPECT_EQ(findings[2].package, "p");
}

TEST_F(WindowAnswer, AProgramThatLacksALibraryIsNamedWithTheReason) {
    const auto findings =
        ask("echo 'libX11.so.6: cannot open shared object file' >&2; echo more >&2; exit 127");
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].state, PartState::kFailing);
    EXPECT_EQ(findings[0].detail,
              mFolder / "varno-window" +
                  ": ends without an answer: libX11.so.6: cannot open shared object file");
    EXPECT_EQ(findings[0].package, "varno-editor");
}

TEST_F(WindowAnswer, OneThatDoesNotEndIsEnded) {
    const auto findings = ask("printf 'display\\tok\\t\\t\\n'; exec sleep 1000", kShort);
    ASSERT_EQ(findings.size(), 2U);
    EXPECT_EQ(findings[0].state, PartState::kFailing);
    EXPECT_THAT(findings[0].detail, HasSubstr(": gives no answer after that on display"));
    EXPECT_EQ(findings[1].part, "display");
    EXPECT_THAT(ask("exec sleep 1000", kShort).front().detail, HasSubstr(": gives no answer at all"));
}

TEST_F(WindowAnswer, AnAnswerLongerThanAPipeIsRead) {
    const auto findings =
        ask("i=0; while [ $i -lt 3000 ]; do printf 'part\\tok\\t%060d\\t\\n' $i; i=$((i+1)); done");
    EXPECT_EQ(findings.size(), 3001U);
}

TEST_F(WindowAnswer, OneThatCannotBeStarted) {
    const auto findings = askWindowProgram(mFolder.write("varno-window", "#!/bin/sh\n"), kLong);
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].state, PartState::kFailing);
    EXPECT_EQ(findings[0].detail, mFolder / "varno-window" + ": cannot be started: Permission denied");
}

} // namespace
} // namespace varno::test
