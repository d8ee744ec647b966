#include "Alg/DemoGain_Processor.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>

namespace {

// Highway's library, which is there where tests are built, decides by the processor's own description.
TEST(DemoGain_Processor, HasWhatHighwayFinds) {
#if HWY_ARCH_X86
    constexpr int64_t kBuilt = HWY_SSSE3 | HWY_AVX2 | HWY_AVX3;
    EXPECT_EQ(DemoGain_ProcessorTargets() & kBuilt, hwy::SupportedTargets() & kBuilt);
    EXPECT_EQ(DemoGain_ProcessorTargets() & ~kBuilt, HWY_EMU128);
#else
    EXPECT_EQ(DemoGain_ProcessorTargets() & HWY_STATIC_TARGET, HWY_STATIC_TARGET);
#endif
}

} // namespace
