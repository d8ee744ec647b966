// A small effect on the library layer, with a fault or without: a gain, mono and stereo.
#include "AAX_CBinaryDisplayDelegate.h"
#include "AAX_CBinaryTaperDelegate.h"
#include "AAX_CEffectParameters.h"
#include "AAX_CLinearTaperDelegate.h"
#include "AAX_CNumberDisplayDelegate.h"
#include "AAX_CParameter.h"
#include "AAX_Guarded.h"
#include "AAX_IACFAutomationDelegate.h"
#include "AAX_IACFController.h"
#include "AAX_IACFTransport.h"
#include "AAX_ICollection.h"
#include "AAX_IComponentDescriptor.h"
#include "AAX_IEffectDescriptor.h"
#include "AAX_IPropertyMap.h"
#include "AAX_Init.h"
#include "ACF/ACFPtr.h"
#include "Tests/Apps/varno/Validate/Fixture/Faults.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/prctl.h>
#include <thread>
#include <unistd.h>

namespace varno::fixture {
namespace {

bool has(Planted fault) {
    return kPlanted == fault;
}

[[noreturn]] void crash() {
    std::raise(SIGSEGV);
    std::abort();
}

[[noreturn]] void hang() {
    for (;;) {
        std::this_thread::sleep_for(std::chrono::hours(1));
    }
}

enum Field : AAX_CFieldIndex { kBypass, kGain, kInputs, kOutputs, kFrames };

// The order of its members is that of Field.
struct Routing {
    const std::int32_t* bypass;
    const float* gain;
    const float* const* inputs;
    float* const* outputs;
    const std::int32_t* frames;
};

// The gain of the last buffer, of whichever instance; the default before.
float gLastGain = 0.5F;

template<int kChannels>
void process(void* const begin[], const void* end) {
    if (kCountBuffer != nullptr) {
        kCountBuffer();
    }
    for (void* const* instance = begin; instance != end; ++instance) {
        const auto& routing = *static_cast<const Routing*>(*instance);
        const bool isBypassed = *routing.bypass != 0 && !has(Planted::kIgnoresBypass);
        for (std::int32_t i = 0; i < *routing.frames; ++i) {
            // An output may lie in the place of any input.
            std::array<float, kChannels> inputs{};
            for (std::size_t channel = 0; channel < kChannels; ++channel) {
                inputs[channel] = routing.inputs[channel][i];
            }
            const float half = has(Planted::kDependsOnBuffers) && i == 0 ? 0.5F : 1.0F;
            for (std::size_t channel = 0; channel < kChannels; ++channel) {
                const float input =
                    has(Planted::kNeedsOwnOutputs) ? routing.inputs[channel][i] : inputs[channel];
                const bool clicks = has(Planted::kClicks) && i == 0 && *routing.gain != gLastGain;
                routing.outputs[channel][i] =
                    isBypassed ? input : half * input * *routing.gain + (clicks ? 1.0F : 0.0F);
            }
        }
        gLastGain = *routing.gain;
    }
}

class FixtureModel final : public AAX_CEffectParameters {
public:
    static AAX_CEffectParameters* Create() {
        return AAX_GuardedCreation({"FixtureModel", __func__}, [] { return new FixtureModel; });
    }

    AAX_Result Initialize(IACFUnknown* host) override {
        ++mLives;
        if (mLives > 1 && has(Planted::kCrashesInSecondLife)) {
            crash();
        }
        if (mLives > 1 && has(Planted::kHangsInSecondLife)) {
            hang();
        }
        if (has(Planted::kThrows)) {
            (void)ACFPtr<AAX_IACFController>::Query(
                host, IID_IAAXControllerV1); // What this throws leaves the module.
        }
        return AAX_Guarded({"FixtureModel", __func__}, [&] {
            misbehaveWith(host);
            return AAX_CEffectParameters::Initialize(host);
        });
    }

    AAX_Result GenerateCoefficients() override {
        if (mLives == 0 && has(Planted::kCrashesBeforeItsLife)) {
            crash();
        }
        return AAX_CEffectParameters::GenerateCoefficients();
    }

    AAX_Result SetChunk(AAX_CTypeID chunkID, const AAX_SPlugInChunk* chunk) override {
        mHasState = true;
        mIsRestoring = true;
        AAX_Result result = AAX_CEffectParameters::SetChunk(chunkID, chunk);
        mIsRestoring = false;
        if (result != AAX_SUCCESS && has(Planted::kTakesEveryChunk)) {
            result = AAX_SUCCESS;
        }
        if (result != AAX_SUCCESS && has(Planted::kLosesRefusedChunks)) {
            (void)::strdup("lost with each chunk of another plug-in");
        }
        return result;
    }

    // Saving after a restored state.
    AAX_Result GetChunk(AAX_CTypeID chunkID, AAX_SPlugInChunk* chunk) override {
        if ((mHasState && mLives == 1 && has(Planted::kCrashesInAnOrder)) ||
            (mIsRestoring && has(Planted::kCrashesWhenCalledBack))) {
            crash();
        }
        return AAX_CEffectParameters::GetChunk(chunkID, chunk);
    }

    AAX_Result GetParameterIDFromIndex(std::int32_t index, AAX_IString* outID) const override {
        return AAX_CEffectParameters::GetParameterIDFromIndex(has(Planted::kHasParameterTwice) ? 1 : index,
                                                              outID);
    }

    AAX_Result GetParameterNormalizedValue(AAX_CParamID paramID, double* outValue) const override {
        if (paramID == nullptr && has(Planted::kNeedsAnIdentifier)) {
            crash();
        }
        const AAX_Result result = AAX_CEffectParameters::GetParameterNormalizedValue(paramID, outValue);
        return has(Planted::kKnowsEveryParameter) ? AAX_SUCCESS : result;
    }

    AAX_Result GetParameterName(AAX_CParamID paramID, AAX_IString* outName) const override {
        const AAX_Result result = AAX_CEffectParameters::GetParameterName(paramID, outName);
        if (result == AAX_SUCCESS && has(Planted::kHasNamelessParameter)) {
            outName->Set("");
        }
        return result;
    }

    AAX_Result GetParameterDefaultNormalizedValue(AAX_CParamID paramID, double* outValue) const override {
        const AAX_Result result =
            AAX_CEffectParameters::GetParameterDefaultNormalizedValue(paramID, outValue);
        if (result == AAX_SUCCESS && has(Planted::kStartsElsewhere)) {
            *outValue += 0.25;
        }
        return result;
    }

protected:
    AAX_Result EffectInit() override {
        if (has(Planted::kLosesMemoryPerInstance)) {
            (void)::strdup("lost with each instance");
        }
        add(new AAX_CParameter<bool>(cDefaultMasterBypassID, AAX_CString("Bypass"), false,
                                     AAX_CBinaryTaperDelegate<bool>(),
                                     AAX_CBinaryDisplayDelegate<bool>("off", "on"), true),
            2, AAX_eParameterType_Discrete);
        add(new AAX_CParameter<float>("Gain", AAX_CString("Gain"), 0.5F,
                                      AAX_CLinearTaperDelegate<float, 0>(0.0F, 1.0F),
                                      AAX_CNumberDisplayDelegate<float, 2, 0>(), true),
            101, AAX_eParameterType_Continuous);
        mPacketDispatcher.RegisterPacket(cDefaultMasterBypassID, kBypass);
        if (!has(Planted::kPostsNoPacket)) {
            mPacketDispatcher.RegisterPacket("Gain", has(Planted::kPostsToOtherField) ? kFrames : kGain);
        }
        return AAX_SUCCESS;
    }

private:
    void add(AAX_IParameter* parameter, std::uint32_t steps, AAX_EParameterType type) {
        parameter->SetNumberOfSteps(steps);
        parameter->SetType(type);
        mParameterManager.AddParameter(parameter);
    }

    void misbehaveWith(IACFUnknown* host) {
        if (has(Planted::kKeepsItself)) {
            AddRef();
        }
        const auto transport = ACFPtr<AAX_IACFTransport>::Query(host, IID_IAAXTransportV1);
        if (!transport && has(Planted::kNeedsTransport)) {
            crash();
        }
        const auto controller = ACFPtr<AAX_IACFController>::Query(host, IID_IAAXControllerV1);
        if (!transport && !controller && has(Planted::kNeedsTwoServices)) {
            crash();
        }
        if (has(Planted::kIgnoresFailedAllocation)) {
            auto* const memory = static_cast<volatile char*>(std::malloc(64));
            memory[0] = 'x'; // NOLINT(clang-analyzer-core.NullDereference): the fault
            std::free(const_cast<char*>(memory));
        }
    }

    int mLives = 0;
    bool mHasState = false;
    bool mIsRestoring = false;
};

void addVariant(AAX_IEffectDescriptor& effect, AAX_IComponentDescriptor& component, AAX_EStemFormat format,
                std::int32_t nativeID) {
    component.Clear();
    component.AddDataInPort(kBypass, sizeof(std::int32_t), AAX_eDataInPortType_Buffered);
    component.AddDataInPort(kGain, sizeof(float), AAX_eDataInPortType_Buffered);
    component.AddAudioIn(kInputs);
    component.AddAudioOut(kOutputs);
    component.AddAudioBufferLength(kFrames);
    AAX_IPropertyMap* const map = component.NewPropertyMap();
    if (map == nullptr) {
        return;
    }
    map->AddProperty(AAX_eProperty_ManufacturerID, static_cast<std::int32_t>(AAX_FourCC("Fixt")));
    map->AddProperty(AAX_eProperty_ProductID, static_cast<std::int32_t>(AAX_FourCC("Gain")));
    map->AddProperty(AAX_eProperty_InputStemFormat, format);
    map->AddProperty(AAX_eProperty_OutputStemFormat, format);
    map->AddProperty(AAX_eProperty_PlugInID_Native, nativeID);
    component.AddProcessProc_Native(format == AAX_eStemFormat_Mono ? process<1> : process<2>, map, nullptr,
                                    nullptr, nullptr);
    effect.AddComponent(&component);
}

// Whether this process has not loaded it before, by the name of its thread.
bool isFirstTime() {
    constexpr const char* kName = "fixture";
    char name[16] = {};
    ::prctl(PR_GET_NAME, name);
    ::prctl(PR_SET_NAME, kName);
    return std::string(name) != kName;
}

void leaveTraces() {
    if (has(Planted::kLeavesThread)) {
        std::thread([] { ::pause(); }).detach(); // In the C library: the module may be unloaded.
    }
    if (has(Planted::kLeavesHandler)) {
        std::signal(SIGUSR1, SIG_IGN);
    }
    if (has(Planted::kSetsVariable)) {
        ::setenv("FIXTURE", "was here", 1);
    }
    if (has(Planted::kSetsLocale)) {
        std::setlocale(LC_ALL, "C.UTF-8");
    }
    if (has(Planted::kLeavesDescriptor)) {
        (void)::open("/dev/null", O_RDONLY | O_CLOEXEC);
    }
    if (has(Planted::kLeavesMemory)) {
        (void)::strdup("lost each time it is loaded");
    }
    if (has(Planted::kTakesLong) && isFirstTime()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
    }
}

std::string effectName() {
    return has(Planted::kChangesItsName)
               ? "Fixture " + std::to_string(std::chrono::steady_clock::now().time_since_epoch().count())
               : "Fixture";
}

} // namespace
} // namespace varno::fixture

AAX_Result GetEffectDescriptions(AAX_ICollection* outCollection) {
    using namespace varno::fixture;
    leaveTraces();
    if (has(Planted::kNeedsDisplay) && std::getenv("DISPLAY") == nullptr) {
        return AAX_ERROR_NULL_OBJECT;
    }
    AAX_IEffectDescriptor* const effect = outCollection->NewDescriptor();
    AAX_IComponentDescriptor* const component =
        effect != nullptr ? effect->NewComponentDescriptor() : nullptr;
    if (component == nullptr) {
        return AAX_ERROR_NULL_OBJECT;
    }
    if (has(Planted::kDescribesWithoutMemory)) {
        auto* const memory = static_cast<volatile char*>(std::malloc(64));
        memory[0] = 'x'; // NOLINT(clang-analyzer-core.NullDereference): the fault
        std::free(const_cast<char*>(memory));
    }
    if (!has(Planted::kHasNoName)) {
        effect->AddName(effectName().c_str());
    }
    effect->AddCategory(AAX_ePlugInCategory_Dynamics);
    addVariant(*effect, *component, AAX_eStemFormat_Mono, static_cast<std::int32_t>(AAX_FourCC("FxGm")));
    addVariant(*effect, *component,
               has(Planted::kDescribesVariantTwice) ? AAX_eStemFormat_Mono : AAX_eStemFormat_Stereo,
               static_cast<std::int32_t>(AAX_FourCC("FxGs")));
    effect->AddProcPtr(reinterpret_cast<void*>(&FixtureModel::Create),
                       kAAX_ProcPtrID_Create_EffectParameters);
    if (kEditorProcedure != nullptr) {
        effect->AddProcPtr(kEditorProcedure(), kAAX_ProcPtrID_Create_EffectGUI);
    }
    const AAX_Result result = outCollection->AddEffect("org.example.fixture", effect);
    if (!has(Planted::kHasNoManufacturer)) {
        outCollection->SetManufacturerName("Example");
    }
    if (has(Planted::kThrowsWhenDescribed)) {
        // What the host throws ends the process.
        [&]() noexcept { outCollection->AddPackageName("Fixture"); }();
    } else {
        outCollection->AddPackageName("Fixture");
    }
    outCollection->SetPackageVersion(1);
    return result;
}
