#include "Host/ModuleHost.h"

#include "Host/HostEffectDescriptor.h"
#include "Host/HostPropertyMap.h"

namespace varno {

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
    *outDescriptor = nullptr;
    if (context()->options.faults.noEffectDescriptor) {
        return AAX_ERROR_NULL_OBJECT;
    }
    *outDescriptor = new HostEffectDescriptor(context());
    return AAX_SUCCESS;
}

AAX_Result ModuleHost::AddEffect(const char* effectID, IACFUnknown* descriptor) {
    const auto* own = ownObject<HostEffectDescriptor>(descriptor);
    if (effectID == nullptr || own == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (context()->options.faults.addEffect != AAX_SUCCESS) {
        return context()->options.faults.addEffect;
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
