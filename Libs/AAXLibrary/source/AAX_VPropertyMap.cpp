#include "AAX_VPropertyMap.h"

#include "AAX_VPropertyMaps.h"

namespace {

// Stem formats from here on, as unsigned numbers, are newer than the others; only some hosts support them.
constexpr uint32_t kFirstExtendedStemFormat = 0xD0000;
// Values in that range that name no channels and that every host supports.
constexpr uint32_t kGeneralStemFormats[] = {0xFFFF0000, 0xFF9C0000};

bool IsExtendedStemFormat(AAX_EProperty property, int32_t value) {
    if (property != AAX_eProperty_InputStemFormat && property != AAX_eProperty_OutputStemFormat) {
        return false;
    }
    const auto format = static_cast<uint32_t>(value);
    for (const uint32_t general : kGeneralStemFormats) {
        if (format == general) {
            return false;
        }
    }
    return format >= kFirstExtendedStemFormat;
}

} // namespace

AAX_VPropertyMap::AAX_VPropertyMap(IACFUnknown* hostMap, bool supportsExtendedStemFormats)
    : mVersion1(ACFPtr<AAX_IACFPropertyMap>::Query(hostMap, IID_IAAXPropertyMapV1)),
      mSupportsExtendedStemFormats(supportsExtendedStemFormats) {
}

std::unique_ptr<const AAX_IPropertyMap> AAX_VPropertyMap::Acquire(IACFUnknown* hostMap) {
    return hostMap != nullptr ? std::make_unique<AAX_VPropertyMap>(hostMap, false) : nullptr;
}

AAX_Result AAX_VPropertyMap::GetProperty(AAX_EProperty property, int32_t* outValue) const {
    return mVersion1 ? mVersion1->GetProperty(property, outValue) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VPropertyMap::GetPointerProperty(AAX_EProperty property, const void** outValue) const {
    return mVersion1 ? mVersion1->GetPointerProperty(property, outValue) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VPropertyMap::AddProperty(AAX_EProperty property, int32_t value) {
    if (!mVersion1) {
        return AAX_ERROR_NULL_OBJECT;
    }
    if (!mSupportsExtendedStemFormats && IsExtendedStemFormat(property, value)) {
        return AAX_ERROR_PROPERTY_UNDEFINED;
    }
    return mVersion1->AddProperty(property, value);
}

AAX_Result AAX_VPropertyMap::AddPointerProperty(AAX_EProperty property, const void* value) {
    return mVersion1 ? mVersion1->AddPointerProperty(property, value) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VPropertyMap::AddPointerProperty(AAX_EProperty property, const char* value) {
    return AddPointerProperty(property, static_cast<const void*>(value));
}

AAX_Result AAX_VPropertyMap::RemoveProperty(AAX_EProperty property) {
    return mVersion1 ? mVersion1->RemoveProperty(property) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VPropertyMap::AddPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID* ids,
                                                    uint32_t count) {
    return mVersion1 ? mVersion1->AddPropertyWithIDArray(property, ids, count) : AAX_ERROR_NULL_OBJECT;
}

AAX_Result AAX_VPropertyMap::GetPropertyWithIDArray(AAX_EProperty property, const AAX_CTypeID** outIDs,
                                                    uint32_t* outCount) const {
    return mVersion1 ? mVersion1->GetPropertyWithIDArray(property, outIDs, outCount) : AAX_ERROR_NULL_OBJECT;
}

IACFUnknown* AAX_VPropertyMap::HostObject() const {
    return mVersion1.Get();
}

AAX_IPropertyMap* AAX_VPropertyMaps::Add(const ACFPtr<IACFUnknown>& hostMap) {
    if (!hostMap) {
        return nullptr;
    }
    mMaps.push_back(std::make_unique<AAX_VPropertyMap>(hostMap.Get(), mSupportsExtendedStemFormats));
    return mMaps.back().get();
}
