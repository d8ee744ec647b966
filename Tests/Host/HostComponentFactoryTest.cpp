#include "Host/HostComponentFactory.h"

#include "ACF/ACFPtr.h"
#include "Host/ModuleHost.h"
#include "Tests/Host/TestContext.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

class HostComponentFactoryTest : public testing::Test {
protected:
    std::shared_ptr<HostContext> context = testContext();
    ACFPtr<ModuleHost> module = ACFPtr<ModuleHost>::Adopt(new ModuleHost(context));
    ACFPtr<IACFComponentFactory> factory =
        ACFPtr<IACFComponentFactory>::Query(module.Get(), IID_IACFComponentFactory);

    bool makes(const acfCLSID& component, const acfIID& iid) {
        void* made = &made;
        const ACFRESULT result = factory->CreateComponent(nullptr, component, iid, &made);
        const auto owned = ACFPtr<IACFUnknown>::Adopt(static_cast<IACFUnknown*>(made));
        EXPECT_EQ(result == ACF_OK, static_cast<bool>(owned));
        return result == ACF_OK;
    }
};

TEST_F(HostComponentFactoryTest, MakesServicesAndPageTables) {
    EXPECT_TRUE(makes(AAXCompID_HostServices, IID_IAAXHostServicesV1));
    EXPECT_TRUE(makes(AAXCompID_HostServices, IID_IAAXHostServicesV3));
    EXPECT_TRUE(makes(AAXCompID_PageTable, IID_IAAXPageTableV1));
    EXPECT_TRUE(makes(AAXCompID_PageTable, IID_IAAXPageTableV2));
    EXPECT_EQ(1, context->ledger.total());
}

TEST_F(HostComponentFactoryTest, MakesNothingElse) {
    EXPECT_FALSE(makes(IID_IAAXControllerV1, IID_IACFUnknown));
    EXPECT_FALSE(makes(AAXCompID_PageTable, IID_IAAXHostServicesV1));
    EXPECT_EQ(ACF_E_NOINTERFACE,
              factory->CreateComponent(nullptr, AAXCompID_PageTable, IID_IAAXPageTableV1, nullptr));
    void* made = &made;
    EXPECT_EQ(ACF_E_NOINTERFACE,
              factory->CreateComponent(module.Get(), AAXCompID_PageTable, IID_IAAXPageTableV1, &made));
    EXPECT_EQ(nullptr, made);
    EXPECT_EQ(1, context->ledger.total());
}

TEST_F(HostComponentFactoryTest, MakesNoComponentForAWithheldInterface) {
    context->options.withheld = {IID_IAAXHostServicesV2};
    EXPECT_TRUE(makes(AAXCompID_HostServices, IID_IAAXHostServicesV1));
    EXPECT_FALSE(makes(AAXCompID_HostServices, IID_IAAXHostServicesV2));
}

} // namespace
} // namespace varno
