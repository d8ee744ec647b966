/// A page table of the host's in all versions, for tests.
#ifndef VARNO_TESTS_SUPPORT_RECORDINGPAGETABLE_H
#define VARNO_TESTS_SUPPORT_RECORDINGPAGETABLE_H

#include "AAX_IACFPageTable.h"
#include "Tests/Support/Recording.h"

namespace varno {

/// Notes its calls and does nothing else.
class RecordingPageTable : public Recording<AAX_IACFPageTable_V2> {
public:
    AAX_Result Clear() override { return note("Clear"); }
    AAX_Result Empty(std::uint8_t* outEmpty) const override { return note("Empty", outEmpty); }
    AAX_Result GetNumPages(std::int32_t* outCount) const override { return note("GetNumPages", outCount); }
    AAX_Result InsertPage(std::int32_t page) override { return note("InsertPage", page); }
    AAX_Result RemovePage(std::int32_t page) override { return note("RemovePage", page); }
    AAX_Result GetNumMappedParameterIDs(std::int32_t page, std::int32_t* outCount) const override {
        return note("GetNumMappedParameterIDs", page, outCount);
    }
    AAX_Result ClearMappedParameter(std::int32_t page, std::int32_t slot) override {
        return note("ClearMappedParameter", page, slot);
    }
    AAX_Result GetMappedParameterID(std::int32_t page, std::int32_t slot, AAX_IString* outID) const override {
        return note("GetMappedParameterID", page, slot, outID);
    }
    AAX_Result MapParameterID(AAX_CParamID paramID, std::int32_t page, std::int32_t slot) override {
        return note("MapParameterID", paramID, page, slot);
    }
    AAX_Result GetNumParametersWithNameVariations(std::int32_t* outCount) const override {
        return note("GetNumParametersWithNameVariations", outCount);
    }
    AAX_Result GetNameVariationParameterIDAtIndex(std::int32_t index, AAX_IString* outID) const override {
        return note("GetNameVariationParameterIDAtIndex", index, outID);
    }
    AAX_Result GetNumNameVariationsForParameter(AAX_CParamID paramID, std::int32_t* outCount) const override {
        return note("GetNumNameVariationsForParameter", paramID, outCount);
    }
    AAX_Result GetParameterNameVariationAtIndex(AAX_CParamID paramID, std::int32_t index,
                                                AAX_IString* outName,
                                                std::int32_t* outLength) const override {
        return note("GetParameterNameVariationAtIndex", paramID, index, outName, outLength);
    }
    AAX_Result GetParameterNameVariationOfLength(AAX_CParamID paramID, std::int32_t length,
                                                 AAX_IString* outName) const override {
        return note("GetParameterNameVariationOfLength", paramID, length, outName);
    }
    AAX_Result ClearParameterNameVariations() override { return note("ClearParameterNameVariations"); }
    AAX_Result ClearNameVariationsForParameter(AAX_CParamID paramID) override {
        return note("ClearNameVariationsForParameter", paramID);
    }
    AAX_Result SetParameterNameVariation(AAX_CParamID paramID, const AAX_IString* name,
                                         std::int32_t length) override {
        return note("SetParameterNameVariation", paramID, name, length);
    }
};

} // namespace varno

#endif
