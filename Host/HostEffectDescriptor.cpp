#include "Host/HostEffectDescriptor.h"

#include "Host/HostComponentDescriptor.h"
#include "Host/HostPropertyMap.h"

namespace varno {

HostEffectDescriptor::HostEffectDescriptor(std::shared_ptr<HostContext> context)
    : HostObject(std::move(context), "effect descriptor") {
}

AAX_Result HostEffectDescriptor::NewComponentDescriptor(IACFUnknown** outComponent) {
    if (outComponent == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outComponent = nullptr;
    if (context()->options.faults.noComponentDescriptor) {
        return AAX_ERROR_NULL_OBJECT;
    }
    *outComponent = new HostComponentDescriptor(context());
    return AAX_SUCCESS;
}

AAX_Result HostEffectDescriptor::AddComponent(IACFUnknown* component) {
    const auto* own = ownObject<HostComponentDescriptor>(component);
    if (own == nullptr) {
        return AAX_ERROR_NULL_COMPONENT;
    }
    if (context()->options.faults.addComponent != AAX_SUCCESS) {
        return context()->options.faults.addComponent;
    }
    mDescription.variants.push_back(own->description());
    return AAX_SUCCESS;
}

AAX_Result HostEffectDescriptor::AddName(const char* name) {
    if (name == nullptr || *name == '\0') {
        return AAX_ERROR_EMPTY_EFFECT_NAME;
    }
    mDescription.names.emplace_back(name);
    return AAX_SUCCESS;
}

AAX_Result HostEffectDescriptor::AddCategory(std::uint32_t category) {
    mDescription.categories.push_back(category);
    return AAX_SUCCESS;
}

AAX_Result HostEffectDescriptor::AddCategoryBypassParameter(std::uint32_t category, AAX_CParamID paramID) {
    if (paramID == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDescription.categories.push_back(category);
    mDescription.bypassParameters.emplace_back(paramID);
    return AAX_SUCCESS;
}

AAX_Result HostEffectDescriptor::AddProcPtr(void* proc, AAX_CProcPtrID procID) {
    if (proc == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDescription.procedures.push_back({procID, reinterpret_cast<AAX_CCreateObjectProc>(proc)});
    return AAX_SUCCESS;
}

AAX_Result HostEffectDescriptor::NewPropertyMap(IACFUnknown** outMap) {
    const std::int32_t allowed = context()->options.faults.effectPropertyMaps;
    if (allowed >= 0 && mPropertyMapsMade >= allowed && outMap != nullptr) {
        *outMap = nullptr;
        return AAX_ERROR_NULL_OBJECT;
    }
    ++mPropertyMapsMade;
    return handOutPropertyMap(context(), {}, outMap);
}

AAX_Result HostEffectDescriptor::SetProperties(IACFUnknown* map) {
    const auto* own = ownObject<HostPropertyMap>(map);
    if (own == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDescription.properties = own->properties();
    return AAX_SUCCESS;
}

AAX_Result HostEffectDescriptor::AddResourceInfo(AAX_EResourceType type, const char* fileName) {
    if (fileName == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDescription.resources.push_back({type, fileName});
    return AAX_SUCCESS;
}

AAX_Result HostEffectDescriptor::AddMeterDescription(AAX_CTypeID meterID, const char* name,
                                                     IACFUnknown* properties) {
    const auto* own = ownObject<HostPropertyMap>(properties);
    if (name == nullptr || own == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDescription.meters.push_back({meterID, name, own->properties()});
    return AAX_SUCCESS;
}

AAX_Result HostEffectDescriptor::AddControlMIDINode(AAX_CTypeID, std::int32_t, const char*, std::uint32_t) {
    return AAX_ERROR_UNIMPLEMENTED;
}

void* HostEffectDescriptor::interfaceFor(const acfIID& iid) {
    if (iid == IID_IAAXEffectDescriptorV1) {
        return static_cast<AAX_IACFEffectDescriptor*>(this);
    }
    return iid == kOwnID ? this : nullptr;
}

} // namespace varno
