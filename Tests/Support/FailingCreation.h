/// Creation procedures without memory, for programs that link the test allocator.
#ifndef VARNO_TESTS_SUPPORT_FAILINGCREATION_H
#define VARNO_TESTS_SUPPORT_FAILINGCREATION_H

#include "ACF/ACFPtr.h"
#include "ACF/CACFUnknown.h"
#include "Tests/Support/FakeHostServices.h"
#include "Tests/Support/TestAllocator.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <utility>

namespace varno::test {

/// Receives trace lines; has memory to keep them where the test says so, and throws otherwise.
class ServicesWithMemory : public FakeHostServices {
public:
    AAX_Result Trace(std::int32_t priority, const char* message) override {
        ++calls;
        if (hasMemory) {
            AllocationFailure::end();
        }
        return FakeHostServices::Trace(priority, message);
    }

    bool hasMemory = true;
    int calls = 0;
};

/// Fails each allocation of the creation procedure `create` in turn, until it creates an object. Expects null
/// for each, one trace line under the name `entry`, and nothing left behind.
template<class Object>
void expectCreationFails(Object* (*create)(), const std::string& entry, bool hostHasMemory) {
    const std::int32_t objects = CACFUnknown::GetActiveObjectCount();
    const std::string expected = entry + " exception caught: " + std::bad_alloc().what();
    FakeHostWithServices host;
    ServicesWithMemory services;
    services.hasMemory = hostHasMemory;
    host.factory.offer(IID_IAAXHostServicesV1, &services);
    AAX_CHostServices::Set(&host);
    int failures = 0;
    for (;; ++failures) {
        const std::size_t before = liveAllocations();
        Object* created = nullptr;
        {
            const AllocationFailure failure(failures);
            created = create();
        }
        if (created != nullptr) {
            ACFPtr<Object>::Retain(created).Reset();
            break;
        }
        if (hostHasMemory) {
            ASSERT_EQ(services.lines, (std::vector<FakeHostServices::Line>{{0x8000000, expected}}));
        }
        std::exchange(services.lines, {});
        ASSERT_EQ(services.calls, failures + 1);
        ASSERT_EQ(CACFUnknown::GetActiveObjectCount(), objects);
        ASSERT_EQ(liveAllocations(), before) << "after " << failures << " allocations";
    }
    EXPECT_GT(failures, 0);
    EXPECT_EQ(services.calls, failures);
    EXPECT_EQ(CACFUnknown::GetActiveObjectCount(), objects);
    AAX_CHostServices::Set(nullptr);
}

} // namespace varno::test

#endif
