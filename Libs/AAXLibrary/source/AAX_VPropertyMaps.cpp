#include "AAX_VPropertyMaps.h"

AAX_IPropertyMap* AAX_VPropertyMaps::Add(const ACFPtr<IACFUnknown>& hostMap) {
    if (!hostMap) {
        return nullptr;
    }
    mMaps.push_back(std::make_unique<AAX_VPropertyMap>(hostMap.Get(), mSupportsExtendedStemFormats));
    return mMaps.back().get();
}
