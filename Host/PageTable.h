/// A control-surface page table of the host's.
#ifndef VARNO_HOST_PAGETABLE_H
#define VARNO_HOST_PAGETABLE_H

#include "AAX_IACFPageTable.h"
#include "Host/HostObject.h"

#include <map>
#include <string>
#include <vector>

namespace varno {

/// The parameters of one page by slot, from 0; free slots are absent.
using PageSlots = std::map<std::int32_t, std::string>;
/// Shorter names of parameters: by identifier, then by the length in characters that each is meant for.
using NameVariations = std::map<std::string, std::map<std::int32_t, std::string>>;

/// What a page table holds.
struct PageTableContent {
    std::vector<PageSlots> pages;
    NameVariations names;
};

/// Page table versions 1 and 2. [main]
class PageTable : public HostObject<AAX_IACFPageTable_V2> {
public:
    explicit PageTable(std::shared_ptr<HostContext> context);

    AAX_Result Clear() override;
    AAX_Result Empty(std::uint8_t* outEmpty) const override;
    AAX_Result GetNumPages(std::int32_t* outCount) const override;
    AAX_Result InsertPage(std::int32_t page) override;
    AAX_Result RemovePage(std::int32_t page) override;
    AAX_Result GetNumMappedParameterIDs(std::int32_t page, std::int32_t* outCount) const override;
    AAX_Result ClearMappedParameter(std::int32_t page, std::int32_t slot) override;
    AAX_Result GetMappedParameterID(std::int32_t page, std::int32_t slot, AAX_IString* outID) const override;
    AAX_Result MapParameterID(AAX_CParamID paramID, std::int32_t page, std::int32_t slot) override;
    AAX_Result GetNumParametersWithNameVariations(std::int32_t* outCount) const override;
    AAX_Result GetNameVariationParameterIDAtIndex(std::int32_t index, AAX_IString* outID) const override;
    AAX_Result GetNumNameVariationsForParameter(AAX_CParamID paramID, std::int32_t* outCount) const override;
    AAX_Result GetParameterNameVariationAtIndex(AAX_CParamID paramID, std::int32_t index,
                                                AAX_IString* outName, std::int32_t* outLength) const override;
    AAX_Result GetParameterNameVariationOfLength(AAX_CParamID paramID, std::int32_t length,
                                                 AAX_IString* outName) const override;
    AAX_Result ClearParameterNameVariations() override;
    AAX_Result ClearNameVariationsForParameter(AAX_CParamID paramID) override;
    AAX_Result SetParameterNameVariation(AAX_CParamID paramID, const AAX_IString* name,
                                         std::int32_t length) override;

    /// Everything that the table holds.
    const PageTableContent& content() const { return mContent; }

protected:
    void* interfaceFor(const acfIID& iid) override;

private:
    bool hasPage(std::int32_t page) const;
    const std::map<std::int32_t, std::string>* variationsOf(AAX_CParamID paramID) const;

    PageTableContent mContent;
};

/// Replaces what the page table `table` (borrowed, anyone's) holds; names only where it has version 2.
/// Returns AAX_SUCCESS, AAX_ERROR_NULL_ARGUMENT for something that is no page table, or the table's own
/// failure. [main]
AAX_Result fillPageTable(const PageTableContent& content, IACFUnknown* table);

} // namespace varno

#endif
