#include "Host/PageTableFile.h"
#include "Host/InstanceHost.h"
#include "Host/PageTable.h"
#include "Tests/Host/FixtureTest.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace varno {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

constexpr AAX_CTypeID kMaker = AAX_FourCC("Make");
constexpr AAX_CTypeID kProduct = AAX_FourCC("Prod");
constexpr AAX_CTypeID kMono = AAX_FourCC("Mono");

// What is wrong with an effect element's contents.
std::string errorOf(const std::string& contents) {
    const TemporaryFolder folder;
    const auto path =
        folder.write("t.xml", R"(<pageTables><effect manufacturer="Make" product="Prod" plugIns="Mono">)" +
                                  contents + "</effect></pageTables>");
    const std::string prefix = "page table file " + path.string() + ": ";
    const std::string text = hostErrorOf([&] { PageTableFile::read(path); });
    return text.compare(0, prefix.size(), prefix) == 0 ? text.substr(prefix.size()) : text;
}

TEST(PageTableFileTest, ReadsTablesNamesAndLayouts) {
    const TemporaryFolder folder;
    const auto path = folder.write("t.xml", R"(<pageTables>
        <effect manufacturer="Make" product="Prod" plugIns="Mono Ster">
          <names parameter="A"><name length="2">Al</name></names>
          <table type="CtSf" pageSize="4">
            <page><control slot="0" parameter="A"/><control slot="3" parameter="B"/></page>
            <page/>
          </table>
          <layout name="L"><table type="CtSf" pageSize="2"/></layout>
        </effect></pageTables>)");
    const PageTableFile file = PageTableFile::read(path);
    ASSERT_EQ(1U, file.effects().size());
    EXPECT_THAT(file.effects()[0].plugInIDs, ElementsAre(kMono, AAX_FourCC("Ster")));
    EXPECT_TRUE(file.hasEffect(kMaker, kProduct, kMono));
    EXPECT_FALSE(file.hasEffect(kMaker, kProduct, kMaker));
    EXPECT_FALSE(file.hasEffect(kProduct, kProduct, kMono));
    const PageTableContent* table = file.tableOfEffect(kMaker, kProduct, kMono, kControlSurfaceTable, 4);
    ASSERT_NE(nullptr, table);
    ASSERT_EQ(2U, table->pages.size());
    EXPECT_EQ((PageSlots{{0, "A"}, {3, "B"}}), table->pages[0]);
    EXPECT_EQ("Al", table->names.at("A").at(2));
    EXPECT_EQ(nullptr, file.tableOfEffect(kMaker, kProduct, kMono, kControlSurfaceTable, 8));
    EXPECT_EQ(nullptr, file.tableOfEffect(kMaker, kProduct, kMono, kMaker, 4));
    EXPECT_EQ(nullptr, file.tableOfEffect(kMaker, kMaker, kMono, kControlSurfaceTable, 4));
    ASSERT_NE(nullptr, file.tableOfLayout("L", kControlSurfaceTable, 2));
    EXPECT_TRUE(file.tableOfLayout("L", kControlSurfaceTable, 2)->pages.empty());
    EXPECT_EQ("Al", file.tableOfLayout("L", kControlSurfaceTable, 2)->names.at("A").at(2));
    EXPECT_EQ(nullptr, file.tableOfLayout("M", kControlSurfaceTable, 2));
}

TEST(PageTableFileTest, RefusesWhatIsNoPageTableFile) {
    const TemporaryFolder folder;
    const auto errorOfText = [&](const std::string& text) {
        const auto path = folder.write("t.xml", text);
        return hostErrorOf([&] { PageTableFile::read(path); });
    };
    const std::string prefix = "page table file " + (folder.path() / "t.xml").string() + ": ";
    EXPECT_EQ(prefix + "no element <pageTables>", errorOfText("<other/>"));
    EXPECT_THAT(errorOfText("<pageTables><effect"), StartsWith(prefix));
    EXPECT_THAT(errorOfText(""), StartsWith(prefix));
    EXPECT_EQ("page table file nowhere.xml: File was not found",
              hostErrorOf([] { PageTableFile::read("nowhere.xml"); }));
}

TEST(PageTableFileTest, ReportsWhatIsWrong) {
    EXPECT_EQ("", errorOf(""));
    EXPECT_EQ("<table> has no attribute \"type\"", errorOf("<table pageSize=\"8\"/>"));
    EXPECT_EQ("found identifier \"Ct\", expected four characters",
              errorOf("<table type=\"Ct\" pageSize=\"8\"/>"));
    EXPECT_EQ("<table> has pageSize \"0\", expected 1 to 1024",
              errorOf("<table type=\"CtSf\" pageSize=\"0\"/>"));
    EXPECT_EQ("<control> has slot \"4\", expected 0 to 3",
              errorOf("<table type=\"CtSf\" pageSize=\"4\"><page><control slot=\"4\" "
                      "parameter=\"A\"/></page></table>"));
    EXPECT_EQ("<control> has no attribute \"parameter\"",
              errorOf("<table type=\"CtSf\" pageSize=\"4\"><page><control slot=\"1\"/></page></table>"));
    EXPECT_EQ("name \"Alpha\" does not fit in 3 characters",
              errorOf("<names parameter=\"A\"><name length=\"3\">Alpha</name></names>"));
    EXPECT_EQ("name \"\" does not fit in 3 characters",
              errorOf("<names parameter=\"A\"><name length=\"3\"/></names>"));
    EXPECT_EQ("<layout> has no attribute \"name\"", errorOf("<layout/>"));
}

constexpr const char* kText = R"(<pageTables>
  <effect manufacturer="Fixt" product="Gain" plugIns="FxGm FxGs">
    <names parameter="Gain"><name length="3">Gai</name></names>
    <table type="CtSf" pageSize="8"><page><control slot="2" parameter="Gain"/></page></table>
    <layout name="Strip">
      <table type="CtSf" pageSize="2"><page><control slot="1" parameter="Bypass"/></page></table>
    </layout>
  </effect>
</pageTables>)";

class HostPageTableControllerTest : public FixtureTest {
protected:
    void SetUp() override {
        folder.write("Fixture.xml", kText);
        options.resources = folder.path();
        instance = makeInstance();
        table = ACFPtr<PageTable>::Adopt(new PageTable(module()->context()));
        controller =
            ACFPtr<AAX_IACFPageTableController_V2>::Query(&instance->host(), IID_IAAXPageTableControllerV2);
    }

    void TearDown() override {
        controller.Reset();
        table.Reset();
        instance.reset();
        FixtureTest::TearDown();
    }

    AAX_Result copyForEffect(AAX_CTypeID plugIn, std::int32_t pageSize) {
        return controller->CopyTableForEffect(fixture::kManufacturerID, fixture::kProductID,
                                              static_cast<std::int32_t>(plugIn), kControlSurfaceTable,
                                              pageSize, table.Get());
    }

    TemporaryFolder folder;
    std::unique_ptr<Instance> instance;
    ACFPtr<PageTable> table;
    ACFPtr<AAX_IACFPageTableController_V2> controller;
};

TEST_F(HostPageTableControllerTest, CopiesTheTableOfAnEffect) {
    EXPECT_EQ(AAX_SUCCESS, copyForEffect(fixture::kMonoID, 8));
    ASSERT_EQ(1U, table->content().pages.size());
    EXPECT_EQ((PageSlots{{2, "Gain"}}), table->content().pages[0]);
    EXPECT_EQ("Gai", table->content().names.at("Gain").at(3));
}

TEST_F(HostPageTableControllerTest, ReplacesWhatTheTableHeld) {
    table->InsertPage(0);
    table->InsertPage(0);
    table->MapParameterID("Bypass", 0, 0);
    EXPECT_EQ(AAX_SUCCESS, copyForEffect(fixture::kMonoID, 8));
    EXPECT_EQ(1U, table->content().pages.size());
}

TEST_F(HostPageTableControllerTest, CopiesTheTableOfALayout) {
    EXPECT_EQ(AAX_SUCCESS, controller->CopyTableOfLayout(fixture::kEffectID, "Strip", kControlSurfaceTable, 2,
                                                         table.Get()));
    EXPECT_EQ((PageSlots{{1, "Bypass"}}), table->content().pages.at(0));
}

TEST_F(HostPageTableControllerTest, CopiesFromAFile) {
    const std::string path = (folder.path() / "Fixture.xml").string();
    EXPECT_EQ(AAX_SUCCESS, controller->CopyTableForEffectFromFile(path.c_str(), AAX_eTextEncoding_UTF8,
                                                                  fixture::kManufacturerID,
                                                                  fixture::kProductID, fixture::kStereoID,
                                                                  kControlSurfaceTable, 8, table.Get()));
    EXPECT_EQ(AAX_SUCCESS,
              controller->CopyTableOfLayoutFromFile(path.c_str(), AAX_eTextEncoding_UTF8, "Strip",
                                                    kControlSurfaceTable, 2, table.Get()));
}

TEST_F(HostPageTableControllerTest, RefusesWhatItDoesNotKnow) {
    EXPECT_EQ(AAX_ERROR_UNKNOWN_PLUGIN, copyForEffect(AAX_FourCC("Nope"), 8));
    EXPECT_EQ(AAX_ERROR_UNKNOWN_ID, copyForEffect(fixture::kMonoID, 16));
    EXPECT_EQ(AAX_ERROR_UNKNOWN_PLUGIN,
              controller->CopyTableOfLayout("nobody", "Strip", kControlSurfaceTable, 2, table.Get()));
    EXPECT_EQ(AAX_ERROR_UNKNOWN_ID, controller->CopyTableOfLayout(fixture::kEffectID, "Other",
                                                                  kControlSurfaceTable, 2, table.Get()));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT,
              controller->CopyTableOfLayout(nullptr, "Strip", kControlSurfaceTable, 2, table.Get()));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, controller->CopyTableOfLayout(fixture::kEffectID, nullptr,
                                                                     kControlSurfaceTable, 2, table.Get()));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT,
              controller->CopyTableForEffect(fixture::kManufacturerID, fixture::kProductID, fixture::kMonoID,
                                             kControlSurfaceTable, 8, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT,
              controller->CopyTableForEffect(fixture::kManufacturerID, fixture::kProductID, fixture::kMonoID,
                                             kControlSurfaceTable, 8, &instance->host()));
    EXPECT_TRUE(table->content().pages.empty());
}

TEST_F(HostPageTableControllerTest, RefusesFilesThatCannotBeRead) {
    EXPECT_EQ(AAX_ERROR_INVALID_PATH, controller->CopyTableForEffectFromFile(
                                          "nowhere.xml", AAX_eTextEncoding_UTF8, 1, 2, 3, 4, 8, table.Get()));
    EXPECT_EQ(AAX_ERROR_INVALID_PATH, controller->CopyTableOfLayoutFromFile(
                                          "nowhere.xml", AAX_eTextEncoding_UTF8, "Strip", 4, 8, table.Get()));
    const std::string path = (folder.path() / "Fixture.xml").string();
    EXPECT_EQ(AAX_ERROR_INVALID_PATH,
              controller->CopyTableOfLayoutFromFile(path.c_str(), static_cast<AAX_ETextEncoding>(9), "Strip",
                                                    kControlSurfaceTable, 2, table.Get()));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, controller->CopyTableForEffectFromFile(nullptr, AAX_eTextEncoding_UTF8,
                                                                              1, 2, 3, 4, 8, table.Get()));
}

TEST_F(HostPageTableControllerTest, AMissingResourceCountsAsNoTable) {
    std::filesystem::remove(folder.path() / "Fixture.xml");
    EXPECT_EQ(AAX_ERROR_UNKNOWN_ID, copyForEffect(fixture::kMonoID, 8));
    EXPECT_EQ(AAX_ERROR_UNKNOWN_ID, controller->CopyTableOfLayout(fixture::kEffectID, "Strip",
                                                                  kControlSurfaceTable, 2, table.Get()));
}

} // namespace
} // namespace varno
