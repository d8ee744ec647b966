/// One instance of the signal path with storage of its own behind every field.
#ifndef VARNO_TESTS_SUPPORT_ALGFIXTURE_H
#define VARNO_TESTS_SUPPORT_ALGFIXTURE_H

#include "Alg/DemoGain_Routine.h"
#include "DemoGain_Alg.h"
#include "Tests/Support/RenderChecker.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <random>
#include <string>
#include <vector>

namespace varno::test {

/// Sample rates, Hz, that the effect is offered for.
inline constexpr double kSampleRates[] = {16000.0, 44100.0,  48000.0,  88200.0,
                                          96000.0, 176400.0, 192000.0, 384000.0};

/// Normalized parameter values, as the data model would turn them into packets.
struct AlgParameters {
    float gain = 0.5F;
    float volume = 0.5F;
    float attack = 0.5F;
    float release = 0.5F;
    float ratio = 0.5F;
    float uk = 0.0F;
    float hot = 0.5F;
    float mix = 0.0F;
    float highPass = 0.0F;
    float band = 0.0F;
    float harmonics = 0.0F;
    float link = 0.0F;
    bool bypass = false;
};

/// A random vector: each value evenly distributed, or at one of its bounds.
AlgParameters randomParameters(std::mt19937& ioEngine);

/// The same with the switches set from the low four bits of `combination`.
AlgParameters withSwitches(AlgParameters parameters, unsigned combination);

/// The values as text, for messages.
std::string textOf(const AlgParameters& parameters);

/// A version of the routine for a number of channels. Converts to that number.
struct AlgVariant {
    std::size_t channels = 1;
    const SDemoGain_Routine* routine = &DemoGain_ChooseRoutine();

    operator std::size_t() const { return channels; } // NOLINT(google-explicit-constructor)
};
/// For the names of tests: "stereo_avx2".
void PrintTo(const AlgVariant& variant, std::ostream* out);

/// Mono and stereo in every version that this processor can run.
std::vector<AlgVariant> algVariants();

/// An instance with its context, packets, taps and state.
class AlgInstance {
public:
    /// Fresh state at `sampleRate` (Hz), default parameters, taps at 0.
    AlgInstance(const AlgVariant& variant, double sampleRate);
    /// The same for 1 or 2 channels, with the version that the effect would choose.
    AlgInstance(std::size_t channels, double sampleRate)
        : AlgInstance(AlgVariant{channels}, sampleRate) {}
    AlgInstance(const AlgInstance&) = delete;
    AlgInstance& operator=(const AlgInstance&) = delete;

    /// Posts the packets of these values.
    void set(const AlgParameters& parameters);
    /// The packet of a data-in field other than the bypass.
    float& field(EAlgFieldID index) { return mFields[static_cast<std::size_t>(index)]; }
    std::int32_t& bypass() { return mBypass; }

    std::size_t channels() const { return mVariant.channels; }
    double sampleRate() const { return mSampleRate; }
    SDemoGain_Alg_Context& context() { return mContext; }
    SDemoGain_Alg_State& state() { return mState; }
    std::array<float, eMeterTap_Count>& taps() { return mTaps; }

    /// Points the context at a buffer.
    void attach(const float* const* inputs, float* const* outputs, std::int32_t frames);
    /// Processes a buffer with the variant's version of the routine.
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames);
    /// Processes a buffer with the literal evaluation, in the routine's floating-point mode.
    void processLiterally(const float* const* inputs, float* const* outputs, std::int32_t frames);

    BufferProcessor processor();
    BufferProcessor literalProcessor();

private:
    AlgVariant mVariant;
    double mSampleRate;
    float mSampleRateField;
    std::int32_t mBypass = 0;
    std::int32_t mBufferFrames = 0;
    std::array<float, kAlgNumDataInPorts> mFields{};
    std::array<float, eMeterTap_Count> mTaps{};
    SDemoGain_Alg_State mState{};
    SDemoGain_Alg_Context mContext{};
};

/// Where two instances differ in state or taps, as text; empty where they do not. The states of the post
/// sections, which no output depends on, may differ by 2e-6, everything else by nothing.
std::string firstDifference(AlgInstance& expected, AlgInstance& found);

} // namespace varno::test

#endif
