// Checks of editors, on a module, an LV2 bundle and a CLAP binary whose editor has a fault. Each fault is
// found by its checks and by no other of the group.
#include "Tests/Support/EnvironmentVariable.h"
#include "Validate/CheckProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <string>
#include <string_view>

namespace varno::validate {
namespace {

// By identifier, the verdicts that are not those of an editor without fault.
using EditorVerdicts = std::map<std::string, Verdict>;

struct EditorFault {
    const char* fault;
    Formats formats;
    EditorVerdicts expected;
};

void PrintTo(const EditorFault& row, std::ostream* out) {
    *out << row.fault;
}

constexpr Formats kLv2Alone = static_cast<Formats>(Format::kLv2);
constexpr Formats kClapOnly = static_cast<Formats>(Format::kClap);
constexpr Formats kPrepared = Format::kLv2 | Format::kClap;

EditorVerdicts allFail(Format format) {
    EditorVerdicts verdicts;
    for (const Check& check : editorChecks()) {
        if (applies(check, format, Level::kQuick)) {
            verdicts[std::string(check.id)] = Verdict::kFail;
        }
    }
    return verdicts;
}

const EditorFault kEditorFaults[] = {
    {"editor-wrong-size", kAllFormats, {{"editor-window", Verdict::kFail}}},
    {"editor-leaves-pixmap", kAllFormats, {{"editor-reopening", Verdict::kFail}}},
    {"editor-leaves-thread", kAllFormats, {{"editor-reopening", Verdict::kFail}}},
    {"editor-leaves-descriptor", kAllFormats, {{"editor-reopening", Verdict::kFail}}},
    {"editor-leaves-memory", kAllFormats, {{"editor-reopening", Verdict::kFail}}},
    {"editor-leaves-pages", kAllFormats, {{"editor-reopening", Verdict::kFail}}},
    {"editor-crashes-reopened", kAllFormats, {{"editor-reopening", Verdict::kFail}}},
    {"editor-shares-pointer", kAllFormats, {{"editor-two", Verdict::kFail}}},
    {"editor-odd-scale", kAllFormats, {{"editor-scale", Verdict::kFail}}},
    {"editor-needs-sound", kAllFormats, {{"editor-before-sound", Verdict::kFail}}},
    {"editor-needs-preparing", kPrepared, {{"editor-before-preparing", Verdict::kFail}}},
    {"editor-runs-alone", kAllFormats, {{"editor-running", Verdict::kFail}}},
    {"editor-echoes", kAllFormats, {{"editor-running", Verdict::kNote}}},
    {"editor-open-gesture", kAllFormats, {{"editor-input", Verdict::kFail}}},
    {"editor-beyond-range", kPrepared, {{"editor-input", Verdict::kFail}}},
    {"editor-crashes-on-key", kAllFormats, {{"editor-input", Verdict::kFail}}},
    {"editor-waits-on-key", kAllFormats, {{"editor-input", Verdict::kFail}}},
    {"editor-closed-in-gesture", kAllFormats, {{"editor-closing", Verdict::kFail}}},
    {"editor-uses-instance", kPrepared, {{"editor-instance-ends", Verdict::kFail}}},
    {"editor-dies-with-server", kAllFormats, {{"editor-lost-server", Verdict::kFail}}},
    {"editor-waits-for-server", kAllFormats, {{"editor-lost-server", Verdict::kFail}}},
    // Seen wherever there is sound after the window was closed.
    {"editor-writes-late",
     kLv2Alone,
     {{"editor-window", Verdict::kFail},
      {"editor-before-sound", Verdict::kFail},
      {"editor-running", Verdict::kFail},
      {"editor-closing", Verdict::kFail},
      {"editor-instance-ends", Verdict::kFail},
      {"editor-lost-server", Verdict::kFail}}},
    {"editor-leaves-timer", kClapOnly, allFail(Format::kClap)},
    {"editor-leaves-timer", static_cast<Formats>(Format::kModule), allFail(Format::kModule)},
};

std::filesystem::path faultyEditor(Format format) {
    return format == Format::kModule ? VARNO_FAULTY_MODULE
           : format == Format::kLv2  ? VARNO_FAULTY_LV2
                                     : VARNO_FAULTY_CLAP;
}

// The verdicts on the fixture but those that passed.
// @param only the checks to make; empty for all @param report what was found
EditorVerdicts editorVerdicts(Format format, const char* fault, const EditorVerdicts& only,
                              std::string& report) {
    // Two of the faults never end; these checks take a second or two.
    constexpr int kTimeLimitS = 15;
    const bool isEndless = std::string_view(fault).find("waits") != std::string_view::npos;
    const test::EnvironmentVariable planted("VARNO_FIXTURE_FAULT", fault);
    const CheckSetup setup{
        .path = faultyEditor(format), .format = format, .seed = 1, .timeLimitS = isEndless ? kTimeLimitS : 0};
    EditorVerdicts verdicts;
    for (const Check& check : editorChecks()) {
        const bool isMade = only.empty() || only.contains(std::string(check.id));
        if (isMade && applies(check, format, setup.level)) {
            const CheckResult result = runInChild(check, setup);
            if (result.verdict != Verdict::kPass) {
                verdicts[std::string(check.id)] = result.verdict;
            }
            for (const Finding& finding : result.findings) {
                report += std::string(check.id) + ": " + finding.seen + '\n';
            }
        }
    }
    return verdicts;
}

class EditorFaults : public testing::TestWithParam<EditorFault> {};

TEST_P(EditorFaults, areFoundByTheirChecksAlone) {
    bool isFirst = true;
    for (const Format format : {Format::kClap, Format::kLv2, Format::kModule}) {
        if (contains(GetParam().formats, format)) {
            std::string report;
            const EditorVerdicts only = isFirst ? EditorVerdicts() : GetParam().expected;
            isFirst = false;
            EXPECT_EQ(editorVerdicts(format, GetParam().fault, only, report), GetParam().expected)
                << formatName(format) << '\n'
                << report;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, EditorFaults, testing::ValuesIn(kEditorFaults));

TEST(EditorFaultsCheck, TheEditorsWithoutFaultPass) {
    for (const Format format : {Format::kModule, Format::kLv2, Format::kClap}) {
        std::string report;
        EXPECT_EQ(editorVerdicts(format, "", {}, report), EditorVerdicts{}) << report;
    }
}

TEST(EditorFaultsCheck, EveryCheckFindsOne) {
    for (const Check& check : editorChecks()) {
        const auto finds = [&](const EditorFault& row) {
            const auto found = row.expected.find(std::string(check.id));
            return found != row.expected.end() && found->second == Verdict::kFail;
        };
        EXPECT_TRUE(std::ranges::any_of(kEditorFaults, finds)) << check.id;
    }
}

// Where no server can be started, nothing is said of an editor.
TEST(EditorFaultsCheck, WithoutAServerNoneIsMade) {
    const test::EnvironmentVariable nothing("PATH", "/nonexistent");
    std::string report;
    const EditorVerdicts verdicts = editorVerdicts(Format::kClap, "", {}, report);
    EXPECT_EQ(verdicts.size(), std::size(editorChecks()));
    EXPECT_TRUE(std::ranges::all_of(verdicts, [](const auto& row) { return row.second == Verdict::kSkip; }))
        << report;
}

} // namespace
} // namespace varno::validate
