#include "InstructionSet.h"

#include <cstdlib>

namespace varno::bench {
namespace {

std::string askedFor() {
    const char* const value = std::getenv("VARNO_SIMD");
    return value == nullptr ? "" : value;
}

#if defined(__x86_64__)
bool hasAvx2() {
    return __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("fma") != 0;
}
bool hasAvx512() {
    return __builtin_cpu_supports("avx512f") != 0 && __builtin_cpu_supports("avx512bw") != 0 &&
           __builtin_cpu_supports("avx512cd") != 0 && __builtin_cpu_supports("avx512dq") != 0 &&
           __builtin_cpu_supports("avx512vl") != 0;
}
#else
bool hasAvx2() {
    return false;
}
bool hasAvx512() {
    return false;
}
#endif

bool has(const std::string& set) {
    return set == "baseline" || (set == "avx2" && hasAvx2()) || (set == "avx512" && hasAvx512());
}

} // namespace

std::string instructionSetInUse() {
    if (std::string asked = askedFor(); !asked.empty()) {
        return asked;
    }
    return hasAvx512() ? "avx512" : hasAvx2() ? "avx2" : "baseline";
}

std::string whyInstructionSetIsMissing() {
    const std::string asked = askedFor();
    return asked.empty() || has(asked) ? "" : "this processor lacks the instruction set " + asked;
}

} // namespace varno::bench
