#include "Tests/Support/AlgFixture.h"

#include "Alg/DemoGain_DenormalMode.h"
#include "Alg/DemoGain_State.h"
#include "DemoGain_Coefficients.h"
#include "Tests/Reference/ReferenceRoutine.h"

#include <bit>
#include <cmath>
#include <ostream>
#include <sstream>

namespace varno::test {
namespace {

using StateWords = std::array<float, sizeof(SDemoGain_Alg_State) / sizeof(float)>;

// The words of a state. Those of the post sections are replaced by the expected ones where they are close
// enough.
std::vector<float> wordsOf(SDemoGain_Alg_State state, const SDemoGain_Alg_State& expected) {
    constexpr std::size_t kSectionWords = sizeof(SDemoGain_SectionState) / sizeof(float);
    using SectionWords = std::array<float, kSectionWords>;
    constexpr float kTolerance = 2e-6F;
    for (std::size_t channel = 0; channel < 2; ++channel) {
        for (const auto section : {&SDemoGain_PostStates::mA, &SDemoGain_PostStates::mB}) {
            auto found = std::bit_cast<SectionWords>(state.mPost[channel].*section);
            const auto wanted = std::bit_cast<SectionWords>(expected.mPost[channel].*section);
            for (std::size_t i = 0; i < kSectionWords; ++i) {
                found[i] = std::fabs(found[i] - wanted[i]) <= kTolerance ? wanted[i] : found[i];
            }
            state.mPost[channel].*section = std::bit_cast<SDemoGain_SectionState>(found);
        }
    }
    const auto words = std::bit_cast<StateWords>(state);
    return {words.begin(), words.end()};
}

} // namespace

void PrintTo(const AlgVariant& variant, std::ostream* out) {
    *out << (variant.channels == 1 ? "mono_" : "stereo_") << variant.routine->mName;
}

std::vector<AlgVariant> algVariants() {
    std::vector<AlgVariant> variants;
    for (const SDemoGain_Routine& routine : DemoGain_Routines()) {
        if (DemoGain_CanRun(routine)) {
            variants.push_back({1, &routine});
            variants.push_back({2, &routine});
        }
    }
    return variants;
}

AlgParameters randomParameters(std::mt19937& ioEngine) {
    const auto value = [&] {
        constexpr std::uint32_t kSteps = 1000;
        const auto draw = static_cast<std::uint32_t>(ioEngine()) % (kSteps + kSteps / 5);
        const std::uint32_t bounded = draw <= kSteps ? draw : (draw % 2) * kSteps;
        return static_cast<float>(bounded) / static_cast<float>(kSteps);
    };
    AlgParameters p;
    for (float* parameter : {&p.gain, &p.volume, &p.attack, &p.release, &p.ratio, &p.hot, &p.mix}) {
        *parameter = value();
    }
    const auto switches = static_cast<unsigned>(ioEngine());
    p = withSwitches(p, switches);
    p.uk = (switches & 16U) != 0 ? 1.0F : 0.0F;
    p.bypass = (switches & 0xE0U) == 0;
    return p;
}

AlgParameters withSwitches(AlgParameters parameters, unsigned combination) {
    const auto bit = [&](unsigned mask) { return (combination & mask) != 0 ? 1.0F : 0.0F; };
    parameters.highPass = bit(1);
    parameters.band = bit(2);
    parameters.harmonics = bit(4);
    parameters.link = bit(8);
    return parameters;
}

std::string textOf(const AlgParameters& p) {
    std::ostringstream text;
    text << "gain " << p.gain << ", volume " << p.volume << ", attack " << p.attack << ", release "
         << p.release << ", ratio " << p.ratio << ", uk " << p.uk << ", hot " << p.hot << ", mix " << p.mix
         << ", high-pass " << p.highPass << ", band " << p.band << ", harmonics " << p.harmonics << ", link "
         << p.link << ", bypass " << p.bypass;
    return text.str();
}

AlgInstance::AlgInstance(const AlgVariant& variant, double sampleRate)
    : mVariant(variant),
      mSampleRate(sampleRate),
      mSampleRateField(static_cast<float>(sampleRate)) {
    static_assert(sizeof(void*) * eAlgFieldID_Count == sizeof(SDemoGain_Alg_Context));
    std::array<const void*, eAlgFieldID_Count> pointers{};
    for (std::size_t i = 0; i < mFields.size(); ++i) {
        pointers[i] = &mFields[i];
    }
    pointers[eAlgFieldID_Bypass] = &mBypass;
    pointers[eAlgFieldID_Meters] = mTaps.data();
    pointers[eAlgFieldID_BufferSize] = &mBufferFrames;
    pointers[eAlgFieldID_SampleRate] = &mSampleRateField;
    pointers[eAlgFieldID_State] = &mState;
    mContext = std::bit_cast<SDemoGain_Alg_Context>(pointers);
    DemoGain_ResetState(mState, sampleRate);
    set({});
}

void AlgInstance::set(const AlgParameters& p) {
    const SDemoGain_Dynamics dynamics =
        DemoGain_ComputeDynamics({p.attack, p.release, p.uk, p.ratio}, mSampleRate);
    mBypass = p.bypass ? 1 : 0;
    field(eAlgFieldID_GainDB) = DemoGain_LevelDB(p.gain);
    field(eAlgFieldID_GainLin) = DemoGain_LevelLin(field(eAlgFieldID_GainDB));
    field(eAlgFieldID_VolumeDB) = DemoGain_LevelDB(p.volume);
    field(eAlgFieldID_VolumeLin) = DemoGain_LevelLin(field(eAlgFieldID_VolumeDB));
    field(eAlgFieldID_HP) = p.highPass;
    field(eAlgFieldID_Band) = p.band;
    field(eAlgFieldID_Atk) = p.attack;
    field(eAlgFieldID_Rls) = p.release;
    field(eAlgFieldID_UK) = p.uk;
    field(eAlgFieldID_Hot) = p.hot;
    field(eAlgFieldID_Ratio) = p.ratio;
    field(eAlgFieldID_Mix) = p.mix;
    field(eAlgFieldID_HarmSw) = p.harmonics;
    field(eAlgFieldID_LinkSw) = p.link;
    field(eAlgFieldID_AttackCoef) = dynamics.mAttackCoef;
    field(eAlgFieldID_ReleaseCoef) = dynamics.mReleaseCoef;
    field(eAlgFieldID_SlowCoef) = dynamics.mSlowCoef;
    field(eAlgFieldID_Threshold) = dynamics.mThreshold;
    field(eAlgFieldID_Curve0) = dynamics.mCurve[0];
    field(eAlgFieldID_Curve1) = dynamics.mCurve[1];
    field(eAlgFieldID_Curve2) = dynamics.mCurve[2];
    field(eAlgFieldID_Curve3) = dynamics.mCurve[3];
}

void AlgInstance::attach(const float* const* inputs, float* const* outputs, std::int32_t frames) {
    mContext.mAudioIn = inputs;
    mContext.mAudioOut = outputs;
    mBufferFrames = frames;
}

void AlgInstance::process(const float* const* inputs, float* const* outputs, std::int32_t frames) {
    attach(inputs, outputs, frames);
    SDemoGain_Alg_Context* const instances[] = {&mContext};
    DemoGain_ProcessInstances(*mVariant.routine, mVariant.channels, instances, instances + 1);
}

void AlgInstance::processLiterally(const float* const* inputs, float* const* outputs, std::int32_t frames) {
    attach(inputs, outputs, frames);
    const DemoGain_DenormalMode audioMode;
    if (mVariant.channels == 1) {
        reference::processMono(mContext);
    } else {
        reference::processStereo(mContext);
    }
}

BufferProcessor AlgInstance::processor() {
    return [this](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        process(inputs, outputs, frames);
    };
}

BufferProcessor AlgInstance::literalProcessor() {
    return [this](const float* const* inputs, float* const* outputs, std::int32_t frames) {
        processLiterally(inputs, outputs, frames);
    };
}

std::string firstDifference(AlgInstance& expected, AlgInstance& found) {
    const std::string state = firstDifference(wordsOf(expected.state(), expected.state()),
                                              wordsOf(found.state(), expected.state()));
    if (!state.empty()) {
        return "state, " + state;
    }
    const std::vector<float> expectedTaps(expected.taps().begin(), expected.taps().end());
    const std::vector<float> foundTaps(found.taps().begin(), found.taps().end());
    const std::string taps = firstDifference(expectedTaps, foundTaps);
    return taps.empty() ? taps : "taps, " + taps;
}

} // namespace varno::test
