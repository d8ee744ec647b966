#include "Host/HostPageTableController.h"

#include "Host/InstanceHost.h"
#include "Host/PageTable.h"
#include "Host/PageTableFile.h"
#include "Tests/Host/FixtureTest.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

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
