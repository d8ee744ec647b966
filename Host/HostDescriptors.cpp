#include "Host/HostDescriptors.h"

#include <algorithm>

namespace varno {

namespace {

std::string textOrEmpty(const char* text) {
    return text == nullptr ? "" : text;
}

} // namespace

HostPropertyMap::HostPropertyMap(std::shared_ptr<HostContext> context, Properties properties)
    : HostObject(std::move(context), "property map"),
      mProperties(std::move(properties)) {
}

template<class T>
const T* HostPropertyMap::find(AAX_EProperty property) const {
    const auto found = mProperties.find(property);
    return found == mProperties.end() ? nullptr : std::get_if<T>(&found->second);
}

AAX_Result HostPropertyMap::GetProperty(AAX_EProperty property, std::int32_t* outValue) const {
    if (outValue == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const auto* value = find<std::int32_t>(property);
    if (value == nullptr) {
        return AAX_ERROR_PROPERTY_UNDEFINED;
    }
    *outValue = *value;
    return AAX_SUCCESS;
}

AAX_Result HostPropertyMap::GetPointerProperty(AAX_EProperty property, const void** outValue) const {
    if (outValue == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const auto* value = find<const void*>(property);
    if (value == nullptr) {
        return AAX_ERROR_PROPERTY_UNDEFINED;
    }
    *outValue = *value;
    return AAX_SUCCESS;
}

AAX_Result HostPropertyMap::AddProperty(AAX_EProperty property, std::int32_t value) {
    mProperties[property] = value;
    return AAX_SUCCESS;
}

AAX_Result HostPropertyMap::AddPointerProperty(AAX_EProperty property, const void* value) {
    mProperties[property] = value;
    return AAX_SUCCESS;
}

AAX_Result HostPropertyMap::RemoveProperty(AAX_EProperty property) {
    return mProperties.erase(property) == 0 ? AAX_ERROR_PROPERTY_UNDEFINED : AAX_SUCCESS;
}

AAX_Result HostPropertyMap::AddPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID* ids,
                                                   std::uint32_t count) {
    if (ids == nullptr && count > 0) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mProperties[property] =
        ids == nullptr ? std::vector<AAX_CTypeID>() : std::vector<AAX_CTypeID>(ids, ids + count);
    return AAX_SUCCESS;
}

AAX_Result HostPropertyMap::GetPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID** outIDs,
                                                   std::uint32_t* outCount) const {
    if (outIDs == nullptr || outCount == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const auto* ids = find<std::vector<AAX_CTypeID>>(property);
    if (ids == nullptr) {
        return AAX_ERROR_PROPERTY_UNDEFINED;
    }
    *outIDs = ids->data();
    *outCount = static_cast<std::uint32_t>(ids->size());
    return AAX_SUCCESS;
}

void* HostPropertyMap::interfaceFor(const acfIID& iid) {
    if (iid == IID_IAAXPropertyMapV1) {
        return static_cast<AAX_IACFPropertyMap*>(this);
    }
    return iid == kOwnID ? this : nullptr;
}

AAX_Result handOutPropertyMap(const std::shared_ptr<HostContext>& context, Properties properties,
                              IACFUnknown** outMap) {
    if (outMap == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outMap = new HostPropertyMap(context, std::move(properties));
    return AAX_SUCCESS;
}

HostComponentDescriptor::HostComponentDescriptor(std::shared_ptr<HostContext> context)
    : HostObject(std::move(context), "component descriptor") {
}

AAX_Result HostComponentDescriptor::Clear() {
    mDescription = {};
    return AAX_SUCCESS;
}

AAX_Result HostComponentDescriptor::declare(FieldDescription field) {
    const auto& fields = mDescription.fields;
    const bool isTaken = std::any_of(fields.begin(), fields.end(), [&](const FieldDescription& other) {
        return other.index == field.index;
    });
    if (field.index < 0 || isTaken) {
        return AAX_ERROR_INVALID_FIELD_INDEX;
    }
    mDescription.fields.push_back(std::move(field));
    return AAX_SUCCESS;
}

AAX_Result HostComponentDescriptor::AddAudioIn(AAX_CFieldIndex field) {
    return declare({field, FieldKind::kAudioIn, 0, 0, {}});
}

AAX_Result HostComponentDescriptor::AddAudioOut(AAX_CFieldIndex field) {
    return declare({field, FieldKind::kAudioOut, 0, 0, {}});
}

AAX_Result HostComponentDescriptor::AddAudioBufferLength(AAX_CFieldIndex field) {
    return declare({field, FieldKind::kBufferLength, 0, 0, {}});
}

AAX_Result HostComponentDescriptor::AddSampleRate(AAX_CFieldIndex field) {
    return declare({field, FieldKind::kSampleRate, 0, 0, {}});
}

AAX_Result HostComponentDescriptor::AddClock(AAX_CFieldIndex field) {
    return declare({field, FieldKind::kClock, 0, 0, {}});
}

AAX_Result HostComponentDescriptor::AddSideChainIn(AAX_CFieldIndex field) {
    return declare({field, FieldKind::kSideChainIn, 0, 0, {}});
}

AAX_Result HostComponentDescriptor::AddDataInPort(AAX_CFieldIndex field, std::uint32_t packetSize,
                                                  AAX_EDataInPortType type) {
    if (packetSize == 0) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    return declare({field, FieldKind::kDataInPort, packetSize, static_cast<std::uint32_t>(type), {}});
}

AAX_Result HostComponentDescriptor::AddAuxOutputStem(AAX_CFieldIndex, std::int32_t, const char*) {
    return AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result HostComponentDescriptor::AddPrivateData(AAX_CFieldIndex field, std::int32_t size,
                                                   std::uint32_t options) {
    if (size < 1) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    return declare({field, FieldKind::kPrivateData, static_cast<std::uint32_t>(size), options, {}});
}

AAX_Result HostComponentDescriptor::AddTemporaryData(AAX_CFieldIndex field, std::uint32_t size) {
    return declare({field, FieldKind::kTemporaryData, size, 0, {}});
}

AAX_Result HostComponentDescriptor::AddDmaInstance(AAX_CFieldIndex, AAX_IDma::EMode) {
    return AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result HostComponentDescriptor::AddMeters(AAX_CFieldIndex field, const AAX_CTypeID* meterIDs,
                                              std::uint32_t count) {
    if (meterIDs == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (mDescription.firstField(FieldKind::kMeters) != nullptr) {
        return AAX_ERROR_CONTEXT_ALREADY_HAS_METERS;
    }
    return declare({field, FieldKind::kMeters, static_cast<std::uint32_t>(count * sizeof(float)), 0,
                    std::vector<AAX_CTypeID>(meterIDs, meterIDs + count)});
}

AAX_Result HostComponentDescriptor::AddMIDINode(AAX_CFieldIndex, std::int32_t, const char*, std::uint32_t) {
    return AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result HostComponentDescriptor::AddReservedField(AAX_CFieldIndex field, std::uint32_t fieldType) {
    return declare({field, FieldKind::kReserved, 0, fieldType, {}});
}

AAX_Result HostComponentDescriptor::NewPropertyMap(IACFUnknown** outMap) {
    return handOutPropertyMap(context(), {}, outMap);
}

AAX_Result HostComponentDescriptor::DuplicatePropertyMap(IACFUnknown* map, IACFUnknown** outMap) {
    if (outMap != nullptr) {
        *outMap = nullptr;
    }
    const auto* own = ownObject<HostPropertyMap>(map);
    return own == nullptr ? AAX_ERROR_NULL_ARGUMENT
                          : handOutPropertyMap(context(), own->properties(), outMap);
}

std::int32_t HostComponentDescriptor::nextProcID(std::int32_t* outProcID) {
    ++mLastProcID;
    if (outProcID != nullptr) {
        *outProcID = mLastProcID;
    }
    return mLastProcID;
}

AAX_Result HostComponentDescriptor::AddProcessProc_Native(AAX_CProcessProc processProc,
                                                          IACFUnknown* properties,
                                                          AAX_CInstanceInitProc initProc,
                                                          AAX_CBackgroundProc backgroundProc,
                                                          std::int32_t* outProcID) {
    const auto* map = ownObject<HostPropertyMap>(properties);
    if (processProc == nullptr || map == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDescription.natives.push_back(
        {nextProcID(outProcID), processProc, initProc, backgroundProc, map->properties()});
    return AAX_SUCCESS;
}

AAX_Result HostComponentDescriptor::AddProcessProc_TI(const char* dllName, const char* entryName,
                                                      IACFUnknown* properties, const char* initName,
                                                      const char* backgroundName, std::int32_t* outProcID) {
    const auto* map = ownObject<HostPropertyMap>(properties);
    if (dllName == nullptr || entryName == nullptr || map == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    mDescription.tis.push_back({nextProcID(outProcID), dllName, entryName, textOrEmpty(initName),
                                textOrEmpty(backgroundName), map->properties()});
    return AAX_SUCCESS;
}

AAX_Result HostComponentDescriptor::AddProcessProc(IACFUnknown*, std::int32_t*, std::int32_t) {
    return AAX_ERROR_UNIMPLEMENTED;
}

void* HostComponentDescriptor::interfaceFor(const acfIID& iid) {
    if (iid == IID_IAAXComponentDescriptorV1) {
        return static_cast<AAX_IACFComponentDescriptor*>(this);
    }
    return iid == kOwnID ? this : nullptr;
}

HostEffectDescriptor::HostEffectDescriptor(std::shared_ptr<HostContext> context)
    : HostObject(std::move(context), "effect descriptor") {
}

AAX_Result HostEffectDescriptor::NewComponentDescriptor(IACFUnknown** outComponent) {
    if (outComponent == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outComponent = new HostComponentDescriptor(context());
    return AAX_SUCCESS;
}

AAX_Result HostEffectDescriptor::AddComponent(IACFUnknown* component) {
    const auto* own = ownObject<HostComponentDescriptor>(component);
    if (own == nullptr) {
        return AAX_ERROR_NULL_COMPONENT;
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
