#include "Host/PageTable.h"

#include "ACF/ACFPtr.h"
#include "Host/HostObject.h"
#include "Tests/Host/TestContext.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

class PageTableTest : public testing::Test {
protected:
    ACFPtr<PageTable> table = ACFPtr<PageTable>::Adopt(new PageTable(testContext()));

    std::string mapped(std::int32_t page, std::int32_t slot) {
        HostString id("unset");
        EXPECT_EQ(AAX_SUCCESS, table->GetMappedParameterID(page, slot, &id));
        return id.text();
    }

    void setName(const char* id, const char* name, std::int32_t length) {
        const HostString text{std::string(name)};
        EXPECT_EQ(AAX_SUCCESS, table->SetParameterNameVariation(id, &text, length));
    }
};

TEST_F(PageTableTest, InsertsAndRemovesPages) {
    std::int32_t count = -1;
    EXPECT_EQ(AAX_SUCCESS, table->InsertPage(0));
    EXPECT_EQ(AAX_SUCCESS, table->MapParameterID("A", 0, 0));
    EXPECT_EQ(AAX_SUCCESS, table->InsertPage(0));
    EXPECT_EQ(AAX_SUCCESS, table->GetNumPages(&count));
    EXPECT_EQ(2, count);
    EXPECT_EQ("", mapped(0, 0));
    EXPECT_EQ("A", mapped(1, 0));
    EXPECT_EQ(AAX_SUCCESS, table->RemovePage(0));
    EXPECT_EQ("A", mapped(0, 0));
    EXPECT_EQ(AAX_SUCCESS, table->Clear());
    EXPECT_EQ(AAX_SUCCESS, table->GetNumPages(&count));
    EXPECT_EQ(0, count);
}

TEST_F(PageTableTest, MapsAndFreesSlots) {
    std::int32_t count = -1;
    std::uint8_t isEmpty = 9;
    table->InsertPage(0);
    EXPECT_EQ(AAX_SUCCESS, table->Empty(&isEmpty));
    EXPECT_EQ(1, isEmpty);
    table->MapParameterID("A", 0, 3);
    EXPECT_EQ(AAX_SUCCESS, table->GetNumMappedParameterIDs(0, &count));
    EXPECT_EQ(4, count);
    EXPECT_EQ("", mapped(0, 1));
    EXPECT_EQ("A", mapped(0, 3));
    EXPECT_EQ(AAX_SUCCESS, table->Empty(&isEmpty));
    EXPECT_EQ(0, isEmpty);
    EXPECT_EQ(AAX_SUCCESS, table->ClearMappedParameter(0, 3));
    EXPECT_EQ(AAX_SUCCESS, table->GetNumMappedParameterIDs(0, &count));
    EXPECT_EQ(0, count);
}

TEST_F(PageTableTest, RefusesPagesAndSlotsOutOfRange) {
    std::int32_t count = -1;
    HostString id("unset");
    table->InsertPage(0);
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, table->InsertPage(2));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, table->InsertPage(-1));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, table->RemovePage(1));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, table->RemovePage(-1));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, table->MapParameterID("A", 1, 0));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, table->MapParameterID("A", 0, -1));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, table->ClearMappedParameter(0, -1));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, table->ClearMappedParameter(1, 0));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, table->GetMappedParameterID(1, 0, &id));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, table->GetNumMappedParameterIDs(1, &count));
    EXPECT_EQ("unset", id.text());
    EXPECT_EQ(-1, count);
}

TEST_F(PageTableTest, KeepsNameVariationsByLength) {
    setName("A", "Alpha", 5);
    setName("A", "Al", 2);
    setName("A", "Alfa", 5);
    setName("B", "B", 1);
    std::int32_t count = 0;
    std::int32_t length = 0;
    HostString text;
    EXPECT_EQ(AAX_SUCCESS, table->GetNumParametersWithNameVariations(&count));
    EXPECT_EQ(2, count);
    EXPECT_EQ(AAX_SUCCESS, table->GetNameVariationParameterIDAtIndex(1, &text));
    EXPECT_EQ("B", text.text());
    EXPECT_EQ(AAX_SUCCESS, table->GetNumNameVariationsForParameter("A", &count));
    EXPECT_EQ(2, count);
    EXPECT_EQ(AAX_SUCCESS, table->GetParameterNameVariationAtIndex("A", 1, &text, &length));
    EXPECT_EQ("Alfa", text.text());
    EXPECT_EQ(5, length);
    EXPECT_EQ(AAX_SUCCESS, table->GetParameterNameVariationOfLength("A", 2, &text));
    EXPECT_EQ("Al", text.text());
    EXPECT_EQ(AAX_SUCCESS, table->ClearNameVariationsForParameter("A"));
    EXPECT_EQ(AAX_SUCCESS, table->GetNumParametersWithNameVariations(&count));
    EXPECT_EQ(1, count);
    EXPECT_EQ(AAX_SUCCESS, table->ClearParameterNameVariations());
    EXPECT_EQ(AAX_SUCCESS, table->GetNumParametersWithNameVariations(&count));
    EXPECT_EQ(0, count);
}

TEST_F(PageTableTest, RefusesUnknownNameVariations) {
    setName("A", "Al", 2);
    std::int32_t number = -1;
    HostString text("unset");
    EXPECT_EQ(AAX_ERROR_INVALID_PARAMETER_INDEX, table->GetNameVariationParameterIDAtIndex(1, &text));
    EXPECT_EQ(AAX_ERROR_INVALID_PARAMETER_INDEX, table->GetNameVariationParameterIDAtIndex(-1, &text));
    EXPECT_EQ(AAX_ERROR_INVALID_PARAMETER_ID, table->GetNumNameVariationsForParameter("B", &number));
    EXPECT_EQ(AAX_ERROR_INVALID_PARAMETER_ID,
              table->GetParameterNameVariationAtIndex("B", 0, &text, &number));
    EXPECT_EQ(AAX_ERROR_INVALID_PARAMETER_INDEX,
              table->GetParameterNameVariationAtIndex("A", 1, &text, &number));
    EXPECT_EQ(AAX_ERROR_INVALID_PARAMETER_ID, table->GetParameterNameVariationOfLength("A", 3, &text));
    EXPECT_EQ(AAX_ERROR_INVALID_PARAMETER_ID, table->ClearNameVariationsForParameter("B"));
    EXPECT_EQ(AAX_ERROR_INVALID_ARGUMENT, table->SetParameterNameVariation("A", &text, 0));
    EXPECT_EQ("unset", text.text());
    EXPECT_EQ(-1, number);
}

TEST_F(PageTableTest, RefusesNull) {
    const HostString text;
    HostString out;
    std::int32_t number = 0;
    table->InsertPage(0);
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, table->Empty(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, table->GetNumPages(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, table->GetNumMappedParameterIDs(0, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, table->GetMappedParameterID(0, 0, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, table->MapParameterID(nullptr, 0, 0));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, table->GetNumParametersWithNameVariations(nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, table->GetNameVariationParameterIDAtIndex(0, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, table->GetNumNameVariationsForParameter("A", nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, table->GetParameterNameVariationAtIndex("A", 0, nullptr, &number));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, table->GetParameterNameVariationAtIndex("A", 0, &out, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, table->GetParameterNameVariationOfLength("A", 1, nullptr));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, table->SetParameterNameVariation("A", nullptr, 1));
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, table->SetParameterNameVariation(nullptr, &text, 1));
    EXPECT_EQ(AAX_ERROR_INVALID_PARAMETER_ID, table->ClearNameVariationsForParameter(nullptr));
}

TEST_F(PageTableTest, AFirstVersionTableIsFilledWithPagesOnly) {
    HostOptions options;
    options.withheld = {IID_IAAXPageTableV2};
    const auto old = ACFPtr<PageTable>::Adopt(new PageTable(testContext(options)));
    const PageTableContent content{{{{1, "A"}}}, {{"A", {{2, "Al"}}}}};
    EXPECT_EQ(AAX_SUCCESS, fillPageTable(content, old.Get()));
    EXPECT_EQ(content.pages, old->content().pages);
    EXPECT_TRUE(old->content().names.empty());
    EXPECT_EQ(AAX_SUCCESS, fillPageTable(content, table.Get()));
    EXPECT_EQ(content.names, table->content().names);
    EXPECT_EQ(AAX_ERROR_NULL_ARGUMENT, fillPageTable(content, nullptr));
}

} // namespace
} // namespace varno
