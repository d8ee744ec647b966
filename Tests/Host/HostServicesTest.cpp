#include "Host/HostServices.h"

#include "ACF/ACFPtr.h"
#include "Tests/Host/TestContext.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

TEST(HostServicesTest, EveryVersionCanBeWithheldOnItsOwn) {
    const acfIID versions[] = {IID_IAAXHostServicesV1, IID_IAAXHostServicesV2, IID_IAAXHostServicesV3};
    for (const acfIID& withheld : versions) {
        HostOptions options;
        options.withheld = {withheld};
        const auto services = ACFPtr<HostServices>::Adopt(new HostServices(testContext(options)));
        for (const acfIID& version : versions) {
            EXPECT_EQ(!(version == withheld),
                      static_cast<bool>(ACFPtr<IACFUnknown>::Query(services.Get(), version)));
        }
    }
}

TEST(HostServicesTest, HandsEverythingToTheMonitor) {
    const auto context = testContext();
    context->monitor->expectTrace("line");
    context->monitor->expectAssertion("a < b");
    const auto services = ACFPtr<HostServices>::Adopt(new HostServices(context));
    EXPECT_EQ(AAX_SUCCESS, services->Trace(1, "line one"));
    EXPECT_EQ(AAX_SUCCESS, services->StackTrace(2, 3, "line two"));
    EXPECT_EQ(AAX_SUCCESS, services->HandleAssertFailure("f.cpp", 10, "a < b", 1));
    const auto traces = context->monitor->traces();
    ASSERT_EQ(2U, traces.size());
    EXPECT_EQ(2, traces[1].priority);
    EXPECT_EQ("line two", traces[1].text);
    const auto failures = context->monitor->assertFailures();
    ASSERT_EQ(1U, failures.size());
    EXPECT_EQ("f.cpp", failures[0].file);
    EXPECT_EQ(10, failures[0].line);
    EXPECT_EQ(1, failures[0].flags);
    EXPECT_TRUE(context->monitor->violations().empty());
}

} // namespace
} // namespace varno
