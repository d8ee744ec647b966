#include "DemoGain_Describe.h"

#include "AAX_Assert.h"
#include "AAX_IEffectDescriptor.h"
#include "AAX_IPropertyMap.h"
#include "DemoGain_Alg.h"
#include "DemoGain_Parameters.h"
#include "GUI/DemoGain_EditorProcedure.h"

#include <iterator>

namespace {

// Under this name failed host calls are reported.
constexpr char kSource[] = "DemoGain_Describe";

// Reports a failed call to the host with the line of the caller; the description goes on.
void ExpectSuccess(AAX_Result err, int32_t line = __builtin_LINE()) {
    AAX_ReportUnless(err == AAX_SUCCESS, kSource, line, "err == AAX_SUCCESS");
}

// A four-character code as the value of a property.
constexpr int32_t Code(const char (&text)[5]) {
    return static_cast<int32_t>(AAX_FourCC(text));
}

constexpr char kManufacturerName[] = "Morvak";
// From the longest to the shortest, so that a host can choose what fits.
constexpr const char* kEffectNames[] = {"Varno-S", "Varno-S", "VarS", "VarS", "Va"};
constexpr const char* kPackageNames[] = {"Varno-S AAX Plug-In", "Varno-S Plug-In", "Varno-S", "VarS"};
constexpr uint32_t kPackageVersion = 1;
constexpr char kPageTableFile[] = "Varno-S.xml";

// A meter as the host shows it. Its identifier is not that of the algorithm's tap.
struct Meter {
    AAX_CTypeID mID;
    const char* mName;
    AAX_EMeterKind mKind;
};

constexpr Meter kMeters[] = {
    {AAX_FourCC("ABC1"), "GRL", AAX_eMeterKind_GainReduction},
    {AAX_FourCC("ABC2"), "GRR", AAX_eMeterKind_GainReduction},
    {AAX_FourCC("ABC3"), "InRMS", AAX_eMeterKind_Input},
    {AAX_FourCC("ABC4"), "OutRMS", AAX_eMeterKind_Output},
};

// What differs between the variants.
struct Variant {
    AAX_EStemFormat mStemFormat;
    AAX_CProcessProc mRoutine;
    int32_t mNativeID;
    int32_t mOfflineID;
    int32_t mTiID;
    const char* mTiModule; // A separate build for the host's DSP hardware.
    int32_t mHost63;
    int32_t mHost62;
};

constexpr char kTiEntry[] = "AlgEntry";

template<int kNumChannels>
AAX_CProcessProc Routine() {
    return reinterpret_cast<AAX_CProcessProc>(&DemoGain_AlgorithmProcessFunction<kNumChannels, kNumChannels>);
}

const Variant kVariants[] = {
    {AAX_eStemFormat_Mono, Routine<1>(), Code("VDRm"), Code("VDAm"), Code("VDTm"), "VarnoDSP_MM_TI.dll", 2184,
     359},
    {AAX_eStemFormat_Stereo, Routine<2>(), Code("VDRs"), Code("VDAs"), Code("VDTs"), "VarnoDSP_SS_TI.dll",
     3622, 524},
};

void AddFields(AAX_IComponentDescriptor& desc) {
    ExpectSuccess(desc.AddAudioIn(eAlgFieldID_AudioIn));
    ExpectSuccess(desc.AddAudioOut(eAlgFieldID_AudioOut));
    ExpectSuccess(desc.AddAudioBufferLength(eAlgFieldID_BufferSize));
    ExpectSuccess(desc.AddSampleRate(eAlgFieldID_SampleRate));
    ExpectSuccess(desc.AddMeters(eAlgFieldID_Meters, cDemoGain_MeterID, std::size(cDemoGain_MeterID)));
    for (AAX_CFieldIndex field = 0; field < kAlgNumDataInPorts; ++field) {
        ExpectSuccess(desc.AddDataInPort(field, kAlgDataInPortSize, AAX_eDataInPortType_Buffered));
    }
    constexpr uint32_t kNoOptions = 0;
    ExpectSuccess(desc.AddPrivateData(eAlgFieldID_State, sizeof(SDemoGain_Alg_State), kNoOptions));
}

void AddRoutines(const Variant& variant, AAX_IComponentDescriptor& desc, AAX_IPropertyMap& props) {
    ExpectSuccess(props.AddProperty(AAX_eProperty_InputStemFormat, variant.mStemFormat));
    ExpectSuccess(props.AddProperty(AAX_eProperty_OutputStemFormat, variant.mStemFormat));
    ExpectSuccess(props.AddProperty(AAX_eProperty_PlugInID_Native, variant.mNativeID));
    ExpectSuccess(props.AddProperty(AAX_eProperty_PlugInID_Offline, variant.mOfflineID));
    ExpectSuccess(desc.AddProcessProc_Native(variant.mRoutine, &props, nullptr, nullptr, nullptr));

    // The same map goes on to the second registration, which therefore sees all of it.
    ExpectSuccess(props.AddProperty(AAX_eProperty_Host63, variant.mHost63));
    ExpectSuccess(props.AddProperty(AAX_eProperty_Host62, variant.mHost62));
    ExpectSuccess(props.AddProperty(AAX_eProperty_PlugInID_TI, variant.mTiID));
    ExpectSuccess(props.AddProperty(AAX_eProperty_Host54, 2));
    ExpectSuccess(desc.AddProcessProc_TI(variant.mTiModule, kTiEntry, &props, nullptr, nullptr, nullptr));
}

} // namespace

void DescribeAlgorithmComponent(AAX_EStemFormat inStemFormat, AAX_IComponentDescriptor* outDesc) {
    AAX_ASSERT_IN(kSource, inStemFormat == AAX_eStemFormat_Mono || inStemFormat == AAX_eStemFormat_Stereo);
    AddFields(*outDesc);
    AAX_IPropertyMap* const properties = outDesc->NewPropertyMap();
    AAX_ASSERT_IN(kSource, properties);
    if (properties == nullptr) {
        return;
    }
    ExpectSuccess(properties->AddProperty(AAX_eProperty_ManufacturerID, Code("Mrvk")));
    ExpectSuccess(properties->AddProperty(AAX_eProperty_ProductID, Code("Vdsp")));
    ExpectSuccess(properties->AddProperty(AAX_eProperty_Host60, 1));
    ExpectSuccess(properties->AddProperty(AAX_eProperty_Host56, 1));
    for (const Variant& variant : kVariants) {
        if (variant.mStemFormat == inStemFormat) {
            AddRoutines(variant, *outDesc, *properties);
        }
    }
}

namespace {

void AddNames(AAX_IEffectDescriptor& desc) {
    for (const char* name : kEffectNames) {
        ExpectSuccess(desc.AddName(name));
    }
    ExpectSuccess(desc.AddCategory(AAX_ePlugInCategory_Dynamics));
}

// One component descriptor serves both variants, one after the other.
void AddVariants(AAX_IEffectDescriptor& desc, AAX_IComponentDescriptor& comp) {
    for (const AAX_EStemFormat stemFormat : {AAX_eStemFormat_Mono, AAX_eStemFormat_Stereo}) {
        ExpectSuccess(comp.Clear());
        DescribeAlgorithmComponent(stemFormat, &comp);
        ExpectSuccess(desc.AddComponent(&comp));
    }
}

void AddProcedures(AAX_IEffectDescriptor& desc) {
    ExpectSuccess(desc.AddProcPtr(reinterpret_cast<void*>(&DemoGain_Parameters::Create),
                                  kAAX_ProcPtrID_Create_EffectParameters));
    ExpectSuccess(desc.AddResourceInfo(AAX_eResourceType_PageTable, kPageTableFile));
    ExpectSuccess(desc.AddProcPtr(DemoGain_EditorProcedure(), kAAX_ProcPtrID_Create_EffectGUI));
}

AAX_Result AddMeters(AAX_IEffectDescriptor& desc) {
    for (const Meter& meter : kMeters) {
        AAX_IPropertyMap* const properties = desc.NewPropertyMap();
        AAX_ASSERT_IN(kSource, properties);
        if (properties == nullptr) {
            return AAX_ERROR_NULL_OBJECT;
        }
        ExpectSuccess(properties->AddProperty(AAX_eProperty_Meter_Kind, meter.mKind));
        ExpectSuccess(properties->AddProperty(AAX_eProperty_Host201, 1));
        ExpectSuccess(properties->AddProperty(AAX_eProperty_Host202, 1));
        ExpectSuccess(desc.AddMeterDescription(meter.mID, meter.mName, properties));
    }
    return AAX_SUCCESS;
}

AAX_Result DescribeEffect(AAX_ICollection& collection) {
    AAX_IEffectDescriptor* const desc = collection.NewDescriptor();
    AAX_IComponentDescriptor* const comp = desc != nullptr ? desc->NewComponentDescriptor() : nullptr;
    AAX_Result result = comp != nullptr ? AAX_SUCCESS : AAX_ERROR_NULL_OBJECT;
    AAX_ASSERT_IN(kSource, result == AAX_SUCCESS);
    if (result != AAX_SUCCESS) {
        return result;
    }
    AddNames(*desc);
    AddVariants(*desc, *comp);
    AddProcedures(*desc);
    result = AddMeters(*desc);
    if (result != AAX_SUCCESS) {
        return result;
    }
    result = collection.AddEffect(cDemoGain_EffectID, desc);
    AAX_ASSERT_IN(kSource, result == AAX_SUCCESS);
    return result;
}

} // namespace

AAX_Result GetEffectDescriptions(AAX_ICollection* outCollection) {
    const AAX_Result result = DescribeEffect(*outCollection);
    ExpectSuccess(outCollection->SetManufacturerName(kManufacturerName));
    for (const char* name : kPackageNames) {
        ExpectSuccess(outCollection->AddPackageName(name));
    }
    ExpectSuccess(outCollection->SetPackageVersion(kPackageVersion));
    return result;
}
