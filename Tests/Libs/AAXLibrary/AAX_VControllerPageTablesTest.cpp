#include "AAX_VController.h"
#include "Tests/Support/FakeHostServices.h"
#include "Tests/Support/RecordingInstance.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace varno {
namespace {

constexpr auto kEncoding = AAX_eTextEncoding_UTF8;
constexpr const char* kPath = "path";
constexpr const char* kEffect = "effect";
constexpr const char* kLayout = "layout";

// A host that makes page tables and copies into them.
class AAX_VControllerPageTablesTest : public testing::Test {
protected:
    AAX_VControllerPageTablesTest() {
        mHost.offer(IID_IACFComponentFactory, &mFactory);
        mHost.offer(IID_IAAXPageTableController, &mStore);
        mHost.offer(IID_IAAXPageTableControllerV2, &mStoreV2);
        mFactory.offer(IID_IAAXPageTableV2, &mTable);
        mTable.offer(IID_IAAXPageTableV1, &mTable);
        mTable.offer(IID_IAAXPageTableV2, &mTable);
        mStore.result = AAX_SUCCESS;
        mStoreV2.result = AAX_SUCCESS;
    }
    ~AAX_VControllerPageTablesTest() override {
        EXPECT_EQ(mHost.references(), 0);
        EXPECT_EQ(mFactory.references(), 0);
        EXPECT_EQ(mStore.references(), 0);
        EXPECT_EQ(mStoreV2.references(), 0);
        EXPECT_EQ(mTable.references(), 0);
    }

    // Calls one of the four operations that make copies, 0 to 3.
    static std::unique_ptr<AAX_IPageTable> makeCopy(const AAX_IController& controller, int which) {
        switch (which) {
        case 0:
            return controller.CreateTableCopyForEffect(1, 2, 3, 4U, 5);
        case 1:
            return controller.CreateTableCopyForLayout(kEffect, kLayout, 4U, 5);
        case 2:
            return controller.CreateTableCopyForEffectFromFile(kPath, kEncoding, 1, 2, 3, 4U, 5);
        default:
            return controller.CreateTableCopyForLayoutFromFile(kPath, kEncoding, kLayout, 4U, 5);
        }
    }

    // The call with which the host is requested to copy.
    std::string expectedCall(int which) {
        IACFUnknown* table = &mTable;
        switch (which) {
        case 0:
            return callText("CopyTableForEffect", 1, 2, 3, 4U, 5, table);
        case 1:
            return callText("CopyTableOfLayout", kEffect, kLayout, 4U, 5, table);
        case 2:
            return callText("CopyTableForEffectFromFile", kPath, kEncoding, 1, 2, 3, 4U, 5, table);
        default:
            return callText("CopyTableOfLayoutFromFile", kPath, kEncoding, kLayout, 4U, 5, table);
        }
    }

    RecordingPageTableController& storeOf(int which) { return which < 2 ? mStore : mStoreV2; }

    FakeHost mHost;
    FakeComponentFactory mFactory{AAXCompID_PageTable};
    RecordingPageTable mTable;
    RecordingPageTableController mStore;
    RecordingPageTableController mStoreV2;
};

TEST_F(AAX_VControllerPageTablesTest, NewTableIsTheCallersReference) {
    const AAX_VController controller(&mHost);
    {
        const auto table = controller.CreatePageTable();
        EXPECT_EQ(table.Get(), &mTable);
        EXPECT_EQ(mTable.references(), 1);
    }
    EXPECT_EQ(mTable.references(), 0);
}

TEST_F(AAX_VControllerPageTablesTest, NoNewTableWithoutFactoryOrWhenItFails) {
    {
        mFactory.resultWhenFound = ACF_E_UNEXPECTED;
        const AAX_VController controller(&mHost);
        EXPECT_FALSE(controller.CreatePageTable());
        EXPECT_EQ(mTable.references(), 0);
    }
    mFactory.offer(IID_IAAXPageTableV2, nullptr);
    EXPECT_FALSE(AAX_VController(&mHost).CreatePageTable());
    mHost.offer(IID_IACFComponentFactory, nullptr);
    EXPECT_FALSE(AAX_VController(&mHost).CreatePageTable());
    EXPECT_FALSE(AAX_VController(nullptr).CreatePageTable());
}

TEST_F(AAX_VControllerPageTablesTest, CopiesAreMadeByTheHostAndOwnTheirTable) {
    const AAX_VController controller(&mHost);
    for (int which = 0; which < 4; ++which) {
        const auto copy = makeCopy(controller, which);
        ASSERT_NE(copy, nullptr) << which;
        EXPECT_EQ(storeOf(which).calls, std::vector<std::string>{expectedCall(which)});
        storeOf(which).calls.clear();
        // Version 1 and version 2 of the same table.
        EXPECT_EQ(mTable.references(), 2);
        mTable.calls.clear();
        std::int32_t pages = 0;
        EXPECT_EQ(copy->GetNumPages(pages), kHostResult);
        EXPECT_EQ(copy->ClearParameterNameVariations(), kHostResult);
        EXPECT_EQ(mTable.calls.size(), 2U);
    }
}

TEST_F(AAX_VControllerPageTablesTest, WithoutTheirControllerCopiesAreNullAndNothingIsMade) {
    mHost.offer(IID_IAAXPageTableController, nullptr);
    const AAX_VController withoutFirst(&mHost);
    EXPECT_EQ(makeCopy(withoutFirst, 0), nullptr);
    EXPECT_EQ(makeCopy(withoutFirst, 1), nullptr);
    EXPECT_TRUE(mFactory.asked.empty());
    EXPECT_NE(makeCopy(withoutFirst, 2), nullptr);

    mFactory.asked.clear();
    mHost.offer(IID_IAAXPageTableController, &mStore);
    mHost.offer(IID_IAAXPageTableControllerV2, nullptr);
    const AAX_VController withoutSecond(&mHost);
    EXPECT_EQ(makeCopy(withoutSecond, 2), nullptr);
    EXPECT_EQ(makeCopy(withoutSecond, 3), nullptr);
    EXPECT_TRUE(mFactory.asked.empty());
    EXPECT_NE(makeCopy(withoutSecond, 1), nullptr);
}

TEST_F(AAX_VControllerPageTablesTest, FailedCopiesAreNullAndReleased) {
    for (const AAX_Result failure : {static_cast<AAX_Result>(AAX_ERROR_UNKNOWN_ID), 1}) {
        mStore.result = failure;
        mStoreV2.result = failure;
        const AAX_VController controller(&mHost);
        for (int which = 0; which < 4; ++which) {
            EXPECT_EQ(makeCopy(controller, which), nullptr) << which;
            EXPECT_EQ(mTable.references(), 0);
        }
    }
}

TEST_F(AAX_VControllerPageTablesTest, WithoutATableNothingIsCopied) {
    mHost.offer(IID_IACFComponentFactory, nullptr);
    const AAX_VController controller(&mHost);
    for (int which = 0; which < 4; ++which) {
        EXPECT_EQ(makeCopy(controller, which), nullptr) << which;
        EXPECT_TRUE(storeOf(which).calls.empty());
    }
}

} // namespace
} // namespace varno
