#include "Simd/Processor.h"

#include <hwy/highway.h>

#if HWY_ARCH_X86

#include <cpuid.h>

namespace varno {
namespace {

// Clang 14 has no names for these two. Leaves and bits of the instruction CPUID.
constexpr unsigned kFeatures = 1;
constexpr unsigned kExtendedFeatures = 0x80000001U;

// Whether a bit of ECX is set in that leaf.
bool hasInEcx(unsigned leaf, unsigned bit) {
    unsigned eax = 0;
    unsigned ebx = 0;
    unsigned ecx = 0;
    unsigned edx = 0;
    return __get_cpuid(leaf, &eax, &ebx, &ecx, &edx) != 0 && (ecx & bit) != 0;
}

bool canConvertHalves() {
    return hasInEcx(kFeatures, bit_F16C);
}

bool canCountLeadingZeros() {
    return hasInEcx(kExtendedFeatures, bit_LZCNT);
}

// The compiler's names of features; with registers that the system must save, they include that it does.
bool hasSsse3() {
    return static_cast<bool>(__builtin_cpu_supports("ssse3"));
}

bool hasAvx2() {
    return hasSsse3() && __builtin_cpu_supports("sse4.1") && __builtin_cpu_supports("sse4.2") &&
           __builtin_cpu_supports("aes") && __builtin_cpu_supports("pclmul") &&
           __builtin_cpu_supports("avx") && __builtin_cpu_supports("avx2") && __builtin_cpu_supports("fma") &&
           __builtin_cpu_supports("bmi") && __builtin_cpu_supports("bmi2") && canConvertHalves() &&
           canCountLeadingZeros();
}

bool hasAvx512() {
    return hasAvx2() && __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512vl") &&
           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512cd");
}

} // namespace

std::int64_t processorTargets() {
    // Needed by what runs before the constructors of the C library's support for this.
    __builtin_cpu_init();
    std::int64_t targets = HWY_EMU128;
    targets |= hasSsse3() ? HWY_SSSE3 : 0;
    targets |= hasAvx2() ? HWY_AVX2 : 0;
    targets |= hasAvx512() ? HWY_AVX3 : 0;
    return targets;
}

} // namespace varno

#else

namespace varno {

std::int64_t processorTargets() {
#if HWY_TARGETS & HWY_NEON
    return HWY_NEON | HWY_EMU128;
#else
    return HWY_EMU128;
#endif
}

} // namespace varno

#endif
