#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <nlohmann/json.hpp>

namespace varno::test {
namespace {

using nlohmann::json;

class DescribeCommand : public ProgramTest {};

TEST_F(DescribeCommand, PrintsAllThatTheModuleTells) {
    // Made by: varno describe
    EXPECT_EQ(varnoOut({"describe"}), readFile(std::string(VARNO_GOLDEN_FOLDER) + "/describe-module.txt"));
}

TEST_F(DescribeCommand, PrintsJson) {
    const json module = json::parse(varnoOut({"describe", "--json"}));
    EXPECT_EQ(module["manufacturer"], "Morvak");
    EXPECT_EQ(module["package_version"], 1);
    EXPECT_EQ(module["package_names"].size(), 4U);
    ASSERT_EQ(module["effects"].size(), 1U);
    const json& effect = module["effects"][0];
    EXPECT_EQ(effect["names"], json::parse(R"(["Varno-S", "Varno-S", "VarS", "VarS", "Va"])"));
    EXPECT_EQ(effect["categories"], json::parse(R"(["dynamics"])"));
    EXPECT_EQ(effect["procedures"], json::parse(R"(["data model", "editor"])"));
    EXPECT_EQ(effect["resources"], json::parse(R"([{"type": "page table", "file": "Varno-S.xml"}])"));
    EXPECT_EQ(effect["meters"][0], json::parse(R"({"id": "ABC1", "name": "GRL",
                              "properties": {"200": "gain reduction", "201": "1", "202": "1"}})"));
    ASSERT_EQ(effect["variants"].size(), 2U);
    const json& stereo = effect["variants"][1];
    EXPECT_EQ(stereo["inputs"], 2);
    EXPECT_EQ(stereo["outputs"], 2);
    EXPECT_EQ(stereo["fields"].size(), 30U);
    EXPECT_EQ(stereo["fields"][4]["meters"], json::parse(R"(["mtGL", "mtGR", "mtIR", "mtOR"])"));
    EXPECT_EQ(stereo["native"][0]["properties"]["13"], "VDRs");
    EXPECT_EQ(stereo["ti"][0]["file"], "VarnoDSP_SS_TI.dll");
    EXPECT_EQ(stereo["ti"][0]["properties"]["63"], "3622");
}

} // namespace
} // namespace varno::test
