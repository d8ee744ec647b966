#include "Host/PageTableFile.h"

#include "Host/HostError.h"
#include "Host/InstanceHost.h"

#include <algorithm>
#include <optional>

namespace varno {

namespace {

using Table = PageTableFile::Table;

const PageTableContent* findTable(const std::vector<Table>& tables, AAX_CTypeID type, std::int32_t pageSize) {
    const auto found = std::find_if(tables.begin(), tables.end(), [&](const Table& table) {
        return table.type == type && table.pageSize == pageSize;
    });
    return found == tables.end() ? nullptr : &found->content;
}

std::optional<PageTableFile> readFile(const char* path, AAX_ETextEncoding encoding) {
    if (path == nullptr || encoding != AAX_eTextEncoding_UTF8) {
        return std::nullopt;
    }
    try {
        return PageTableFile::read(path);
    } catch (const HostError&) {
        return std::nullopt;
    }
}

AAX_Result copy(const PageTableContent* content, IACFUnknown* table) {
    return content == nullptr ? AAX_ERROR_UNKNOWN_ID : fillPageTable(*content, table);
}

} // namespace

const PageTableFile::Effect* PageTableFile::find(AAX_CTypeID manufacturerID, AAX_CTypeID productID,
                                                 AAX_CTypeID plugInID) const {
    const auto found = std::find_if(mEffects.begin(), mEffects.end(), [&](const Effect& effect) {
        return effect.manufacturerID == manufacturerID && effect.productID == productID &&
               std::count(effect.plugInIDs.begin(), effect.plugInIDs.end(), plugInID) > 0;
    });
    return found == mEffects.end() ? nullptr : &*found;
}

bool PageTableFile::hasEffect(AAX_CTypeID manufacturerID, AAX_CTypeID productID, AAX_CTypeID plugInID) const {
    return find(manufacturerID, productID, plugInID) != nullptr;
}

const PageTableContent* PageTableFile::tableOfEffect(AAX_CTypeID manufacturerID, AAX_CTypeID productID,
                                                     AAX_CTypeID plugInID, AAX_CTypeID tableType,
                                                     std::int32_t pageSize) const {
    const Effect* effect = find(manufacturerID, productID, plugInID);
    return effect == nullptr ? nullptr : findTable(effect->tables, tableType, pageSize);
}

const PageTableContent* PageTableFile::tableOfLayout(const std::string& layoutName, AAX_CTypeID tableType,
                                                     std::int32_t pageSize) const {
    for (const Effect& effect : mEffects) {
        for (const Layout& layout : effect.layouts) {
            const PageTableContent* table = findTable(layout.tables, tableType, pageSize);
            if (layout.name == layoutName && table != nullptr) {
                return table;
            }
        }
    }
    return nullptr;
}

HostPageTableController::HostPageTableController(IACFUnknown& owner, InstanceState& state)
    : Facet(owner),
      mState(state) {
}

std::string HostPageTableController::resourcePath() const {
    const std::string& file = mState.pageTableFile;
    return file.empty() ? std::string() : (mState.context->resources / file).string();
}

AAX_Result HostPageTableController::CopyTableForEffect(std::int32_t manufacturerID, std::int32_t productID,
                                                       std::int32_t plugInID, std::uint32_t tableType,
                                                       std::int32_t tablePageSize, IACFUnknown* table) const {
    const AAX_Result result =
        CopyTableForEffectFromFile(resourcePath().c_str(), AAX_eTextEncoding_UTF8, manufacturerID, productID,
                                   plugInID, tableType, tablePageSize, table);
    return result == AAX_ERROR_INVALID_PATH ? AAX_ERROR_UNKNOWN_ID : result;
}

AAX_Result HostPageTableController::CopyTableOfLayout(const char* effectID, const char* layoutName,
                                                      std::uint32_t tableType, std::int32_t tablePageSize,
                                                      IACFUnknown* table) const {
    if (effectID == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (effectID != mState.effectID) {
        return AAX_ERROR_UNKNOWN_PLUGIN;
    }
    const AAX_Result result = CopyTableOfLayoutFromFile(resourcePath().c_str(), AAX_eTextEncoding_UTF8,
                                                        layoutName, tableType, tablePageSize, table);
    return result == AAX_ERROR_INVALID_PATH ? AAX_ERROR_UNKNOWN_ID : result;
}

AAX_Result HostPageTableController::CopyTableForEffectFromFile(
    const char* path, AAX_ETextEncoding encoding, std::int32_t manufacturerID, std::int32_t productID,
    std::int32_t plugInID, std::uint32_t tableType, std::int32_t tablePageSize, IACFUnknown* table) const {
    mState.gate.check("CopyTableForEffectFromFile");
    if (path == nullptr || table == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const auto file = readFile(path, encoding);
    if (!file) {
        return AAX_ERROR_INVALID_PATH;
    }
    const auto manufacturer = static_cast<AAX_CTypeID>(manufacturerID);
    const auto product = static_cast<AAX_CTypeID>(productID);
    const auto plugIn = static_cast<AAX_CTypeID>(plugInID);
    if (!file->hasEffect(manufacturer, product, plugIn)) {
        return AAX_ERROR_UNKNOWN_PLUGIN;
    }
    return copy(file->tableOfEffect(manufacturer, product, plugIn, tableType, tablePageSize), table);
}

AAX_Result HostPageTableController::CopyTableOfLayoutFromFile(const char* path, AAX_ETextEncoding encoding,
                                                              const char* layoutName, std::uint32_t tableType,
                                                              std::int32_t tablePageSize,
                                                              IACFUnknown* table) const {
    mState.gate.check("CopyTableOfLayoutFromFile");
    if (path == nullptr || layoutName == nullptr || table == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    const auto file = readFile(path, encoding);
    return file ? copy(file->tableOfLayout(layoutName, tableType, tablePageSize), table)
                : AAX_ERROR_INVALID_PATH;
}

} // namespace varno
