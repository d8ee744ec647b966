#include "DemoGain_Describe.h"

#include "AAX_IEffectDescriptor.h"
#include "AAX_IPropertyMap.h"
#include "DemoGain_DescribeAlgorithm.h"
#include "DemoGain_GUI.h"
#include "DemoGain_Parameters.h"

namespace {

constexpr char kManufacturerName[] = "Morvak";
/// From the longest to the shortest, so that a host can choose what fits.
constexpr const char* kEffectNames[] = {"Varno-S", "Varno-S", "VarS", "VarS", "Va"};
constexpr const char* kPackageNames[] = {"Varno-S AAX Plug-In", "Varno-S Plug-In", "Varno-S", "VarS"};
constexpr uint32_t kPackageVersion = 1;
constexpr char kPageTableFile[] = "Varno-S.xml";

/// A meter as the host shows it. Its identifier is not that of the algorithm's tap.
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

void AddNames(AAX_IEffectDescriptor& desc) {
    for (const char* name : kEffectNames) {
        DemoGain_ExpectSuccess(desc.AddName(name));
    }
    DemoGain_ExpectSuccess(desc.AddCategory(AAX_ePlugInCategory_Dynamics));
}

/// One component descriptor serves both variants, one after the other.
void AddVariants(AAX_IEffectDescriptor& desc, AAX_IComponentDescriptor& comp) {
    for (const AAX_EStemFormat stemFormat : {AAX_eStemFormat_Mono, AAX_eStemFormat_Stereo}) {
        DemoGain_ExpectSuccess(comp.Clear());
        DescribeAlgorithmComponent(stemFormat, &comp);
        DemoGain_ExpectSuccess(desc.AddComponent(&comp));
    }
}

void AddProcedures(AAX_IEffectDescriptor& desc) {
    DemoGain_ExpectSuccess(desc.AddProcPtr(reinterpret_cast<void*>(&DemoGain_Parameters::Create),
                                           kAAX_ProcPtrID_Create_EffectParameters));
    DemoGain_ExpectSuccess(desc.AddResourceInfo(AAX_eResourceType_PageTable, kPageTableFile));
    DemoGain_ExpectSuccess(
        desc.AddProcPtr(reinterpret_cast<void*>(&DemoGain_GUI::Create), kAAX_ProcPtrID_Create_EffectGUI));
}

AAX_Result AddMeters(AAX_IEffectDescriptor& desc) {
    for (const Meter& meter : kMeters) {
        AAX_IPropertyMap* const properties = desc.NewPropertyMap();
        AAX_ASSERT_IN(cDemoGain_DescribeSource, properties);
        if (properties == nullptr) {
            return AAX_ERROR_NULL_OBJECT;
        }
        DemoGain_ExpectSuccess(properties->AddProperty(AAX_eProperty_Meter_Kind, meter.mKind));
        DemoGain_ExpectSuccess(properties->AddProperty(AAX_eProperty_Host201, 1));
        DemoGain_ExpectSuccess(properties->AddProperty(AAX_eProperty_Host202, 1));
        DemoGain_ExpectSuccess(desc.AddMeterDescription(meter.mID, meter.mName, properties));
    }
    return AAX_SUCCESS;
}

AAX_Result DescribeEffect(AAX_ICollection& collection) {
    AAX_IEffectDescriptor* const desc = collection.NewDescriptor();
    AAX_IComponentDescriptor* const comp = desc != nullptr ? desc->NewComponentDescriptor() : nullptr;
    AAX_Result result = comp != nullptr ? AAX_SUCCESS : AAX_ERROR_NULL_OBJECT;
    AAX_ASSERT_IN(cDemoGain_DescribeSource, result == AAX_SUCCESS);
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
    AAX_ASSERT_IN(cDemoGain_DescribeSource, result == AAX_SUCCESS);
    return result;
}

} // namespace

AAX_Result GetEffectDescriptions(AAX_ICollection* outCollection) {
    const AAX_Result result = DescribeEffect(*outCollection);
    DemoGain_ExpectSuccess(outCollection->SetManufacturerName(kManufacturerName));
    for (const char* name : kPackageNames) {
        DemoGain_ExpectSuccess(outCollection->AddPackageName(name));
    }
    DemoGain_ExpectSuccess(outCollection->SetPackageVersion(kPackageVersion));
    return result;
}
