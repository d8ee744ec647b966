#include "Host/PageTable.h"

#include "ACF/ACFPtr.h"
#include "Host/HostObject.h"

#include <iterator>

namespace varno {

PageTable::PageTable(std::shared_ptr<HostContext> context)
    : HostObject(std::move(context), "page table") {
}

bool PageTable::hasPage(std::int32_t page) const {
    return page >= 0 && static_cast<std::size_t>(page) < mContent.pages.size();
}

const std::map<std::int32_t, std::string>* PageTable::variationsOf(AAX_CParamID paramID) const {
    const auto found = paramID == nullptr ? mContent.names.end() : mContent.names.find(paramID);
    return found == mContent.names.end() ? nullptr : &found->second;
}

AAX_Result PageTable::Clear() {
    mContent.pages.clear();
    return AAX_SUCCESS;
}

AAX_Result PageTable::Empty(std::uint8_t* outEmpty) const {
    if (outEmpty == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outEmpty = 1;
    for (const PageSlots& page : mContent.pages) {
        if (!page.empty()) {
            *outEmpty = 0;
        }
    }
    return AAX_SUCCESS;
}

AAX_Result PageTable::GetNumPages(std::int32_t* outCount) const {
    if (outCount == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outCount = static_cast<std::int32_t>(mContent.pages.size());
    return AAX_SUCCESS;
}

AAX_Result PageTable::InsertPage(std::int32_t page) {
    if (page < 0 || static_cast<std::size_t>(page) > mContent.pages.size()) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    mContent.pages.insert(mContent.pages.begin() + page, PageSlots());
    return AAX_SUCCESS;
}

AAX_Result PageTable::RemovePage(std::int32_t page) {
    if (!hasPage(page)) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    mContent.pages.erase(mContent.pages.begin() + page);
    return AAX_SUCCESS;
}

AAX_Result PageTable::GetNumMappedParameterIDs(std::int32_t page, std::int32_t* outCount) const {
    if (outCount == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (!hasPage(page)) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    const PageSlots& slots = mContent.pages[static_cast<std::size_t>(page)];
    *outCount = slots.empty() ? 0 : slots.rbegin()->first + 1;
    return AAX_SUCCESS;
}

AAX_Result PageTable::ClearMappedParameter(std::int32_t page, std::int32_t slot) {
    if (!hasPage(page) || slot < 0) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    mContent.pages[static_cast<std::size_t>(page)].erase(slot);
    return AAX_SUCCESS;
}

AAX_Result PageTable::GetMappedParameterID(std::int32_t page, std::int32_t slot, AAX_IString* outID) const {
    if (outID == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (!hasPage(page) || slot < 0) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    const PageSlots& slots = mContent.pages[static_cast<std::size_t>(page)];
    const auto found = slots.find(slot);
    outID->Set(found == slots.end() ? "" : found->second.c_str());
    return AAX_SUCCESS;
}

AAX_Result PageTable::MapParameterID(AAX_CParamID paramID, std::int32_t page, std::int32_t slot) {
    if (paramID == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (!hasPage(page) || slot < 0) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    mContent.pages[static_cast<std::size_t>(page)][slot] = paramID;
    return AAX_SUCCESS;
}

AAX_Result PageTable::GetNumParametersWithNameVariations(std::int32_t* outCount) const {
    if (outCount == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    *outCount = static_cast<std::int32_t>(mContent.names.size());
    return AAX_SUCCESS;
}

AAX_Result PageTable::GetNameVariationParameterIDAtIndex(std::int32_t index, AAX_IString* outID) const {
    if (outID == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (index < 0 || static_cast<std::size_t>(index) >= mContent.names.size()) {
        return AAX_ERROR_INVALID_PARAMETER_INDEX;
    }
    outID->Set(std::next(mContent.names.begin(), index)->first.c_str());
    return AAX_SUCCESS;
}

AAX_Result PageTable::GetNumNameVariationsForParameter(AAX_CParamID paramID, std::int32_t* outCount) const {
    if (outCount == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const auto* variations = variationsOf(paramID);
    if (variations == nullptr) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    *outCount = static_cast<std::int32_t>(variations->size());
    return AAX_SUCCESS;
}

AAX_Result PageTable::GetParameterNameVariationAtIndex(AAX_CParamID paramID, std::int32_t index,
                                                       AAX_IString* outName, std::int32_t* outLength) const {
    if (outName == nullptr || outLength == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const auto* variations = variationsOf(paramID);
    if (variations == nullptr) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    if (index < 0 || static_cast<std::size_t>(index) >= variations->size()) {
        return AAX_ERROR_INVALID_PARAMETER_INDEX;
    }
    const auto& [length, name] = *std::next(variations->begin(), index);
    outName->Set(name.c_str());
    *outLength = length;
    return AAX_SUCCESS;
}

AAX_Result PageTable::GetParameterNameVariationOfLength(AAX_CParamID paramID, std::int32_t length,
                                                        AAX_IString* outName) const {
    if (outName == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const auto* variations = variationsOf(paramID);
    if (variations == nullptr || variations->count(length) == 0) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    outName->Set(variations->at(length).c_str());
    return AAX_SUCCESS;
}

AAX_Result PageTable::ClearParameterNameVariations() {
    mContent.names.clear();
    return AAX_SUCCESS;
}

AAX_Result PageTable::ClearNameVariationsForParameter(AAX_CParamID paramID) {
    if (variationsOf(paramID) == nullptr) {
        return AAX_ERROR_INVALID_PARAMETER_ID;
    }
    mContent.names.erase(paramID);
    return AAX_SUCCESS;
}

AAX_Result PageTable::SetParameterNameVariation(AAX_CParamID paramID, const AAX_IString* name,
                                                std::int32_t length) {
    if (paramID == nullptr || name == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (length < 1) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    mContent.names[paramID][length] = name->Get();
    return AAX_SUCCESS;
}

void* PageTable::interfaceFor(const acfIID& iid) {
    if (iid == IID_IAAXPageTableV1) {
        return static_cast<AAX_IACFPageTable*>(this);
    }
    return iid == IID_IAAXPageTableV2 ? static_cast<AAX_IACFPageTable_V2*>(this) : nullptr;
}

namespace {

AAX_Result fillPages(const std::vector<PageSlots>& pages, AAX_IACFPageTable& table) {
    AAX_Result result = table.Clear();
    for (std::size_t page = 0; page < pages.size() && result == AAX_SUCCESS; ++page) {
        const auto number = static_cast<std::int32_t>(page);
        result = table.InsertPage(number);
        for (const auto& [slot, id] : pages[page]) {
            if (result == AAX_SUCCESS) {
                result = table.MapParameterID(id.c_str(), number, slot);
            }
        }
    }
    return result;
}

AAX_Result fillNames(const NameVariations& names, AAX_IACFPageTable_V2& table) {
    AAX_Result result = table.ClearParameterNameVariations();
    for (const auto& [id, variations] : names) {
        for (const auto& [length, name] : variations) {
            const HostString text(name);
            if (result == AAX_SUCCESS) {
                result = table.SetParameterNameVariation(id.c_str(), &text, length);
            }
        }
    }
    return result;
}

} // namespace

AAX_Result fillPageTable(const PageTableContent& content, IACFUnknown* table) {
    const auto pages = ACFPtr<AAX_IACFPageTable>::Query(table, IID_IAAXPageTableV1);
    if (!pages) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const AAX_Result result = fillPages(content.pages, *pages);
    const auto names = ACFPtr<AAX_IACFPageTable_V2>::Query(table, IID_IAAXPageTableV2);
    return result == AAX_SUCCESS && names ? fillNames(content.names, *names) : result;
}

} // namespace varno
