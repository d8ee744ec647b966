/// A control-surface page table, as the plug-in uses it.
#ifndef VARNO_INTERFACES_AAX_IPAGETABLE_H
#define VARNO_INTERFACES_AAX_IPAGETABLE_H

#include "AAX.h"
#include "AAX_IString.h"

/// Each operation forwards to the host's of the same name (AAX_IACFPageTable, AAX_IACFPageTable_V2).
/// Identifiers and names are borrowed for the call; pages, slots and indices count from 0. Outputs are left
/// alone when the version is missing.
class AAX_IPageTable {
public:
    virtual ~AAX_IPageTable() = default;
    /// Removes all pages. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without version 1. [main]
    virtual AAX_Result Clear() = 0;
    /// 1 when no parameter is mapped, else 0. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without
    /// version 1. [main]
    virtual AAX_Result Empty(uint8_t& outEmpty) const = 0;
    /// The number of pages. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without version 1. [main]
    virtual AAX_Result GetNumPages(int32_t& outCount) const = 0;
    /// Inserts an empty page before `page`. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without
    /// version 1. [main]
    virtual AAX_Result InsertPage(int32_t page) = 0;
    /// Removes a page. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without version 1. [main]
    virtual AAX_Result RemovePage(int32_t page) = 0;
    /// The number of slots of a page up to its last mapped one. Returns the host's result, or
    /// AAX_ERROR_UNIMPLEMENTED without version 1. [main]
    virtual AAX_Result GetNumMappedParameterIDs(int32_t page, int32_t& outCount) const = 0;
    /// Frees a slot. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without version 1. [main]
    virtual AAX_Result ClearMappedParameter(int32_t page, int32_t slot) = 0;
    /// The parameter in a slot. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without version 1.
    /// [main]
    virtual AAX_Result GetMappedParameterID(int32_t page, int32_t slot, AAX_IString& outID) const = 0;
    /// Puts a parameter into a slot. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without version 1.
    /// [main]
    virtual AAX_Result MapParameterID(AAX_CParamID paramID, int32_t page, int32_t slot) = 0;

    /// The number of parameters with name variations. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED
    /// without version 2. [main]
    virtual AAX_Result GetNumParametersWithNameVariations(int32_t& outCount) const = 0;
    /// The parameter with name variations at `index`. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED
    /// without version 2. [main]
    virtual AAX_Result GetNameVariationParameterIDAtIndex(int32_t index, AAX_IString& outID) const = 0;
    /// The number of a parameter's name variations. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED
    /// without version 2. [main]
    virtual AAX_Result GetNumNameVariationsForParameter(AAX_CParamID paramID, int32_t& outCount) const = 0;
    /// A parameter's name variation at `index` and the length in characters it is meant for. Returns the
    /// host's result, or AAX_ERROR_UNIMPLEMENTED without version 2. [main]
    virtual AAX_Result GetParameterNameVariationAtIndex(AAX_CParamID paramID, int32_t index,
                                                        AAX_IString& outName, int32_t& outLength) const = 0;
    /// A parameter's name variation for `length` characters. Returns the host's result, or
    /// AAX_ERROR_UNIMPLEMENTED without version 2. [main]
    virtual AAX_Result GetParameterNameVariationOfLength(AAX_CParamID paramID, int32_t length,
                                                         AAX_IString& outName) const = 0;
    /// Removes all name variations. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without version 2.
    /// [main]
    virtual AAX_Result ClearParameterNameVariations() = 0;
    /// Removes a parameter's name variations. Returns the host's result, or AAX_ERROR_UNIMPLEMENTED without
    /// version 2. [main]
    virtual AAX_Result ClearNameVariationsForParameter(AAX_CParamID paramID) = 0;
    /// Adds or replaces a parameter's name variation for `length` characters. Returns the host's result, or
    /// AAX_ERROR_UNIMPLEMENTED without version 2. [main]
    virtual AAX_Result SetParameterNameVariation(AAX_CParamID paramID, const AAX_IString& name,
                                                 int32_t length) = 0;
};

#endif
