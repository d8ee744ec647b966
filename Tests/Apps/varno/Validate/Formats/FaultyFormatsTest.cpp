// Checks of sound, state and parameters, on an LV2 bundle and a CLAP binary that have a fault. Each fault is
// found by its checks and by no other of their group.
#include "Tests/Support/EnvironmentVariable.h"
#include "Validate/CheckProcess.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <ostream>
#include <string>

namespace varno::validate {
namespace {

// By identifier, the verdicts that are not those of a plug-in without fault.
using Verdicts = std::map<std::string, Verdict>;

struct FormatFault {
    const char* fault;
    Formats formats;
    Verdicts expected;
};

void PrintTo(const FormatFault& row, std::ostream* out) {
    *out << row.fault;
}

constexpr Formats kBoth = Format::kLv2 | Format::kClap;
constexpr Formats kLv2Alone = static_cast<Formats>(Format::kLv2);
constexpr Formats kClapAlone = static_cast<Formats>(Format::kClap);

const FormatFault kFormatFaults[] = {
    {"writes-beyond", kBoth, {{"audio-buffers", Verdict::kFail}}},
    {"leaves-a-sample", kBoth, {{"audio-buffers", Verdict::kFail}}},
    {"changes-input", kBoth, {{"audio-buffers", Verdict::kFail}}},
    {"needs-own-outputs", kBoth, {{"audio-buffers", Verdict::kFail}}},
    {"depends-on-buffers", kBoth, {{"audio-slicing", Verdict::kNote}}},
    {"reset-keeps-sound", kBoth, {{"audio-repeating", Verdict::kNote}}},
    {"shares-state",
     kBoth,
     {{"audio-instances", Verdict::kNote},
      {"audio-repeating", Verdict::kNote},
      {"audio-slicing", Verdict::kNote}}},
    {"bad-rate", kBoth, {{"audio-rates", Verdict::kFail}}},
    {"bad-corner", kBoth, {{"audio-corners", Verdict::kFail}}},
    {"keeps-bad-samples", kBoth, {{"audio-bad-samples", Verdict::kFail}}},
    {"subnormal-tail", kBoth, {{"audio-silence", Verdict::kFail}}},
    {"slow-silence", kBoth, {{"audio-silence", Verdict::kFail}}},
    // In the same process, later instances compute with it.
    {"changes-rounding",
     kBoth,
     {{"audio-float-mode", Verdict::kFail},
      {"audio-instances", Verdict::kNote},
      {"audio-repeating", Verdict::kNote},
      {"audio-slicing", Verdict::kNote}}},
    {"clicks", kBoth, {{"audio-automation", Verdict::kFail}}},
    {"bypass-scales", kBoth, {{"bypass-null", Verdict::kFail}}},
    {"wrong-latency", kBoth, {{"bypass-null", Verdict::kFail}}},
    {"state-crashes", kBoth, {{"state-damaged", Verdict::kFail}}},
    {"state-keeps-memory", kLv2Alone, {{"state-damaged", Verdict::kFail}}},
    {"state-keeps-memory",
     kClapAlone,
     {{"state-damaged", Verdict::kFail}, {"state-foreign", Verdict::kFail}}},
    {"knows-everything", kBoth, {{"parameters-unknown", Verdict::kFail}}},
    {"takes-unknown-events", kClapAlone, {{"parameters-unknown", Verdict::kFail}}},
    {"refuses-unknown-features", kLv2Alone, {{"parameters-unknown", Verdict::kFail}}},
    {"takes-foreign-states", kBoth, {{"state-foreign", Verdict::kFail}}},
    {"loses-foreign-states", kBoth, {{"state-foreign", Verdict::kFail}}},
    {"called-back", kBoth, {{"life-callbacks", Verdict::kFail}}},
    // An LV2 host keeps the values itself.
    {"state-forgets", kClapAlone, {{"state-round-trip", Verdict::kFail}}},
    {"refusal-changes", kClapAlone, {{"state-damaged", Verdict::kFail}, {"state-foreign", Verdict::kFail}}},
    {"state-out-of-range",
     kClapAlone,
     {{"state-damaged", Verdict::kFail}, {"state-foreign", Verdict::kFail}}},
    {"stuck-parameter", kClapAlone, {{"parameters-ranges", Verdict::kFail}}},
    {"text-of-locale", kClapAlone, {{"parameters-texts", Verdict::kFail}}},
    {"reads-beyond-range",
     kClapAlone,
     {{"parameters-extremes", Verdict::kFail}, {"parameters-texts", Verdict::kFail}}},
};

bool isOfThese(const Check& check) {
    return check.group() == "audio" || check.group() == "bypass" || check.group() == "state" ||
           check.group() == "parameters" || check.id == "life-callbacks";
}

// Of a plug-in without fault.
Verdict usualVerdict(const Check& check) {
    return check.id == "audio-automation" ? Verdict::kNote : Verdict::kPass;
}

// The group of the checks that are expected to find it.
std::string groupOf(const FormatFault& row) {
    const std::string& id = row.expected.begin()->first;
    return id.substr(0, id.find('-'));
}

// The verdicts on the fixture but those that passed. @param group empty for all @param report what was found
Verdicts verdictsOn(const std::filesystem::path& path, const char* fault, const std::string& group,
                    std::string& report) {
    const test::EnvironmentVariable planted("VARNO_FIXTURE_FAULT", fault);
    const test::EnvironmentVariable locales("LOCPATH", VARNO_TEST_LOCALES);
    const CheckSetup setup{.path = path, .format = formatOf(path).value(), .seed = 1};
    Verdicts verdicts;
    for (const Check& check : allChecks()) {
        if (isOfThese(check) && (group.empty() || check.group() == group) &&
            applies(check, setup.format, setup.level)) {
            const CheckResult result = runInChild(check, setup);
            if (result.verdict != usualVerdict(check)) {
                verdicts[std::string(check.id)] = result.verdict;
            }
            for (const Finding& finding : result.findings) {
                report += std::string(check.id) + ": " + finding.seen + '\n';
            }
        }
    }
    return verdicts;
}

std::filesystem::path fixtureOf(Format format) {
    return format == Format::kLv2 ? VARNO_FAULTY_LV2 : VARNO_FAULTY_CLAP;
}

class FormatFaults : public testing::TestWithParam<FormatFault> {};

TEST_P(FormatFaults, areFoundByTheirChecksAlone) {
    for (const Format format : {Format::kLv2, Format::kClap}) {
        if (contains(GetParam().formats, format)) {
            std::string report;
            EXPECT_EQ(verdictsOn(fixtureOf(format), GetParam().fault, groupOf(GetParam()), report),
                      GetParam().expected)
                << formatName(format) << '\n'
                << report;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(All, FormatFaults, testing::ValuesIn(kFormatFaults));

TEST(FormatFaultsCheck, ThePluginsWithoutFaultPass) {
    for (const Format format : {Format::kLv2, Format::kClap}) {
        std::string report;
        EXPECT_EQ(verdictsOn(fixtureOf(format), "", "", report), Verdicts{}) << report;
    }
}

TEST(FormatFaultsCheck, EveryCheckFindsOne) {
    for (const Check& check : allChecks()) {
        const auto finds = [&](const FormatFault& row) {
            return row.expected.contains(std::string(check.id));
        };
        EXPECT_TRUE(!isOfThese(check) || std::ranges::any_of(kFormatFaults, finds)) << check.id;
    }
}

} // namespace
} // namespace varno::validate
