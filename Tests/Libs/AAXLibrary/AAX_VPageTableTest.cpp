#include "AAX_VPageTable.h"
#include "AAX_CString.h"
#include "Tests/Support/ForwardingCheck.h"
#include "Tests/Support/RecordingPageTable.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

using T = AAX_IPageTable;

constexpr auto kOld = AAX_ERROR_UNIMPLEMENTED;
constexpr const char* kID = "Gain";

std::vector<Operation<T>> allOperations() {
    const auto text = std::ref<AAX_IString>(*somewhere<AAX_CString>());
    const auto name = std::cref<AAX_IString>(*somewhere<AAX_CString>());
    const auto count = std::ref(*somewhere<std::int32_t>());
    const auto length = std::ref(*somewhere<std::int32_t, 1>());
    const auto flag = std::ref(*somewhere<std::uint8_t>());
    return {
        operation<T>("Clear", 1, kOld, &T::Clear),
        operation<T>("Empty", 1, kOld, &T::Empty, flag),
        operation<T>("GetNumPages", 1, kOld, &T::GetNumPages, count),
        operation<T>("InsertPage", 1, kOld, &T::InsertPage, 2),
        operation<T>("RemovePage", 1, kOld, &T::RemovePage, 3),
        operation<T>("GetNumMappedParameterIDs", 1, kOld, &T::GetNumMappedParameterIDs, 4, count),
        operation<T>("ClearMappedParameter", 1, kOld, &T::ClearMappedParameter, 5, 6),
        operation<T>("GetMappedParameterID", 1, kOld, &T::GetMappedParameterID, 7, 8, text),
        operation<T>("MapParameterID", 1, kOld, &T::MapParameterID, kID, 9, 10),
        operation<T>("GetNumParametersWithNameVariations", 2, kOld, &T::GetNumParametersWithNameVariations,
                     count),
        operation<T>("GetNameVariationParameterIDAtIndex", 2, kOld, &T::GetNameVariationParameterIDAtIndex,
                     11, text),
        operation<T>("GetNumNameVariationsForParameter", 2, kOld, &T::GetNumNameVariationsForParameter, kID,
                     count),
        operation<T>("GetParameterNameVariationAtIndex", 2, kOld, &T::GetParameterNameVariationAtIndex, kID,
                     12, text, length),
        operation<T>("GetParameterNameVariationOfLength", 2, kOld, &T::GetParameterNameVariationOfLength, kID,
                     13, text),
        operation<T>("ClearParameterNameVariations", 2, kOld, &T::ClearParameterNameVariations),
        operation<T>("ClearNameVariationsForParameter", 2, kOld, &T::ClearNameVariationsForParameter, kID),
        operation<T>("SetParameterNameVariation", 2, kOld, &T::SetParameterNameVariation, kID, name, 14),
    };
}

TEST(AAX_VPageTableTest, ForwardsToTheVersionThatCarriesTheOperation) {
    expectForwarding<RecordingPageTable, T>(
        {IID_IAAXPageTableV1, IID_IAAXPageTableV2}, allOperations(),
        [](IACFUnknown* host) { return std::make_unique<AAX_VPageTable>(host); });
}

TEST(AAX_VPageTableTest, VirtualSlotsHaveTheirOrder) {
    expectConsecutive(slotsOf(allOperations()));
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
