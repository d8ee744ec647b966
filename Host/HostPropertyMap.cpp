#include "Host/HostPropertyMap.h"

namespace varno {

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

} // namespace varno
