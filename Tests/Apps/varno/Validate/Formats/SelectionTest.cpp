// Plug-ins of a bundle that are chosen by their identifiers, and those that cannot be run.
#include "Tests/Support/EnvironmentVariable.h"
#include "Validate/CheckProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace varno::validate {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kFaultyGain = "urn:varno:test:faulty-gain";

std::vector<std::string> idsOf(const Plugin& plugin) {
    std::vector<std::string> ids;
    for (const PluginInfo& info : plugin.plugins()) {
        ids.push_back(info.id);
    }
    return ids;
}

std::string refusalOf(const std::filesystem::path& path, const char* id) {
    try {
        (void)openPlugin(path, PluginSelection({id}));
    } catch (const UnknownPlugin& unknown) {
        return unknown.what();
    }
    return {};
}

TEST(PluginSelection, ChoosesOfAClapBinary) {
    const test::EnvironmentVariable planted("VARNO_FIXTURE_FAULT", "bad-second");
    EXPECT_THROW((void)openPlugin(VARNO_FAULTY_CLAP), PluginError);
    EXPECT_THAT(idsOf(*openPlugin(VARNO_FAULTY_CLAP, PluginSelection({kFaultyGain}))),
                ElementsAre(kFaultyGain));
    EXPECT_EQ(refusalOf(VARNO_FAULTY_CLAP, "urn:other"),
              "no plug-in \"urn:other\", expected one of urn:varno:test:faulty-gain, "
              "urn:varno:test:never-made");
}

TEST(PluginSelection, ChoosesOfAnLv2Bundle) {
    EXPECT_EQ(openPlugin(VARNO_FAULTY_LV2)->plugins().size(), 2U);
    EXPECT_THAT(idsOf(*openPlugin(VARNO_FAULTY_LV2, PluginSelection({kFaultyGain}))),
                ElementsAre(kFaultyGain));
    EXPECT_THAT(refusalOf(VARNO_FAULTY_LV2, "urn:other"), HasSubstr("no plug-in \"urn:other\""));
}

TEST(PluginSelection, NamesTenOfManyPlugins) {
    const std::vector<std::string> many(12, "urn:one");
    try {
        PluginSelection({"urn:other"}).requireAmong(many);
        FAIL();
    } catch (const UnknownPlugin& unknown) {
        EXPECT_THAT(unknown.what(), HasSubstr("urn:one and 2 more"));
    }
}

// A check that cannot be made says what stands against it.
TEST(PluginObstacle, IsTheReasonOfASkip) {
    const auto checks = allChecks();
    const auto check = std::ranges::find(checks, "audio-buffers", &Check::id);
    ASSERT_NE(check, checks.end());
    const CheckResult result =
        runInChild(*check, {.path = VARNO_FAULTY_LV2,
                            .selection = PluginSelection({"urn:varno:test:needs-feature"}),
                            .format = Format::kLv2});
    EXPECT_EQ(result.verdict, Verdict::kSkip);
    ASSERT_FALSE(result.findings.empty());
    EXPECT_EQ(result.findings.front().seen,
              "urn:varno:test:needs-feature: it needs a host with urn:varno:test:feature");
}

} // namespace
} // namespace varno::validate
