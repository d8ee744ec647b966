#include "ACF/ACFPtr.h"
#include "Tests/Support/FakeUnknown.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <utility>

namespace varno {
namespace {

using Pointer = ACFPtr<IACFUnknown>;

TEST(ACFPtr, OwnsOneReference) {
    FakeHost object;
    {
        const Pointer pointer = Pointer::Retain(&object);
        EXPECT_EQ(object.references(), 1);
    }
    EXPECT_EQ(object.references(), 0);
}

TEST(ACFPtr, HandsItsReferenceOver) {
    FakeHost first;
    FakeHost second;
    Pointer pointer = Pointer::Retain(&first);
    pointer = Pointer::Retain(&second);
    EXPECT_EQ(first.references(), 0);
    EXPECT_EQ(second.references(), 1);
    Pointer other = std::move(pointer);
    EXPECT_EQ(other.Get(), &second);
    EXPECT_EQ(other.Detach(), &second);
    EXPECT_EQ(second.references(), 1);
    second.Release();
}

class ThrowingOnRelease : public FakeHost {
public:
    std::uint32_t Release() override {
        FakeHost::Release();
        throw std::runtime_error("host");
    }
};

TEST(ACFPtr, ResetLetsThroughWhatTheObjectThrowsAndIsEmpty) {
    ThrowingOnRelease object;
    Pointer pointer = Pointer::Retain(&object);
    EXPECT_THROW(pointer.Reset(), std::runtime_error);
    EXPECT_FALSE(pointer);
    EXPECT_EQ(object.references(), 0);
}

TEST(ACFPtr, DestructionAndAssignmentKeepWhatTheObjectThrowsToThemselves) {
    ThrowingOnRelease first;
    FakeHost second;
    {
        Pointer pointer = Pointer::Retain(&first);
        pointer = Pointer::Retain(&second);
        EXPECT_EQ(first.references(), 0);
        const Pointer other = Pointer::Retain(&first);
    }
    EXPECT_EQ(first.references(), 0);
    EXPECT_EQ(second.references(), 0);
}

} // namespace
} // namespace varno
