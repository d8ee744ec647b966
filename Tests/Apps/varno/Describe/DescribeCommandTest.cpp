#include "Tests/Apps/varno/Support/ProgramTest.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <filesystem>

namespace varno::test {
namespace {

using nlohmann::json;

class DescribeCommand : public ProgramTest {};

TEST_F(DescribeCommand, PrintsTheWholeDescription) {
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
    EXPECT_EQ(module["qualities"],
              json::parse(R"([{"name": "1x", "latency_frames": 1, "highest_rate_hz": 384000.0},
                              {"name": "2x", "latency_frames": 41, "highest_rate_hz": 192000.0},
                              {"name": "4x", "latency_frames": 46, "highest_rate_hz": 96000.0},
                              {"name": "8x", "latency_frames": 48, "highest_rate_hz": 48000.0}])"));
}

TEST_F(DescribeCommand, PrintsThePageTables) {
    // Made by: varno describe --page-table
    EXPECT_EQ(varnoOut({"describe", "--page-table"}),
              readFile(std::string(VARNO_GOLDEN_FOLDER) + "/describe-page-table.txt"));
}

TEST_F(DescribeCommand, PrintsThePageTablesAsJson) {
    const json tables = json::parse(varnoOut({"describe", "--page-table", "--json"}));
    ASSERT_FALSE(tables.empty());
    EXPECT_EQ(tables[0]["type"], "CtSf");
    EXPECT_EQ(tables[0]["page_size"], 8);
    EXPECT_EQ(tables[0]["layout"], nullptr);
    EXPECT_EQ(tables[0]["controls"][1], json::parse(R"({"page": 0, "slot": 1, "id": "HP", "name": "HP"})"));
    EXPECT_EQ(tables.back()["layout"], "Drive");
}

// The effect's bundle with another page table file.
class PageTableErrors : public ProgramTest {
protected:
    PageTableErrors() {
        std::filesystem::copy(VARNO_MODULE_BUNDLE, mBundle, std::filesystem::copy_options::recursive);
    }

    // The message about a file with these lines instead of the tables of the effect.
    std::string refusalOf(const std::string& content) const {
        writeFile(mFile, content);
        return refusal(1, {"describe", "--page-table", "--module", mBundle});
    }

    static std::string fileWith(const std::string& plugIn, const std::string& parameter) {
        return R"(<pageTables><effect manufacturer="Mrvk" product="Vdsp" plugIns=")" + plugIn +
               R"("><table type="CtSf" pageSize="8"><page><control slot="3" parameter=")" + parameter +
               R"("/></page></table></effect></pageTables>)";
    }

    const std::string mBundle = path("Varno-S.aaxplugin");
    const std::string mFile = mBundle + "/Contents/Resources/Varno-S.xml";
};

TEST_F(PageTableErrors, UnknownParameter) {
    EXPECT_EQ(refusalOf(fileWith("VDRm", "Hott")),
              mFile + R"(, table CtSf, page 0, slot 3: unknown parameter "Hott"; did you mean "Hot"?)");
}

TEST_F(PageTableErrors, NoTableForTheEffect) {
    EXPECT_THAT(refusalOf(fileWith("Else", "Hot")),
                testing::StartsWith(mFile + ": has no page table for effect \""));
}

TEST_F(PageTableErrors, UnreadableFile) {
    EXPECT_THAT(refusalOf("no XML"), testing::HasSubstr(mFile));
    std::filesystem::remove(mFile);
    EXPECT_THAT(refusal(1, {"describe", "--page-table", "--module", mBundle}), testing::HasSubstr(mFile));
}

} // namespace
} // namespace varno::test
