#include "AAX_VPageTable.h"
#include "AAX_CString.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingInstance.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using PageTable = AAX_IPageTable;

std::vector<Operation<PageTable>> pageTableOperations() {
    const auto text = std::ref<AAX_IString>(*somewhere<AAX_CString>());
    const auto name = std::cref<AAX_IString>(*somewhere<AAX_CString>());
    const auto count = std::ref(*somewhere<std::int32_t>());
    const auto length = std::ref(*somewhere<std::int32_t, 1>());
    const auto flag = std::ref(*somewhere<std::uint8_t>());
    return {
        operation<PageTable>("Clear", 1, kWithoutVersion, &PageTable::Clear),
        operation<PageTable>("Empty", 1, kWithoutVersion, &PageTable::Empty, flag),
        operation<PageTable>("GetNumPages", 1, kWithoutVersion, &PageTable::GetNumPages, count),
        operation<PageTable>("InsertPage", 1, kWithoutVersion, &PageTable::InsertPage, 2),
        operation<PageTable>("RemovePage", 1, kWithoutVersion, &PageTable::RemovePage, 3),
        operation<PageTable>("GetNumMappedParameterIDs", 1, kWithoutVersion,
                             &PageTable::GetNumMappedParameterIDs, 4, count),
        operation<PageTable>("ClearMappedParameter", 1, kWithoutVersion, &PageTable::ClearMappedParameter, 5,
                             6),
        operation<PageTable>("GetMappedParameterID", 1, kWithoutVersion, &PageTable::GetMappedParameterID, 7,
                             8, text),
        operation<PageTable>("MapParameterID", 1, kWithoutVersion, &PageTable::MapParameterID, kText, 9, 10),
        operation<PageTable>("GetNumParametersWithNameVariations", 2, kWithoutVersion,
                             &PageTable::GetNumParametersWithNameVariations, count),
        operation<PageTable>("GetNameVariationParameterIDAtIndex", 2, kWithoutVersion,
                             &PageTable::GetNameVariationParameterIDAtIndex, 11, text),
        operation<PageTable>("GetNumNameVariationsForParameter", 2, kWithoutVersion,
                             &PageTable::GetNumNameVariationsForParameter, kText, count),
        operation<PageTable>("GetParameterNameVariationAtIndex", 2, kWithoutVersion,
                             &PageTable::GetParameterNameVariationAtIndex, kText, 12, text, length),
        operation<PageTable>("GetParameterNameVariationOfLength", 2, kWithoutVersion,
                             &PageTable::GetParameterNameVariationOfLength, kText, 13, text),
        operation<PageTable>("ClearParameterNameVariations", 2, kWithoutVersion,
                             &PageTable::ClearParameterNameVariations),
        operation<PageTable>("ClearNameVariationsForParameter", 2, kWithoutVersion,
                             &PageTable::ClearNameVariationsForParameter, kText),
        operation<PageTable>("SetParameterNameVariation", 2, kWithoutVersion,
                             &PageTable::SetParameterNameVariation, kText, name, 14),
    };
}

TEST(AAX_VPageTableTest, ForwardsToTheVersionThatCarriesTheOperation) {
    expectForwarding<RecordingPageTable, PageTable>(
        {IID_IAAXPageTableV1, IID_IAAXPageTableV2}, pageTableOperations(),
        [](IACFUnknown* host) { return std::make_unique<AAX_VPageTable>(host); });
}

TEST(AAX_VPageTableTest, VirtualSlotsHaveTheirOrder) {
    expectConsecutive(slotsOf(pageTableOperations()));
}

TEST(AAX_VPageTableTest, IsValidWithATableBehindIt) {
    VersionedHost<RecordingPageTable> host({IID_IAAXPageTableV1}, 0);
    EXPECT_TRUE(AAX_VPageTable(host.object()).IsValid());
    FakeHost bare;
    EXPECT_FALSE(AAX_VPageTable(&bare).IsValid());
    EXPECT_FALSE(AAX_VPageTable(nullptr).IsValid());
}

} // namespace
} // namespace varno
