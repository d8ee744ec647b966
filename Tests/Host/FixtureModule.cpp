#include "Tests/Host/FixtureModule.h"

#include "AAX_IACFCollection.h"
#include "AAX_IACFComponentDescriptor.h"
#include "AAX_IACFEffectDescriptor.h"
#include "AAX_IACFPropertyMap.h"
#include "ACF/ACFPtr.h"
#include "ACF/IACFComponentFactory.h"
#include "Tests/Host/FixtureAlgorithm.h"
#include "Tests/Host/FixtureEditor.h"
#include "Tests/Host/FixtureFaults.h"
#include "Tests/Host/FixtureObject.h"
#include "Tests/Host/FixtureParameters.h"

#include <iterator>

namespace varno::fixture {

namespace {

AAX_IACFHostServices_V3* gServices = nullptr;
IACFUnknown* gKeptPropertyMap = nullptr;

template<class Interface, class Maker>
ACFPtr<Interface> make(const acfIID& iid, Maker maker) {
    IACFUnknown* made = nullptr;
    maker(&made);
    const auto owned = ACFPtr<IACFUnknown>::Adopt(made);
    return ACFPtr<Interface>::Query(owned.Get(), iid);
}

void describeFields(AAX_IACFComponentDescriptor& component) {
    component.AddDataInPort(kGain, sizeof(float), AAX_eDataInPortType_Buffered);
    component.AddDataInPort(kBypass, sizeof(std::int32_t), AAX_eDataInPortType_Buffered);
    component.AddAudioIn(kInputs);
    component.AddAudioOut(kOutputs);
    component.AddAudioBufferLength(kFrames);
    component.AddSampleRate(kSampleRate);
    component.AddMeters(kMeters, kMeterIDs, static_cast<std::uint32_t>(std::size(kMeterIDs)));
    component.AddPrivateData(kState, sizeof(State), 0);
    component.AddClock(kClock);
    component.AddTemporaryData(kScratch, kScratchSize);
    component.AddSideChainIn(kSideChain);
    component.AddReservedField(kReserved, 3);
}

void describeVariant(AAX_IACFEffectDescriptor& effect, AAX_IACFComponentDescriptor& component,
                     AAX_EStemFormat format) {
    component.Clear();
    describeFields(component);
    const bool isMono = format == AAX_eStemFormat_Mono;
    const auto map = make<AAX_IACFPropertyMap>(IID_IAAXPropertyMapV1,
                                               [&](IACFUnknown** out) { component.NewPropertyMap(out); });
    map->AddProperty(AAX_eProperty_ManufacturerID, kManufacturerID);
    map->AddProperty(AAX_eProperty_ProductID, kProductID);
    map->AddProperty(AAX_eProperty_InputStemFormat, format);
    map->AddProperty(AAX_eProperty_OutputStemFormat, format);
    map->AddProperty(AAX_eProperty_PlugInID_Native, static_cast<std::int32_t>(isMono ? kMonoID : kStereoID));
    component.AddProcessProc_Native(isMono ? process<1> : process<2>, map.Get(), nullptr, nullptr, nullptr);
    if (!isMono) {
        map->AddProperty(AAX_eProperty_PlugInID_TI, kStereoTiID);
        component.AddProcessProc_TI("Fixture_TI.dll", "Entry", map.Get(), nullptr, nullptr, nullptr);
    }
    effect.AddComponent(&component);
}

AAX_Result describe(AAX_IACFCollection& collection) {
    const auto effect = make<AAX_IACFEffectDescriptor>(
        IID_IAAXEffectDescriptorV1, [&](IACFUnknown** out) { collection.NewDescriptor(out); });
    const auto component = make<AAX_IACFComponentDescriptor>(
        IID_IAAXComponentDescriptorV1, [&](IACFUnknown** out) { effect->NewComponentDescriptor(out); });
    effect->AddName("Fixture Gain");
    effect->AddCategory(AAX_ePlugInCategory_Dynamics);
    describeVariant(*effect, *component, AAX_eStemFormat_Mono);
    describeVariant(*effect, *component, AAX_eStemFormat_Stereo);
    effect->AddProcPtr(reinterpret_cast<void*>(&FixtureParameters::Create),
                       kAAX_ProcPtrID_Create_EffectParameters);
#ifndef FIXTURE_EDITORLESS
    effect->AddProcPtr(reinterpret_cast<void*>(&FixtureEditor::Create), kAAX_ProcPtrID_Create_EffectGUI);
#endif
    effect->AddResourceInfo(AAX_eResourceType_PageTable, "Fixture.xml");
    auto meter = make<AAX_IACFPropertyMap>(IID_IAAXPropertyMapV1,
                                           [&](IACFUnknown** out) { effect->NewPropertyMap(out); });
    meter->AddProperty(AAX_eProperty_Meter_Kind, AAX_eMeterKind_Input);
    effect->AddMeterDescription(AAX_FourCC("FXM1"), "In", meter.Get());
    if (has(Fault::kKeepsPropertyMap)) {
        gKeptPropertyMap = meter.Detach();
    }
    AAX_Result result = collection.AddEffect(kEffectID, effect.Get());
    if (has(Fault::kDescribesEffectTwice)) {
        result = collection.AddEffect(kEffectID, effect.Get());
    }
    if (!has(Fault::kDescribesNoManufacturer)) {
        collection.SetManufacturerName("Example");
    }
    collection.AddPackageName("Fixture");
    collection.SetPackageVersion(7);
    return result;
}

ACFRESULT registerPlugin(IACFUnknown* host, IACFPluginDefinition** out) {
    *out = nullptr;
    if (has(Fault::kRegistrationFails)) {
        return AAX_ERROR_NULL_OBJECT;
    }
    if (has(Fault::kNoDefinition)) {
        return ACF_OK;
    }
    const auto collection = ACFPtr<AAX_IACFCollection>::Query(host, IID_IAAXCollectionV1);
    const AAX_Result result = describe(*collection);
    if (result == AAX_SUCCESS) {
        return collection->QueryInterface(IID_IACFPluginDefinition, reinterpret_cast<void**>(out));
    }
    return result;
}

ACFRESULT registerComponent(IACFUnknown*, std::uint32_t, IACFComponentDefinition** out) {
    *out = nullptr;
    return ACF_OK;
}

ACFRESULT getClassFactory(IACFUnknown*, const acfUID&, const acfUID&, void** out) {
    *out = nullptr;
    return AAX_ERROR_UNIMPLEMENTED;
}

ACFRESULT canUnloadNow(IACFUnknown*) {
    return gLiveObjects;
}

ACFRESULT startup(IACFUnknown* host) {
    if (has(Fault::kStartupFails)) {
        return ACF_E_UNEXPECTED;
    }
    const auto factory = ACFPtr<IACFComponentFactory>::Query(host, IID_IACFComponentFactory);
    return factory->CreateComponent(nullptr, AAXCompID_HostServices, IID_IAAXHostServicesV3,
                                    reinterpret_cast<void**>(&gServices));
}

ACFRESULT shutdown(IACFUnknown*) {
    gServices->Release();
    gServices = nullptr;
    return ACF_OK;
}

ACFRESULT getSDKVersion(std::uint64_t* out) {
    *out = kSDKVersion;
    return ACF_OK;
}

} // namespace

ModuleEntryPoints entryPoints() {
    return {registerPlugin, registerComponent, getClassFactory, canUnloadNow,
            startup,        shutdown,          getSDKVersion};
}

AAX_IACFHostServices_V3* services() {
    return gServices;
}

void releaseKeptPropertyMap() {
    gKeptPropertyMap->Release();
    gKeptPropertyMap = nullptr;
}

} // namespace varno::fixture
