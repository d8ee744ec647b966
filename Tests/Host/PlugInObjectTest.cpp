#include "Host/PlugInObject.h"

#include "AAX_IACFEffectParameters.h"
#include "Tests/Host/FixtureParameters.h"
#include "Tests/Host/FixtureTest.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

using DataModel = PlugInObject<AAX_IACFEffectParameters>;
using testing::ElementsAre;

class PlugInObjectTest : public FixtureTest {
protected:
    std::shared_ptr<ContractMonitor> watch{&monitor(), [](ContractMonitor*) {}};
};

TEST_F(PlugInObjectTest, ACallBeforeInitializationIsAViolation) {
    DataModel model(watch, "data model");
    ASSERT_TRUE(model.create(fixture::FixtureParameters::Create, IID_IAAXEffectParametersV1));
    EXPECT_EQ("the data model was called before its initialisation", hostErrorOf([&] { model.use(); }));
    EXPECT_THAT(takeViolations(),
                ElementsAre("lifecycle: the data model was called before its initialisation"));
}

TEST_F(PlugInObjectTest, ACallAfterTheEndIsAViolation) {
    DataModel model(watch, "data model");
    ASSERT_TRUE(model.create(fixture::FixtureParameters::Create, IID_IAAXEffectParametersV1));
    model.end();
    EXPECT_EQ(nullptr, model.unknown());
    EXPECT_NE("", hostErrorOf([&] { model.use(); }));
    EXPECT_EQ(1U, takeViolations().size());
}

} // namespace
} // namespace varno
