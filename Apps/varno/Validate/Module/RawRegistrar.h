/// A host object that modules describe themselves to, whose every call can be made to fail.
#ifndef VARNO_APPS_VARNO_VALIDATE_MODULE_RAWREGISTRAR_H
#define VARNO_APPS_VARNO_VALIDATE_MODULE_RAWREGISTRAR_H

#include "AAX_IACFCollection.h"
#include "AAX_IACFComponentDescriptor.h"
#include "AAX_IACFEffectDescriptor.h"
#include "AAX_IACFPropertyMap.h"
#include "AAX_UIDs.h"
#include "ACF/IACFComponentFactory.h"
#include "ACF/IACFPluginDefinition.h"

#include <cstdint>
#include <functional>
#include <utility>

namespace varno::validate {

/// Collection, effect, variant, property map and component factory in one object; whatever it is asked to
/// make is itself, and it keeps nothing of what it is told. Outlives the module's use of it. [main]
class RawRegistrar final : public AAX_IACFCollection,
                           public AAX_IACFEffectDescriptor,
                           public AAX_IACFComponentDescriptor,
                           public AAX_IACFPropertyMap,
                           public IACFComponentFactory,
                           public IACFPluginDefinition {
public:
    RawRegistrar() = default;
    RawRegistrar(const RawRegistrar&) = delete;
    RawRegistrar& operator=(const RawRegistrar&) = delete;
    virtual ~RawRegistrar() = default;

    /// From now on, called within every call of the module's but AddRef() and Release(); what it throws, the
    /// module receives. Empty for nothing.
    void setHook(std::function<void()> hook) { mHook = std::move(hook); }
    IACFUnknown& unknown() { return static_cast<AAX_IACFCollection&>(*this); }
    /// What the module has taken and not given back.
    std::int32_t references() const { return mReferences; }
    /// How many effects were added.
    int effects() const { return mEffects; }

    ACFRESULT QueryInterface(const acfIID& iid, void** outObject) override {
        *outObject = nullptr;
        (void)called();
        *outObject = interfaceFor(iid);
        mReferences += *outObject == nullptr ? 0 : 1;
        return *outObject == nullptr ? ACF_E_NOINTERFACE : ACF_OK;
    }
    std::uint32_t AddRef() override { return static_cast<std::uint32_t>(++mReferences); }
    std::uint32_t Release() override { return static_cast<std::uint32_t>(--mReferences); }

    // There is none.
    ACFRESULT CreateComponent(IACFUnknown*, const acfCLSID&, const acfIID&, void** outObject) override {
        *outObject = nullptr;
        (void)called();
        return ACF_E_NOINTERFACE;
    }

    AAX_Result NewDescriptor(IACFUnknown** outDescriptor) override { return made(outDescriptor); }
    AAX_Result AddEffect(const char*, IACFUnknown*) override {
        ++mEffects;
        return called();
    }
    AAX_Result SetManufacturerName(const char*) override { return called(); }
    AAX_Result AddPackageName(const char*) override { return called(); }
    AAX_Result SetPackageVersion(std::uint32_t) override { return called(); }
    AAX_Result NewPropertyMap(IACFUnknown** outMap) override { return made(outMap); }
    AAX_Result SetProperties(IACFUnknown*) override { return called(); }

    AAX_Result NewComponentDescriptor(IACFUnknown** outComponent) override { return made(outComponent); }
    AAX_Result AddComponent(IACFUnknown*) override { return called(); }
    AAX_Result AddName(const char*) override { return called(); }
    AAX_Result AddCategory(std::uint32_t) override { return called(); }
    AAX_Result AddCategoryBypassParameter(std::uint32_t, AAX_CParamID) override { return called(); }
    AAX_Result AddProcPtr(void*, AAX_CProcPtrID) override { return called(); }
    AAX_Result AddResourceInfo(AAX_EResourceType, const char*) override { return called(); }
    AAX_Result AddMeterDescription(AAX_CTypeID, const char*, IACFUnknown*) override { return called(); }
    AAX_Result AddControlMIDINode(AAX_CTypeID, std::int32_t, const char*, std::uint32_t) override {
        return called();
    }

    AAX_Result Clear() override { return called(); }
    AAX_Result AddAudioIn(AAX_CFieldIndex) override { return called(); }
    AAX_Result AddAudioOut(AAX_CFieldIndex) override { return called(); }
    AAX_Result AddAudioBufferLength(AAX_CFieldIndex) override { return called(); }
    AAX_Result AddSampleRate(AAX_CFieldIndex) override { return called(); }
    AAX_Result AddClock(AAX_CFieldIndex) override { return called(); }
    AAX_Result AddSideChainIn(AAX_CFieldIndex) override { return called(); }
    AAX_Result AddDataInPort(AAX_CFieldIndex, std::uint32_t, AAX_EDataInPortType) override {
        return called();
    }
    AAX_Result AddAuxOutputStem(AAX_CFieldIndex, std::int32_t, const char*) override { return called(); }
    AAX_Result AddPrivateData(AAX_CFieldIndex, std::int32_t, std::uint32_t) override { return called(); }
    AAX_Result AddTemporaryData(AAX_CFieldIndex, std::uint32_t) override { return called(); }
    AAX_Result AddDmaInstance(AAX_CFieldIndex, AAX_IDma::EMode) override { return called(); }
    AAX_Result AddMeters(AAX_CFieldIndex, const AAX_CTypeID*, std::uint32_t) override { return called(); }
    AAX_Result AddMIDINode(AAX_CFieldIndex, std::int32_t, const char*, std::uint32_t) override {
        return called();
    }
    AAX_Result AddReservedField(AAX_CFieldIndex, std::uint32_t) override { return called(); }
    AAX_Result DuplicatePropertyMap(IACFUnknown*, IACFUnknown** outMap) override { return made(outMap); }
    AAX_Result AddProcessProc_Native(AAX_CProcessProc, IACFUnknown*, AAX_CInstanceInitProc,
                                     AAX_CBackgroundProc, std::int32_t*) override {
        return called();
    }
    AAX_Result AddProcessProc_TI(const char*, const char*, IACFUnknown*, const char*, const char*,
                                 std::int32_t*) override {
        return called();
    }
    AAX_Result AddProcessProc(IACFUnknown*, std::int32_t*, std::int32_t) override { return called(); }

    AAX_Result GetProperty(AAX_EProperty, std::int32_t*) const override { return undefined(); }
    AAX_Result GetPointerProperty(AAX_EProperty, const void**) const override { return undefined(); }
    AAX_Result AddProperty(AAX_EProperty, std::int32_t) override { return called(); }
    AAX_Result AddPointerProperty(AAX_EProperty, const void*) override { return called(); }
    AAX_Result RemoveProperty(AAX_EProperty) override { return undefined(); }
    AAX_Result AddPropertyWithIDArray(AAX_EProperty, const AAX_CTypeID*, std::uint32_t) override {
        return called();
    }
    AAX_Result GetPropertyWithIDArray(AAX_EProperty, const AAX_CTypeID**, std::uint32_t*) const override {
        return undefined();
    }

private:
    void* interfaceFor(const acfIID& iid) {
        if (iid == IID_IACFUnknown || iid == IID_IAAXCollectionV1) {
            return static_cast<AAX_IACFCollection*>(this);
        }
        if (iid == IID_IAAXEffectDescriptorV1) {
            return static_cast<AAX_IACFEffectDescriptor*>(this);
        }
        if (iid == IID_IAAXComponentDescriptorV1) {
            return static_cast<AAX_IACFComponentDescriptor*>(this);
        }
        if (iid == IID_IAAXPropertyMapV1) {
            return static_cast<AAX_IACFPropertyMap*>(this);
        }
        if (iid == IID_IACFComponentFactory) {
            return static_cast<IACFComponentFactory*>(this);
        }
        return iid == IID_IACFPluginDefinition ? static_cast<IACFPluginDefinition*>(this) : nullptr;
    }
    AAX_Result called() const {
        if (mHook) {
            mHook();
        }
        return AAX_SUCCESS;
    }
    AAX_Result undefined() const {
        (void)called();
        return AAX_ERROR_PROPERTY_UNDEFINED;
    }
    AAX_Result made(IACFUnknown** outObject) {
        *outObject = nullptr;
        (void)called();
        *outObject = &unknown();
        AddRef();
        return AAX_SUCCESS;
    }

    std::function<void()> mHook;
    std::int32_t mReferences = 0;
    int mEffects = 0;
};

} // namespace varno::validate

#endif
