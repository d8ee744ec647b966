#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <nlohmann/json.hpp>

namespace varno::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

class ParamsCommand : public ProgramTest {};

TEST_F(ParamsCommand, ListsAllParameters) {
    // Made by: varno params
    EXPECT_EQ(varnoOut({"params"}), readFile(std::string(VARNO_GOLDEN_FOLDER) + "/params-list.txt"));
}

TEST_F(ParamsCommand, ListsIdentifiersAlone) {
    EXPECT_EQ(varnoOut({"params", "--ids"}),
              "MasterBypassID\nGain\nHP\nBand\nAtk\nRls\nASw\nUK\nVolume\nHot\n"
              "Ratio\nMix\nHSw\nLinkSw\n");
}

TEST_F(ParamsCommand, ShowsOneWithItsSteps) {
    // Made by: varno params Ratio
    EXPECT_EQ(varnoOut({"params", "Ratio"}),
              readFile(std::string(VARNO_GOLDEN_FOLDER) + "/params-ratio.txt"));
}

TEST_F(ParamsCommand, ShowsTheTextsOfASwitch) {
    const std::string text = varnoOut({"params", "MasterBypassID"});
    EXPECT_THAT(text, HasSubstr("   0  0.000000  bypass\n   1  1.000000  on\n"));
    EXPECT_THAT(text, HasSubstr("value        bypass (0.000000)\n"));
}

TEST_F(ParamsCommand, PrintsJson) {
    const json parameters = json::parse(varnoOut({"params", "--json"}));
    ASSERT_EQ(parameters.size(), 14U);
    EXPECT_EQ(parameters[0], json::parse(R"({"index": 0, "id": "MasterBypassID", "name": "Master Bypass",
        "type": "discrete", "steps": 2, "automatable": true, "default": 0.0, "default_text": "bypass",
        "value": 0.0, "text": "bypass"})"));
    EXPECT_EQ(parameters[8]["id"], "Volume");
    EXPECT_EQ(parameters[8]["name"], "Vol");
    EXPECT_EQ(parameters[9]["default"], static_cast<double>(0.07F));
}

TEST_F(ParamsCommand, PrintsOneAsJson) {
    const json parameter = json::parse(varnoOut({"params", "--json", "MasterBypassID"}));
    EXPECT_EQ(parameter["id"], "MasterBypassID");
    EXPECT_EQ(parameter["step_table"], json::parse(R"([{"step": 0, "value": 0.0, "text": "bypass"},
                                                       {"step": 1, "value": 1.0, "text": "on"}])"));
    EXPECT_EQ(json::parse(varnoOut({"params", "--json", "Gain"}))["step_table"].size(), 131U);
}

TEST_F(ParamsCommand, ShowsWhatSettingsMake) {
    varnoOut(
        {"render", "--set", "Hot=0.25", "--set", "HP=1", "--save-preset", "p.txt", "--save-state", "s.bin"});
    const auto valueIn = [&](const std::vector<std::string>& options, const std::string& id) {
        std::vector<std::string> words = {"params", "--json", id};
        words.insert(words.end(), options.begin(), options.end());
        return json::parse(varnoOut(words))["value"].get<double>();
    };
    EXPECT_EQ(valueIn({"--preset", "p.txt"}, "Hot"), 0.25);
    EXPECT_EQ(valueIn({"--state", "s.bin"}, "HP"), 1.0);
    EXPECT_EQ(valueIn({"--preset", "p.txt", "--set", "Hot=0.5"}, "Hot"), 0.5);
    EXPECT_EQ(valueIn({"--set", "MasterBypassID=on"}, "MasterBypassID"), 1.0);
}

TEST_F(ParamsCommand, RefusesUnknownParameters) {
    EXPECT_EQ(refusal(2, {"params", "hot"}), R"(unknown parameter "hot"; did you mean "Hot"?)");
    EXPECT_EQ(refusal(2, {"params", "Treble"}),
              R"(unknown parameter "Treble"; expected one that varno params lists)");
}

} // namespace
} // namespace varno::test
