#include "Simd/Processor.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>

namespace varno {
namespace {

// Highway's library, which is there where tests are built, decides by the processor's own description.
TEST(Processor, HasWhatHighwayFinds) {
#if HWY_ARCH_X86
    constexpr std::int64_t kBuilt = HWY_SSSE3 | HWY_AVX2 | HWY_AVX3;
    EXPECT_EQ(processorTargets() & kBuilt, hwy::SupportedTargets() & kBuilt);
    EXPECT_EQ(processorTargets() & ~kBuilt, HWY_EMU128);
#else
    EXPECT_EQ(processorTargets() & HWY_STATIC_TARGET, HWY_STATIC_TARGET);
#endif
}

} // namespace
} // namespace varno
