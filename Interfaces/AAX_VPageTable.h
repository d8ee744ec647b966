/// A page table of the host's in the versions that the host offers.
#ifndef VARNO_INTERFACES_AAX_VPAGETABLE_H
#define VARNO_INTERFACES_AAX_VPAGETABLE_H

#include "AAX_IACFPageTable.h"
#include "AAX_IPageTable.h"
#include "ACF/ACFPtr.h"

/// Acquires each version once, when it is made, and holds it for its life: the host's table lives at least as
/// long.
class AAX_VPageTable : public AAX_IPageTable {
public:
    /// `hostTable` (borrowed, may be null) is the host's page table.
    explicit AAX_VPageTable(IACFUnknown* hostTable);

    /// Whether there is a table behind it at all. [main]
    bool IsValid() const { return static_cast<bool>(mVersion1); }

    AAX_Result Clear() override;
    AAX_Result Empty(uint8_t& outEmpty) const override;
    AAX_Result GetNumPages(int32_t& outCount) const override;
    AAX_Result InsertPage(int32_t page) override;
    AAX_Result RemovePage(int32_t page) override;
    AAX_Result GetNumMappedParameterIDs(int32_t page, int32_t& outCount) const override;
    AAX_Result ClearMappedParameter(int32_t page, int32_t slot) override;
    AAX_Result GetMappedParameterID(int32_t page, int32_t slot, AAX_IString& outID) const override;
    AAX_Result MapParameterID(AAX_CParamID paramID, int32_t page, int32_t slot) override;

    AAX_Result GetNumParametersWithNameVariations(int32_t& outCount) const override;
    AAX_Result GetNameVariationParameterIDAtIndex(int32_t index, AAX_IString& outID) const override;
    AAX_Result GetNumNameVariationsForParameter(AAX_CParamID paramID, int32_t& outCount) const override;
    AAX_Result GetParameterNameVariationAtIndex(AAX_CParamID paramID, int32_t index, AAX_IString& outName,
                                                int32_t& outLength) const override;
    AAX_Result GetParameterNameVariationOfLength(AAX_CParamID paramID, int32_t length,
                                                 AAX_IString& outName) const override;
    AAX_Result ClearParameterNameVariations() override;
    AAX_Result ClearNameVariationsForParameter(AAX_CParamID paramID) override;
    AAX_Result SetParameterNameVariation(AAX_CParamID paramID, const AAX_IString& name,
                                         int32_t length) override;

private:
    ACFPtr<AAX_IACFPageTable> mVersion1;
    ACFPtr<AAX_IACFPageTable_V2> mVersion2;
};

#endif
