/// The processor's floating-point mode. The only file that touches processor registers.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_DENORMALMODE_H
#define VARNO_SOURCE_ALG_DEMOGAIN_DENORMALMODE_H

#include <cstdint>

#if defined(__x86_64__)
#include <xmmintrin.h>
#elif !defined(__aarch64__)
#error "The floating-point mode of this processor is not known here."
#endif

/// A thread's floating-point mode: rounding, exceptions that trap, treatment of denormals, and the exceptions
/// that have been raised.
struct SDemoGain_FloatMode {
    uint64_t mControl; ///< MXCSR, or FPCR.
    uint64_t mStatus;  ///< FPSR; 0 where the control register holds the status too.

    bool operator==(const SDemoGain_FloatMode&) const = default;
};

#if defined(__x86_64__)

/// Round to nearest, all exceptions masked (0x1F80), flush to zero (bit 15), denormals are zero (bit 6).
inline constexpr SDemoGain_FloatMode kDemoGain_AudioFloatMode = {0x1F80U | 0x8000U | 0x0040U, 0};
/// The mode in which a program starts.
inline constexpr SDemoGain_FloatMode kDemoGain_StartFloatMode = {0x1F80U, 0};

/// The calling thread's mode. [any]
inline SDemoGain_FloatMode DemoGain_ReadFloatMode() {
    return {_mm_getcsr(), 0};
}

/// Changes the calling thread's mode. [any]
inline void DemoGain_WriteFloatMode(const SDemoGain_FloatMode& mode) {
    _mm_setcsr(static_cast<uint32_t>(mode.mControl));
}

#else

/// Round to nearest, no traps, flush to zero of inputs and results (bit 24).
inline constexpr SDemoGain_FloatMode kDemoGain_AudioFloatMode = {uint64_t{1} << 24, 0};
/// The mode in which a program starts.
inline constexpr SDemoGain_FloatMode kDemoGain_StartFloatMode = {0, 0};

/// The calling thread's mode. [any]
inline SDemoGain_FloatMode DemoGain_ReadFloatMode() {
    SDemoGain_FloatMode mode{};
    asm volatile("mrs %0, fpcr" : "=r"(mode.mControl));
    asm volatile("mrs %0, fpsr" : "=r"(mode.mStatus));
    return mode;
}

/// Changes the calling thread's mode. [any]
inline void DemoGain_WriteFloatMode(const SDemoGain_FloatMode& mode) {
    asm volatile("msr fpcr, %0" : : "r"(mode.mControl));
    asm volatile("msr fpsr, %0" : : "r"(mode.mStatus));
}

#endif

/// While it exists, the calling thread computes in the audio mode, in which silence takes no longer than
/// signal and nothing traps; the destructor restores the caller's mode to the last bit of the register.
/// Arithmetic for the audio mode must be in a function that is not inlined: compilers move arithmetic across
/// changes of mode. [any]
class DemoGain_DenormalMode {
public:
    DemoGain_DenormalMode()
        : mCallersMode(DemoGain_ReadFloatMode()) {
        DemoGain_WriteFloatMode(kDemoGain_AudioFloatMode);
    }
    DemoGain_DenormalMode(const DemoGain_DenormalMode&) = delete;
    DemoGain_DenormalMode& operator=(const DemoGain_DenormalMode&) = delete;
    ~DemoGain_DenormalMode() { DemoGain_WriteFloatMode(mCallersMode); }

private:
    SDemoGain_FloatMode mCallersMode;
};

#endif
