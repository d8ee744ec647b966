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
    EXPECT_THAT(text, HasSubstr("   0  0.000000  bypass  off\n   1  1.000000  on      on\n"));
    EXPECT_THAT(text, HasSubstr("value        bypass (0.000000), off\n"));
}

TEST_F(ParamsCommand, PrintsJson) {
    const json parameters = json::parse(varnoOut({"params", "--json"}));
    ASSERT_EQ(parameters.size(), 14U);
    EXPECT_EQ(parameters[0], json::parse(R"({"index": 0, "id": "MasterBypassID", "name": "Master Bypass",
        "type": "discrete", "steps": 2, "automatable": true, "default": 0.0, "default_text": "bypass",
        "value": 0.0, "text": "bypass", "true_text": "off"})"));
    EXPECT_EQ(parameters[8]["id"], "Volume");
    EXPECT_EQ(parameters[8]["name"], "Vol");
    EXPECT_EQ(parameters[9]["default"], static_cast<double>(0.07F));
}

TEST_F(ParamsCommand, PrintsOneAsJson) {
    const json parameter = json::parse(varnoOut({"params", "--json", "MasterBypassID"}));
    EXPECT_EQ(parameter["id"], "MasterBypassID");
    EXPECT_EQ(parameter["step_table"], json::parse(R"(
        [{"step": 0, "value": 0.0, "text": "bypass", "true_text": "off"},
         {"step": 1, "value": 1.0, "text": "on", "true_text": "on"}])"));
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

class TrueValues : public ParamsCommand {
protected:
    // The parameter after these settings.
    json after(const std::string& id, const std::vector<std::string>& settings) const {
        std::vector<std::string> words = {"params", "--json", id};
        for (const std::string& setting : settings) {
            words.insert(words.end(), {"--set", setting});
        }
        return json::parse(varnoOut(words));
    }
    double valueAfter(const std::string& id, const std::string& text) const {
        return after(id, {id + '=' + text})["value"].get<double>();
    }
    std::string trueTextAfter(const std::string& id, const std::vector<std::string>& settings) const {
        return after(id, settings)["true_text"].get<std::string>();
    }
};

TEST_F(TrueValues, AreReadWithTheirUnit) {
    EXPECT_EQ(valueAfter("Gain", "-3 dB"), static_cast<double>(0.425F));
    EXPECT_EQ(valueAfter("Gain", "-3dB"), static_cast<double>(0.425F));
    EXPECT_EQ(valueAfter("Gain", "1"), 1.0) << "a number alone is normalized";
    EXPECT_EQ(valueAfter("Gain", "-20.04 dB"), 0.0) << "reads as the lowest value does";
    EXPECT_EQ(valueAfter("Mix", "40 %"), static_cast<double>(0.4F));
    EXPECT_EQ(valueAfter("Ratio", "#5"), static_cast<double>(4.0F / 7.0F));
    EXPECT_EQ(valueAfter("Ratio", "1"), 1.0);
    EXPECT_EQ(valueAfter("HP", "on"), 1.0);
    EXPECT_EQ(valueAfter("HP", "Off"), 0.0);
    EXPECT_EQ(valueAfter("MasterBypassID", "off"), 0.0);
    EXPECT_EQ(valueAfter("MasterBypassID", "bypass"), 0.0);
    EXPECT_EQ(valueAfter("MasterBypassID", "on"), 1.0);
}

TEST_F(TrueValues, OfTimesBelongToTheOtherSettingsOfTheCall) {
    EXPECT_EQ(trueTextAfter("Atk", {"Atk=2.4 ms"}), "2.40 ms");
    const double usual = valueAfter("Atk", "2 ms");
    const json ofCurve8 = after("Atk", {"Atk=2 ms", "Ratio=#8"});
    EXPECT_EQ(ofCurve8["true_text"], "2.00 ms");
    EXPECT_GT(ofCurve8["value"].get<double>(), usual + 0.1);
    EXPECT_EQ(after("Atk", {"Ratio=#8", "Atk=2 ms"})["value"], ofCurve8["value"]);
    EXPECT_EQ(trueTextAfter("Rls", {"Rls=0.1 s", "UK=on"}), "100 ms");
    EXPECT_NE(after("Rls", {"Rls=0.1 s", "UK=on"})["value"], after("Rls", {"Rls=0.1 s"})["value"]);
    EXPECT_EQ(after("Atk", {"Atk=2 ms", "Atk=0.25", "Ratio=#8"})["value"], 0.25) << "the last one counts";
}

TEST_F(TrueValues, AreShownAsTheyAreRead) {
    for (const std::string id : {"MasterBypassID", "Gain", "Hot", "Ratio", "HP", "Atk"}) {
        for (const std::string normalized : {"0", "1"}) {
            const std::string text = trueTextAfter(id, {id + '=' + normalized});
            EXPECT_NEAR(valueAfter(id, text), std::stod(normalized), 0.01) << id << ' ' << text;
        }
    }
}

TEST_F(ParamsCommand, RefusesUnknownParameters) {
    EXPECT_EQ(refusal(2, {"params", "hot"}), R"(unknown parameter "hot"; did you mean "Hot"?)");
    EXPECT_EQ(refusal(2, {"params", "Treble"}),
              R"(unknown parameter "Treble"; expected one that varno params lists)");
}

} // namespace
} // namespace varno::test
