#include "Host/ModuleHost.h"

#include "AAX_IACFFeatureInfo.h"
#include "ACF/ACFPtr.h"
#include "Host/HostDescriptors.h"
#include "Host/HostObject.h"
#include "Host/PageTable.h"

namespace varno {

namespace {

/// Feature info version 1. [main]
class HostFeatureInfo : public HostObject<AAX_IACFFeatureInfo> {
public:
    HostFeatureInfo(std::shared_ptr<HostContext> context, HostFeature feature);

    AAX_Result SupportLevel(AAX_ESupportLevel* outLevel) const override;
    AAX_Result AcquireProperties(IACFUnknown** outMap) override;

protected:
    void* interfaceFor(const acfIID& iid) override;

private:
    HostFeature mFeature;
};

HostFeatureInfo::HostFeatureInfo(std::shared_ptr<HostContext> context, HostFeature feature)
    : HostObject(std::move(context), "feature info"),
      mFeature(std::move(feature)) {
}

AAX_Result HostFeatureInfo::SupportLevel(AAX_ESupportLevel* outLevel) const {
    if (outLevel == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outLevel = mFeature.level;
    return AAX_SUCCESS;
}

AAX_Result HostFeatureInfo::AcquireProperties(IACFUnknown** outMap) {
    if (!mFeature.properties) {
        if (outMap != nullptr) {
            *outMap = nullptr;
        }
        return AAX_ERROR_NULL_OBJECT;
    }
    return handOutPropertyMap(context(), *mFeature.properties, outMap);
}

void* HostFeatureInfo::interfaceFor(const acfIID& iid) {
    return iid == IID_IAAXFeatureInfoV1 ? static_cast<AAX_IACFFeatureInfo*>(this) : nullptr;
}

} // namespace

HostServices::HostServices(std::shared_ptr<HostContext> context)
    : HostObject(std::move(context), "host services") {
}

AAX_Result HostServices::Trace(std::int32_t priority, const char* message) {
    if (context()->options.traceSink) {
        context()->options.traceSink(priority, message);
    }
    context()->monitor->trace(priority, message);
    return AAX_SUCCESS;
}

AAX_Result HostServices::StackTrace(std::int32_t tracePriority, std::int32_t, const char* message) {
    // The line alone: a debugger shows the stack.
    return Trace(tracePriority, message);
}

AAX_Result HostServices::HandleAssertFailure(const char* file, std::int32_t line, const char* note,
                                             std::int32_t flags) {
    context()->monitor->assertFailure(file, line, note, flags);
    return AAX_SUCCESS;
}

void* HostServices::interfaceFor(const acfIID& iid) {
    if (iid == IID_IAAXHostServicesV1) {
        return static_cast<AAX_IACFHostServices*>(this);
    }
    if (iid == IID_IAAXHostServicesV2) {
        return static_cast<AAX_IACFHostServices_V2*>(this);
    }
    return iid == IID_IAAXHostServicesV3 ? static_cast<AAX_IACFHostServices_V3*>(this) : nullptr;
}

HostComponentFactory::HostComponentFactory(IACFUnknown& owner, std::shared_ptr<HostContext> context)
    : Facet(owner),
      mContext(std::move(context)) {
}

ACFRESULT HostComponentFactory::CreateComponent(IACFUnknown* outer, const acfCLSID& classID,
                                                const acfIID& iid, void** outObject) {
    if (outObject == nullptr) {
        return ACF_E_NOINTERFACE;
    }
    *outObject = nullptr;
    ACFPtr<IACFUnknown> component;
    if (outer == nullptr && classID == AAXCompID_HostServices) {
        component = ACFPtr<IACFUnknown>::Adopt(new HostServices(mContext));
    } else if (outer == nullptr && classID == AAXCompID_PageTable) {
        component = ACFPtr<IACFUnknown>::Adopt(new PageTable(mContext));
    }
    return component ? component->QueryInterface(iid, outObject) : ACF_E_NOINTERFACE;
}

HostDescriptionHost::HostDescriptionHost(IACFUnknown& owner, std::shared_ptr<HostContext> context)
    : Facet(owner),
      mContext(std::move(context)) {
}

AAX_Result HostDescriptionHost::AcquireFeatureProperties(const acfUID& featureID,
                                                         IACFUnknown** outFeatureInfo) {
    if (outFeatureInfo == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outFeatureInfo = nullptr;
    for (const HostFeature& feature : mContext->options.features) {
        if (feature.id == featureID) {
            *outFeatureInfo = new HostFeatureInfo(mContext, feature);
            return AAX_SUCCESS;
        }
    }
    return AAX_ERROR_UNKNOWN_ID;
}

ModuleHost::ModuleHost(std::shared_ptr<HostContext> sharedContext)
    : HostObject(std::move(sharedContext), "module host"),
      mDefinition(*this),
      mDescriptionHost(*this, context()),
      mFactory(*this, context()) {
}

AAX_Result ModuleHost::NewDescriptor(IACFUnknown** outDescriptor) {
    if (outDescriptor == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outDescriptor = new HostEffectDescriptor(context());
    return AAX_SUCCESS;
}

AAX_Result ModuleHost::AddEffect(const char* effectID, IACFUnknown* descriptor) {
    const auto* own = ownObject<HostEffectDescriptor>(descriptor);
    if (effectID == nullptr || own == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    EffectDescription effect = own->description();
    effect.id = effectID;
    for (const EffectDescription& other : mDescription.effects) {
        if (other.id == effect.id) {
            return AAX_ERROR_DUPLICATE_EFFECT_ID;
        }
    }
    if (effect.variants.empty()) {
        return AAX_ERROR_NO_COMPONENTS;
    }
    if (effect.names.empty()) {
        return AAX_ERROR_EMPTY_EFFECT_NAME;
    }
    mDescription.effects.push_back(std::move(effect));
    return AAX_SUCCESS;
}

AAX_Result ModuleHost::SetManufacturerName(const char* name) {
    if (name == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDescription.manufacturerName = name;
    return AAX_SUCCESS;
}

AAX_Result ModuleHost::AddPackageName(const char* name) {
    if (name == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDescription.packageNames.emplace_back(name);
    return AAX_SUCCESS;
}

AAX_Result ModuleHost::SetPackageVersion(std::uint32_t version) {
    mDescription.packageVersion = version;
    return AAX_SUCCESS;
}

AAX_Result ModuleHost::NewPropertyMap(IACFUnknown** outMap) {
    return handOutPropertyMap(context(), {}, outMap);
}

AAX_Result ModuleHost::SetProperties(IACFUnknown* map) {
    const auto* own = ownObject<HostPropertyMap>(map);
    if (own == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDescription.properties = own->properties();
    return AAX_SUCCESS;
}

void* ModuleHost::interfaceFor(const acfIID& iid) {
    if (iid == IID_IAAXCollectionV1) {
        return static_cast<AAX_IACFCollection*>(this);
    }
    if (iid == IID_IACFPluginDefinition) {
        return static_cast<IACFPluginDefinition*>(&mDefinition);
    }
    if (iid == IID_IAAXDescriptionHostV1) {
        return static_cast<AAX_IACFDescriptionHost*>(&mDescriptionHost);
    }
    return iid == IID_IACFComponentFactory ? static_cast<IACFComponentFactory*>(&mFactory) : nullptr;
}

} // namespace varno
