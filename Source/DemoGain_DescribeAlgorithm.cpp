#include "DemoGain_DescribeAlgorithm.h"

#include "AAX_IPropertyMap.h"
#include "DemoGain_Alg.h"

#include <iterator>

namespace {

/// What tells one variant from the other.
struct Variant {
    AAX_EStemFormat mStemFormat;
    AAX_CProcessProc mRoutine;
    AAX_CTypeID mNativeID;
    AAX_CTypeID mOfflineID;
    AAX_CTypeID mTiID;
    const char* mTiModule; ///< A separate build for the host's DSP hardware.
    int32_t mHost63;
    int32_t mHost62;
};

constexpr char kTiEntry[] = "AlgEntry";

template<int kNumChannels>
AAX_CProcessProc Routine() {
    return reinterpret_cast<AAX_CProcessProc>(&DemoGain_AlgorithmProcessFunction<kNumChannels, kNumChannels>);
}

const Variant kVariants[] = {
    {AAX_eStemFormat_Mono, Routine<1>(), AAX_FourCC("VDRm"), AAX_FourCC("VDAm"), AAX_FourCC("VDTm"),
     "VarnoDSP_MM_TI.dll", 2184, 359},
    {AAX_eStemFormat_Stereo, Routine<2>(), AAX_FourCC("VDRs"), AAX_FourCC("VDAs"), AAX_FourCC("VDTs"),
     "VarnoDSP_SS_TI.dll", 3622, 524},
};

void AddFields(AAX_IComponentDescriptor& desc) {
    DemoGain_ExpectSuccess(desc.AddAudioIn(eAlgFieldID_AudioIn));
    DemoGain_ExpectSuccess(desc.AddAudioOut(eAlgFieldID_AudioOut));
    DemoGain_ExpectSuccess(desc.AddAudioBufferLength(eAlgFieldID_BufferSize));
    DemoGain_ExpectSuccess(desc.AddSampleRate(eAlgFieldID_SampleRate));
    DemoGain_ExpectSuccess(
        desc.AddMeters(eAlgFieldID_Meters, cDemoGain_MeterID, std::size(cDemoGain_MeterID)));
    for (AAX_CFieldIndex field = 0; field < kAlgNumDataInPorts; ++field) {
        DemoGain_ExpectSuccess(desc.AddDataInPort(field, kAlgDataInPortSize, AAX_eDataInPortType_Buffered));
    }
    constexpr uint32_t kNoOptions = 0;
    DemoGain_ExpectSuccess(desc.AddPrivateData(eAlgFieldID_State, sizeof(SDemoGain_Alg_State), kNoOptions));
}

void AddProperty(AAX_IPropertyMap& props, AAX_EProperty property, int32_t value) {
    DemoGain_ExpectSuccess(props.AddProperty(property, value));
}

void AddIdentifier(AAX_IPropertyMap& props, AAX_EProperty property, AAX_CTypeID identifier) {
    AddProperty(props, property, static_cast<int32_t>(identifier));
}

void AddRoutines(const Variant& variant, AAX_IComponentDescriptor& desc, AAX_IPropertyMap& props) {
    AddProperty(props, AAX_eProperty_InputStemFormat, variant.mStemFormat);
    AddProperty(props, AAX_eProperty_OutputStemFormat, variant.mStemFormat);
    AddIdentifier(props, AAX_eProperty_PlugInID_Native, variant.mNativeID);
    AddIdentifier(props, AAX_eProperty_PlugInID_Offline, variant.mOfflineID);
    DemoGain_ExpectSuccess(desc.AddProcessProc_Native(variant.mRoutine, &props, nullptr, nullptr, nullptr));

    // The same map goes on to the second registration, which therefore sees all of it.
    AddProperty(props, AAX_eProperty_Host63, variant.mHost63);
    AddProperty(props, AAX_eProperty_Host62, variant.mHost62);
    AddIdentifier(props, AAX_eProperty_PlugInID_TI, variant.mTiID);
    AddProperty(props, AAX_eProperty_Host54, 2);
    DemoGain_ExpectSuccess(
        desc.AddProcessProc_TI(variant.mTiModule, kTiEntry, &props, nullptr, nullptr, nullptr));
}

} // namespace

void DescribeAlgorithmComponent(AAX_EStemFormat inStemFormat, AAX_IComponentDescriptor* outDesc) {
    AAX_ASSERT_IN(cDemoGain_DescribeSource,
                  inStemFormat == AAX_eStemFormat_Mono || inStemFormat == AAX_eStemFormat_Stereo);
    AddFields(*outDesc);
    AAX_IPropertyMap* const properties = outDesc->NewPropertyMap();
    AAX_ASSERT_IN(cDemoGain_DescribeSource, properties);
    if (properties == nullptr) {
        return;
    }
    AddIdentifier(*properties, AAX_eProperty_ManufacturerID, AAX_FourCC("Mrvk"));
    AddIdentifier(*properties, AAX_eProperty_ProductID, AAX_FourCC("Vdsp"));
    AddProperty(*properties, AAX_eProperty_Host60, 1);
    AddProperty(*properties, AAX_eProperty_Host56, 1);
    for (const Variant& variant : kVariants) {
        if (variant.mStemFormat == inStemFormat) {
            AddRoutines(variant, *outDesc, *properties);
        }
    }
}
