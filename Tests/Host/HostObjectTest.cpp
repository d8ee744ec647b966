#include "Host/HostObject.h"
#include "ACF/ACFPtr.h"
#include "Host/HostDescriptors.h"
#include "Tests/Host/TestContext.h"
#include "Tests/Support/SingleStep.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

TEST(HostObjectTest, CountsItsReferencesAndLeavesTheLedgerWithTheLast) {
    const auto context = testContext();
    auto* map = new HostPropertyMap(context);
    EXPECT_EQ(1, context->ledger.total());
    EXPECT_EQ(2U, map->AddRef());
    EXPECT_EQ(2U, map->references());
    EXPECT_EQ(1U, map->Release());
    EXPECT_EQ(0U, map->Release());
    EXPECT_EQ(0, context->ledger.total());
}

#if VARNO_HAS_SINGLE_STEP
TEST(HostObjectTest, CountsReferencesOfSeveralThreadsInOneOperation) {
    const auto map = ACFPtr<HostPropertyMap>::Adopt(new HostPropertyMap(testContext()));
    const auto add = [&map] { map->AddRef(); };
    const auto release = [&map] { map->Release(); };
    EXPECT_GT(test::callAtEachInstruction(
                  add, add, [] {},
                  [&] {
                      EXPECT_EQ(3U, map->references());
                      map->giveBack(map->references() - 1);
                  }),
              1);
    map->giveBack(1); // of the last time, when nothing came in between
    EXPECT_GT(test::callAtEachInstruction(
                  release, release,
                  [&] {
                      add();
                      add();
                  },
                  [&] {
                      EXPECT_EQ(1U, map->references());
                      map->giveBack(map->references() - 1);
                  }),
              1);
    release();
}
#endif

TEST(HostObjectTest, AnswersWithOneReferenceOrWithNull) {
    const auto map = ACFPtr<HostPropertyMap>::Adopt(new HostPropertyMap(testContext()));
    void* out = nullptr;
    EXPECT_EQ(ACF_OK, map->QueryInterface(IID_IAAXPropertyMapV1, &out));
    EXPECT_EQ(2U, map->references());
    map->Release();
    out = &out;
    EXPECT_EQ(ACF_E_NOINTERFACE, map->QueryInterface(IID_IAAXTransportV1, &out));
    EXPECT_EQ(nullptr, out);
    EXPECT_EQ(1U, map->references());
    EXPECT_EQ(ACF_E_NOINTERFACE, map->QueryInterface(IID_IACFUnknown, nullptr));
}

TEST(HostObjectTest, HasOneRootInterface) {
    const auto map = ACFPtr<HostPropertyMap>::Adopt(new HostPropertyMap(testContext()));
    const auto root = ACFPtr<IACFUnknown>::Query(map.Get(), IID_IACFUnknown);
    const auto same = ACFPtr<AAX_IACFPropertyMap>::Query(root.Get(), IID_IAAXPropertyMapV1);
    const auto again = ACFPtr<IACFUnknown>::Query(same.Get(), IID_IACFUnknown);
    EXPECT_EQ(root.Get(), again.Get());
}

TEST(HostObjectTest, DoesNotAnswerToWhatIsWithheld) {
    HostOptions options;
    options.withheld = {IID_IAAXPropertyMapV1, IID_IACFUnknown};
    const auto map = ACFPtr<HostPropertyMap>::Adopt(new HostPropertyMap(testContext(options)));
    void* out = &out;
    EXPECT_EQ(ACF_E_NOINTERFACE, map->QueryInterface(IID_IAAXPropertyMapV1, &out));
    EXPECT_EQ(nullptr, out);
    EXPECT_EQ(ACF_OK, map->QueryInterface(IID_IACFUnknown, &out));
    map->Release();
}

TEST(HostObjectTest, DistinguishesItsOwnObjectsFromOthers) {
    const auto map = ACFPtr<HostPropertyMap>::Adopt(new HostPropertyMap(testContext()));
    EXPECT_EQ(map.Get(), ownObject<HostPropertyMap>(map.Get()));
    EXPECT_EQ(1U, map->references());
    EXPECT_EQ(nullptr, ownObject<HostPropertyMap>(nullptr));
}

TEST(HostReferenceTest, ReportsWhatIsHeldTooMuch) {
    const auto context = testContext();
    auto* map = new HostPropertyMap(context);
    {
        const HostReference<HostPropertyMap> reference(map, "map");
        map->AddRef();
        map->AddRef();
    }
    ASSERT_EQ(1U, context->monitor->violations().size());
    EXPECT_EQ("references to the map: 2 too many held", context->monitor->violations()[0].text);
    EXPECT_EQ(2U, map->references());
    map->Release();
    map->Release();
}

TEST(HostReferenceTest, SurvivesTooManyReleases) {
    const auto context = testContext();
    {
        auto* map = new HostPropertyMap(context);
        const HostReference<HostPropertyMap> reference(map, "map");
        map->Release();
        map->Release();
        EXPECT_EQ(AAX_SUCCESS, reference->AddProperty(AAX_eProperty_Host54, 1));
    }
    ASSERT_EQ(1U, context->monitor->violations().size());
    EXPECT_EQ("references to the map: 2 given back too often", context->monitor->violations()[0].text);
    EXPECT_EQ(0, context->ledger.total());
}

TEST(HostLedgerTest, CountsByKind) {
    HostLedger ledger;
    EXPECT_EQ(0, ledger.total());
    EXPECT_EQ("", ledger.text());
    ledger.add("property map");
    ledger.add("controller");
    ledger.add("property map");
    EXPECT_EQ(3, ledger.total());
    EXPECT_EQ("1 controller, 2 property map", ledger.text());
    ledger.remove("controller");
    EXPECT_EQ("2 property map", ledger.text());
}

TEST(HostStringTest, IsWrittenThroughItsInterface) {
    HostString text;
    AAX_IString& face = text;
    EXPECT_EQ(0U, face.Length());
    EXPECT_STREQ("", face.Get());
    face.Set("one");
    EXPECT_EQ("one", text.text());
    face = "two";
    EXPECT_EQ("two", text.text());
    const HostString other("three");
    face = static_cast<const AAX_IString&>(other);
    EXPECT_EQ("three", text.text());
    EXPECT_EQ(5U, face.Length());
    EXPECT_EQ(0xFFFFFFFEU, face.MaxLength());
}

} // namespace
} // namespace varno
